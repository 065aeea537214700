#include "editor/hosting/linux/HostSignals.h"

HostSignals::HostSignals() {
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ending, &mask_);
    for (int signal = 1; signal < NSIG; ++signal) {
        sigaction(signal, nullptr, &actions_[static_cast<std::size_t>(signal)]);
    }
}

HostSignals::~HostSignals() {
    for (int signal = 1; signal < NSIG; ++signal) {
        const struct sigaction& ofHost = actions_[static_cast<std::size_t>(signal)];
        struct sigaction now = {};
        sigaction(signal, nullptr, &now);
        if (now.sa_handler != ofHost.sa_handler) {
            sigaction(signal, &ofHost, nullptr);
        }
    }
    pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
}
