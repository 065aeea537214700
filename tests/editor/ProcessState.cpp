#include "tests/editor/ProcessState.h"

#include <X11/Xlib.h>

#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <exception>
#include <filesystem>

#include <immintrin.h>
#include <sys/stat.h>
#include <sys/time.h>

extern char** environ;

namespace {

template <typename Function>
std::string addressOf(Function* function) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(function));
}

std::string textOf(const sigset_t& signals) {
    std::string text;
    for (int signal = 1; signal < NSIG; ++signal) {
        text += sigismember(&signals, signal) == 1 ? std::to_string(signal) + " " : "";
    }
    return text;
}

void addSignals(std::map<std::string, std::string>& state) {
    for (int signal = 1; signal < NSIG; ++signal) {
        struct sigaction action = {};
        if (sigaction(signal, nullptr, &action) == 0) {
            constexpr int kByTheLibrary = 0x04000000; // it sets this in whatever goes through it
            const int flags = action.sa_flags & ~kByTheLibrary;
            state["signal " + std::to_string(signal)] = addressOf(action.sa_handler) + " flags " +
                                                        std::to_string(flags) + " mask " +
                                                        textOf(action.sa_mask);
        }
    }
    sigset_t held;
    sigprocmask(SIG_SETMASK, nullptr, &held);
    state["signals held back"] = textOf(held);
    stack_t stack{};
    sigaltstack(nullptr, &stack);
    state["signal stack"] = addressOf(static_cast<char*>(stack.ss_sp));
}

void addHandlers(std::map<std::string, std::string>& state) {
    const XErrorHandler errors = XSetErrorHandler(nullptr);
    XSetErrorHandler(errors);
    state["X errors"] = addressOf(errors);
    const XIOErrorHandler connections = XSetIOErrorHandler(nullptr);
    XSetIOErrorHandler(connections);
    state["X connections"] = addressOf(connections);
    state["uncaught exceptions"] = addressOf(std::get_terminate());
}

} // namespace

std::map<std::string, std::string> processState() {
    std::map<std::string, std::string> state;
    addSignals(state);
    addHandlers(state);
    state["locale"] = setlocale(LC_ALL, nullptr);
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string entry = *variable;
        const std::size_t end = entry.find('=');
        state["environment " + entry.substr(0, end)] = entry.substr(end);
    }
    state["folder"] = std::filesystem::current_path().string();
    const mode_t mask = umask(0);
    umask(mask);
    state["file mode mask"] = std::to_string(mask);
    for (const int timer : {ITIMER_REAL, ITIMER_VIRTUAL, ITIMER_PROF}) {
        itimerval value{};
        getitimer(static_cast<__itimer_which_t>(timer), &value);
        state["timer " + std::to_string(timer)] =
            std::to_string(value.it_interval.tv_sec + value.it_value.tv_sec) + " s " +
            std::to_string(value.it_interval.tv_usec + value.it_value.tv_usec) + " us";
    }
    constexpr unsigned kFlagsOfResults = 0x3F; // what arithmetic has met so far
    state["floating point"] =
        std::to_string(std::fegetround()) + " " + std::to_string(_mm_getcsr() & ~kFlagsOfResults);
    return state;
}

std::string differences(const std::map<std::string, std::string>& before,
                        const std::map<std::string, std::string>& after) {
    std::string lines;
    for (const auto& [name, value] : before) {
        const auto found = after.find(name);
        const std::string now = found == after.end() ? "gone" : found->second;
        lines += now == value ? "" : name + ": " + value + " became " + now + "\n";
    }
    for (const auto& [name, value] : after) {
        lines += before.count(name) != 0 ? "" : name + ": new, " + value + "\n";
    }
    return lines;
}
