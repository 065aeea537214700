#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"
#include "host/check/checks/EachSetting.h"

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
    eachSetting(run, effect, {kMostPrograms, kSettings}, look);
}

} // namespace tvhost::checks
