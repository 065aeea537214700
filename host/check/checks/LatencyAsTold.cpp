#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
constexpr int kImpulseAt = 1000;
constexpr int kFrames = 48000;
constexpr float kHeard = 1e-3f;    // of the highest sample, -60 dB
constexpr double kSame = 0.9;      // correlation of a sound that is only late
constexpr int kLongestLag = 16384; // samples
constexpr int kSettings = 5;

// The first sample that is heard of an impulse, counted from it; nothing when none comes or
// it sounds by itself.
std::optional<int> firstHeard(CheckedEffect& effect) {
    Sound input = silence(effect.inputCount(), kFrames);
    for (std::vector<float>& channel : input) {
        channel[kImpulseAt] = 0.5f;
    }
    effect.start(kRate, kBlock);
    const Sound output = effect.render(input, kBlock);
    effect.stop();
    const float highest = peak(output);
    if (!(highest > 1e-5f) || !std::isfinite(highest) ||
        peak(output, 0, kImpulseAt) > kHeard * highest) {
        return std::nullopt;
    }
    for (int i = 0; i < kFrames; ++i) {
        for (const std::vector<float>& channel : output) {
            if (std::fabs(channel[static_cast<std::size_t>(i)]) > kHeard * highest) {
                return i - kImpulseAt;
            }
        }
    }
    return std::nullopt;
}

// By how many samples the first output is the first input, late and else much the same; nothing
// when it is another sound.
std::optional<int> lag(CheckRun& run, CheckedEffect& effect) {
    constexpr int kLength = 4096;
    const Sound input = noise(run, effect.inputCount(), kLength + kLongestLag, 0.25f);
    effect.start(kRate, kBlock);
    const std::vector<float> output = effect.render(input, kBlock).front();
    effect.stop();
    const auto correlation = [&](int late) {
        double both = 0.0;
        double in = 0.0;
        double out = 0.0;
        for (std::size_t i = 0; i < kLength; ++i) {
            const auto x = static_cast<double>(input[0][i]);
            const auto y = static_cast<double>(output[i + static_cast<std::size_t>(late)]);
            both += x * y;
            in += x * x;
            out += y * y;
        }
        return out > 0.0 ? both / std::sqrt(in * out) : 0.0;
    };
    for (int late = 0; late < kLongestLag; ++late) {
        if (correlation(late) > kSame) {
            return late;
        }
    }
    return std::nullopt;
}

} // namespace

void latencyAsTold(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireInput();
    if (effect.isSynth()) {
        throw CheckSkipped("it makes sound by itself");
    }
    effect.start(kRate, kBlock);
    const int told = effect.record().initialDelay;
    effect.stop();
    const std::optional<int> first = firstHeard(effect);
    if (first && *first < told) {
        run.finding("early", "it tells a latency of " + std::to_string(told) +
                                 " samples, and a click comes out after " + std::to_string(*first));
    }
    // A delay is meant to be late, but not by the same time however it is set.
    const std::optional<int> late = lag(run, effect);
    bool always = late && *late > told && effect.parameterCount() > 0;
    for (int i = 0; i < kSettings && always; ++i) {
        effect.setParameters(effect.randomSettings());
        const std::optional<int> other = lag(run, effect);
        always = !other || *other == *late;
    }
    if (always) {
        run.finding("late", "it tells a latency of " + std::to_string(told) +
                                " samples, and the sound comes out as it was after " +
                                std::to_string(*late) + ", however it is set");
    }
}

} // namespace tvhost::checks
