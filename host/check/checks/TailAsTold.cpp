#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr int kRate = 48000;
constexpr int kBlock = 512;
constexpr int kSoundFrames = kRate;
constexpr int kListen = 2 * kRate;
constexpr int kLongest = 30 * kRate; // a longer tail isn't waited for
constexpr float kGone = 1e-3f;       // of the sound, -60 dB
constexpr int kGrace = 64;           // frames that a filter may take to settle

} // namespace

void tailAsTold(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireInput();
    effect.start(kRate, kBlock);
    const auto told = static_cast<int>(effect.call(effGetTailSize));
    if (told == 0) {
        throw CheckSkipped("it tells no tail");
    }
    if (told < 0 || told > kLongest) {
        throw CheckSkipped("it tells a tail of more than 30 seconds");
    }
    const int tail = told == 1 ? 0 : told;
    const int end = kSoundFrames + std::max(effect.record().initialDelay, 0) + tail + kGrace;
    Sound input = noise(run, effect.inputCount(), kSoundFrames, 0.25f);
    for (std::vector<float>& channel : input) {
        channel.resize(static_cast<std::size_t>(end) + kListen);
    }
    const Sound output = effect.render(input, kBlock);
    const float loud = peak(output, 0, kSoundFrames);
    const float left = peak(output, static_cast<std::size_t>(end));
    if (left > kGone * loud) {
        run.finding("longer",
                    (told == 1 ? std::string("it tells that it has no tail")
                               : "it tells a tail of " + std::to_string(told) + " samples") +
                        ", and behind that it still sounds at " +
                        decibelText(static_cast<double>(left / loud)));
    }
}

} // namespace tvhost::checks
