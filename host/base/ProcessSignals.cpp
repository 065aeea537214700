#include "host/base/ProcessSignals.h"

#include "host/base/OutputFile.h"

#include <csignal>
#include <cstdlib>
#include <string_view>

#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE};
constexpr int kStatusOfFailure = 2;
constexpr int kCrashSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

void install(int signal, void (*handler)(int)) {
    struct sigaction old = {};
    sigaction(signal, nullptr, &old);
    // What was switched off outside stays off, and a sanitizer's own report is left alone.
    if (old.sa_handler != SIG_DFL) {
        return;
    }
    struct sigaction action = {};
    action.sa_handler = handler;
    // Back to the default on entry, so that raising it again ends the program.
    action.sa_flags = SA_RESETHAND | SA_NODEFER;
    sigaction(signal, &action, nullptr);
}

void stop(int signal) {
    removeUnfinishedOutput();
    raise(signal);
}

// Safe in a signal handler.
void say(std::string_view text) {
    const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
    static_cast<void>(written);
}

void crash(int signal) {
    removeUnfinishedOutput();
    say("tvhost: crashed, most likely inside the plug-in");
    say(outputWasWritten() ? ", after the output was written\n" : "; nothing was written\n");
    raise(signal);
}

pid_t guarded = 0;

void exitCalled() {
    if (getpid() != guarded) {
        return;
    }
    removeUnfinishedOutput();
    say("tvhost: the plug-in ended the program");
    say(outputWasWritten() ? " after the output was written" : "; nothing was written");
    say("; give one that leaves that to its host\n");
    _exit(kStatusOfFailure);
}

} // namespace

void guardProcessSignals() {
    for (const int signal : kStopSignals) {
        install(signal, stop);
    }
    for (const int signal : kCrashSignals) {
        install(signal, crash);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

void guardProcessExit() {
    guarded = getpid();
    std::atexit(exitCalled);
}

void endProcessGuard() {
    guarded = 0;
}

} // namespace tvhost
