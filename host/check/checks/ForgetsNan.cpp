#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <limits>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
constexpr int kFrames = 96000;
constexpr int kLastFrames = 4800;

} // namespace

void forgetsNan(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireInput();
    effect.start(kRate, kBlock);
    Sound sound = noise(run, effect.inputCount(), kFrames, 0.25f);
    sound[0][1000] = std::numeric_limits<float>::quiet_NaN();
    const auto endIsFinite = [](const Sound& output) {
        return isFinite(
                   {Sound::value_type(output.front().end() - kLastFrames, output.front().end())}) &&
               isFinite(
                   {Sound::value_type(output.back().end() - kLastFrames, output.back().end())});
    };
    if (!endIsFinite(effect.render(sound, kBlock))) {
        run.finding("kept", "two seconds after one sample that is no number, none is any more");
    }
    effect.stop();
    effect.start(kRate, kBlock);
    if (!endIsFinite(effect.render(noise(run, effect.inputCount(), kFrames, 0.25f), kBlock))) {
        run.finding("kept after restart",
                    "switching it off and on doesn't bring it back from one sample that was no "
                    "number");
    }
}

} // namespace tvhost::checks
