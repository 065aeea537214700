#include "host/base/StopRequest.h"

#include <iterator>

namespace tvhost {

namespace {

volatile std::sig_atomic_t requested = 0;

void note(int) {
    requested = 1;
}

} // namespace

StopRequest::StopRequest() {
    requested = 0;
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
        sigaction(kSignals[i], nullptr, &before_[i]);
        // What was switched off outside stays off.
        if (before_[i].sa_handler != SIG_IGN) {
            sigaction(kSignals[i], &action, nullptr);
        }
    }
}

StopRequest::~StopRequest() {
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
        sigaction(kSignals[i], &before_[i], nullptr);
    }
}

bool StopRequest::made() const {
    return requested != 0;
}

} // namespace tvhost
