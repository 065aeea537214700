// Input for the effect, from plain to hostile.
#pragma once

#include <cstddef>
#include <cstdint>

enum class Signal {
    kSilence,
    kNoise,
    kImpulses, // one in about fifty samples
    kTone,
    kDenormals, // too small for normal numbers, zeros of both signs among them
    kLoud,      // up to 1e30
    kHostile,   // noise with infinities and not-a-numbers here and there
};

// The same samples for the same arguments, on every system.
void fillSignal(Signal signal, std::uint64_t seed, float* samples, std::size_t count);
