#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
constexpr int kFrames = 24000;
constexpr int kMostPrograms = 64;
constexpr int kSettings = 20;
constexpr float kLoud = 4.0f; // what hosts without a limit pass on

} // namespace

void givesNumbers(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    const Sound loud = noise(run, std::max(effect.inputCount(), 1), kFrames, kLoud);
    const auto look = [&](CheckedEffect& tried, const std::string& with) {
        run.doing(with);
        tried.start(kRate, kBlock);
        if (!isFinite(tried.render(loud, kBlock))) {
            run.finding("not finite", "it gives what is no number " + with);
        }
    };
    // Each in a new effect, so that none inherits what another has left ringing.
    const int programs = std::clamp(effect.programCount(), 1, kMostPrograms);
    for (int program = 0; program < programs; ++program) {
        CheckedEffect fresh(run);
        if (fresh.programCount() > 1) {
            fresh.setProgram(program);
        }
        look(fresh, "in program " + std::to_string(program));
    }
    for (int i = 0; i < kSettings && effect.parameterCount() > 0; ++i) {
        CheckedEffect fresh(run);
        fresh.setParameters(fresh.randomSettings());
        look(fresh, "with random settings " + std::to_string(i));
    }
}

} // namespace tvhost::checks
