// Keeps a host's signal handlers from what Foundation and AppKit make of them.
#pragma once

#include <csignal>

#include <array>

// What the host does at each signal, put back when this goes: Foundation ignores broken pipes for
// the whole process, and AppKit's back end takes the signals that end a program for itself, so that
// a host with an editor open could no longer be stopped. Those that reach this thread meanwhile
// wait for the host's handler.
class HostSignals {
public:
    HostSignals();
    ~HostSignals();
    HostSignals(const HostSignals&) = delete;
    HostSignals& operator=(const HostSignals&) = delete;

private:
    std::array<struct sigaction, NSIG> actions_;
    sigset_t mask_;
};
