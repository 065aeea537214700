#include "editor/hosting/linux/HostSignals.h"

HostSignals::HostSignals() {
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ending, &mask);
    for (int signal = 1; signal < NSIG; ++signal) {
        sigaction(signal, nullptr, &actions[static_cast<std::size_t>(signal)]);
    }
}

HostSignals::~HostSignals() {
    for (int signal = 1; signal < NSIG; ++signal) {
        sigaction(signal, &actions[static_cast<std::size_t>(signal)], nullptr);
    }
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);
}
