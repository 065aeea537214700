#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"
#include "host/check/checks/EachSetting.h"

#include <algorithm>
#include <cmath>

namespace tvhost::checks {

namespace {

constexpr int kRate = 48000;
constexpr int kBlock = 512;
constexpr int kSound = kRate / 2; // frames of noise
constexpr int kSilence = 4 * kRate;
constexpr int kMostPrograms = 32;
constexpr int kSettings = 16;
constexpr float kFullScale = 1.0f;

std::string inWords(float level) {
    return std::isfinite(level) ? decibelText(static_cast<double>(level)) + "FS"
                                : "no numbers any more";
}

} // namespace

void fadesOut(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireInput();
    if (effect.isSynth()) {
        throw CheckSkipped("it makes sound by itself");
    }
    Sound sound = noise(run, effect.inputCount(), kSound, 0.25f);
    for (std::vector<float>& channel : sound) {
        channel.resize(kSound + kSilence);
    }
    const auto look = [&](CheckedEffect& tried, const std::string& with) {
        run.doing(with);
        tried.start(kRate, kBlock);
        const Sound output = tried.render(sound, kBlock);
        const float first = peak(output, kSound, kSound + kRate);
        const float last = peak(output, kSound + kSilence - kRate);
        if (!std::isfinite(last) || (last > kFullScale && last > 2.0f * first)) {
            run.finding("grows", "after the sound has ended it grows " + with + ": " +
                                     inWords(first) + " in the first second, " + inWords(last) +
                                     " in the fourth");
        }
    };
    eachSetting(run, effect, {kMostPrograms, kSettings}, look);
}

} // namespace tvhost::checks
