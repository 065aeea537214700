// Random numbers that are the same on every system for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>

// The engine's sequence is fixed by the language; what the standard library's distributions make of
// it is not, so none is used.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    std::uint64_t bits() { return engine_(); }

    // `low` to `high`, both included.
    std::int64_t between(std::int64_t low, std::int64_t high) {
        const auto span = static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low) + 1;
        const std::uint64_t step = span == 0 ? bits() : bits() % span;
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(low) + step);
    }

    bool oneIn(std::int64_t sides) { return between(1, sides) == 1; }

    // 0.0 to just below 1.0.
    double unit() { return static_cast<double>(bits() >> 11) * 0x1p-53; }

    float within(float low, float high) {
        return static_cast<float>(low + (static_cast<double>(high) - low) * unit());
    }

    // Any bit pattern: infinities, not-a-numbers and denormals as well.
    float anyFloat() {
        const auto pattern = static_cast<std::uint32_t>(bits());
        float value;
        std::memcpy(&value, &pattern, sizeof(value));
        return value;
    }

    template <typename T, std::size_t kCount>
    const T& pick(const T (&choices)[kCount]) {
        return choices[between(0, static_cast<std::int64_t>(kCount) - 1)];
    }

private:
    std::mt19937_64 engine_;
};
