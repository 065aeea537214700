// Numbers compared by what is stored. Two not-a-numbers are equal whatever their sign and payload:
// which of two operands hands its own on is the compiler's choice.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

inline std::uint32_t bitsOf(float value) {
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

inline std::uint64_t bitsOf(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

inline float floatOf(std::uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

inline double doubleOf(std::uint64_t bits) {
    double value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

template <typename Number>
bool sameNumber(Number a, Number b) {
    return bitsOf(a) == bitsOf(b) || (std::isnan(a) && std::isnan(b));
}

// The first index at which the two differ, or -1.
template <typename Number>
std::ptrdiff_t firstDifference(const Number* a, const Number* b, std::size_t count) {
    if (std::memcmp(a, b, count * sizeof(Number)) == 0) {
        return -1;
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (!sameNumber(a[i], b[i])) {
            return static_cast<std::ptrdiff_t>(i);
        }
    }
    return -1;
}
