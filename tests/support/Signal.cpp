#include "tests/support/Signal.h"

#include "tests/support/Bits.h"
#include "tests/support/Dice.h"

namespace {

// A parabola in place of a sine, which differs from system to system.
float toneAt(std::uint64_t step) {
    const float x = static_cast<float>(step % 128) / 64.0f - 1.0f;
    return 4.0f * x * (1.0f - (x < 0.0f ? -x : x));
}

float sampleOf(Signal signal, Dice& dice, std::uint64_t step) {
    constexpr std::uint32_t kSignBit = 0x80000000u;
    switch (signal) {
    case Signal::kSilence:
        return 0.0f;
    case Signal::kNoise:
        return dice.within(-1.0f, 1.0f);
    case Signal::kImpulses:
        return dice.oneIn(50) ? dice.within(-1.0f, 1.0f) : 0.0f;
    case Signal::kTone:
        return toneAt(step);
    case Signal::kDenormals:
        return floatOf(static_cast<std::uint32_t>(dice.bits()) & (kSignBit | 0x007FFFFFu));
    case Signal::kLoud:
        return dice.within(-1e30f, 1e30f);
    case Signal::kHostile:
        if (dice.oneIn(300)) {
            return dice.anyFloat();
        }
        if (dice.oneIn(600)) { // an infinity
            return floatOf(0x7F800000u | (static_cast<std::uint32_t>(dice.bits()) & kSignBit));
        }
        return dice.within(-1.0f, 1.0f);
    }
    return 0.0f;
}

} // namespace

void fillSignal(Signal signal, std::uint64_t seed, float* samples, std::size_t count) {
    Dice dice(seed);
    for (std::size_t i = 0; i < count; ++i) {
        samples[i] = sampleOf(signal, dice, seed + i);
    }
}
