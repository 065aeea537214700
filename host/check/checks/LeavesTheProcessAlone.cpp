#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstring>
#include <filesystem>

#include <immintrin.h>
#include <sys/stat.h>

namespace tvhost::checks {

namespace {

constexpr int kSignals[] = {SIGHUP, SIGINT,  SIGQUIT, SIGILL,  SIGABRT, SIGFPE,  SIGSEGV,
                            SIGBUS, SIGPIPE, SIGALRM, SIGTERM, SIGUSR1, SIGUSR2, SIGCHLD};
constexpr unsigned kStickyFlags = 0x3F; // of the floating-point control word: results, no setting
constexpr int kBlock = 512;

using Handler = void (*)(int);

Handler handlerOf(int signal) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

struct ProcessState {
    std::string folder;
    std::string locale;
    mode_t mask;
    unsigned floatingPoint;
    std::vector<Handler> handlers;

    static ProcessState now() {
        ProcessState state;
        std::error_code error;
        state.folder = std::filesystem::current_path(error).string();
        state.locale = std::setlocale(LC_ALL, nullptr);
        state.mask = umask(0);
        umask(state.mask);
        state.floatingPoint = _mm_getcsr() & ~kStickyFlags;
        for (const int signal : kSignals) {
            state.handlers.push_back(handlerOf(signal));
        }
        return state;
    }
};

void compare(CheckRun& run, const ProcessState& before, const std::string& when) {
    const ProcessState after = ProcessState::now();
    if (after.folder != before.folder) {
        run.finding("folder", when + ", the process works in " + after.folder);
    }
    if (after.locale != before.locale) {
        run.finding("locale",
                    when + ", the locale is " + after.locale + " and was " + before.locale);
    }
    if (after.mask != before.mask) {
        run.finding("umask", when + ", new files get other rights than before");
    }
    if (after.floatingPoint != before.floatingPoint) {
        run.finding("floating point", when +
                                          ", the thread calculates in another way (control "
                                          "word " +
                                          std::to_string(after.floatingPoint) + ", before " +
                                          std::to_string(before.floatingPoint) + ")");
    }
    for (std::size_t i = 0; i < before.handlers.size(); ++i) {
        if (after.handlers[i] != before.handlers[i]) {
            run.finding("signals", when + ", SIG" + sigabbrev_np(kSignals[i]) +
                                       " is handled by somebody else");
        }
    }
}

} // namespace

void leavesTheProcessAlone(CheckRun& run) {
    ProcessState before = ProcessState::now();
    const auto step = [&](const std::string& when) {
        compare(run, before, when);
        before = ProcessState::now(); // tell each change once
    };
    {
        run.module();
        step("once it is loaded");
        CheckedEffect effect(run);
        step("once an effect is open");
        if (effect.has(effFlagsCanReplacing) && effect.outputCount() > 0) {
            effect.start(44100.0, kBlock);
            step("once it is switched on");
            effect.render(noise(run, effect.inputCount(), 4 * kBlock, 0.25f), kBlock);
            step("after some blocks");
        }
    }
    step("once the effect is closed");
}

} // namespace tvhost::checks
