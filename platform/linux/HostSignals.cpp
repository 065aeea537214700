#include "platform/linux/HostSignals.h"

HostSignals::HostSignals() {
    for (int signal = 1; signal < NSIG; ++signal) {
        sigaction(signal, nullptr, &actions[static_cast<std::size_t>(signal)]);
    }
}

HostSignals::~HostSignals() {
    for (int signal = 1; signal < NSIG; ++signal) {
        sigaction(signal, &actions[static_cast<std::size_t>(signal)], nullptr);
    }
}
