#include "host/base/ProcessSignals.h"

#include "host/base/OutputFile.h"

#include <csignal>
#include <string_view>

#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE};
constexpr int kCrashSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

void install(int signal, void (*handler)(int)) {
    struct sigaction old{};
    sigaction(signal, nullptr, &old);
    // What was switched off outside stays off, and a sanitizer's own report is left alone.
    if (old.sa_handler != SIG_DFL) {
        return;
    }
    struct sigaction action{};
    action.sa_handler = handler;
    // Back to the default on entry, so that raising it again ends the program.
    action.sa_flags = SA_RESETHAND | SA_NODEFER;
    sigaction(signal, &action, nullptr);
}

void stop(int signal) {
    removeUnfinishedOutput();
    raise(signal);
}

void crash(int signal) {
    removeUnfinishedOutput();
    constexpr std::string_view kText =
        "tvhost: crashed, most likely inside the plug-in; nothing was written\n";
    const ssize_t written = write(STDERR_FILENO, kText.data(), kText.size());
    static_cast<void>(written);
    raise(signal);
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

} // namespace tvhost
