// Vectors for the kernels of the signal path. They are as wide as the work is; the compiler makes
// of them what the kernel's instruction set has.
//
// Everything here is inlined into the kernel and compiled for its instruction set: nothing of it
// may leave a function of its own behind, which the linker could give to machines that cannot run
// it.
#pragma once

#ifndef TVDELAY_TARGET
#error "Define TVDELAY_TARGET as the attribute that selects the kernel's instruction set."
#endif
#define TVDELAY_INLINE TVDELAY_TARGET __attribute__((always_inline)) inline

#include "effect/SubBlock.h"

#include <cstddef>
#include <cstring>

namespace {

using Doubles2 = double __attribute__((vector_size(16)));
using Doubles4 = double __attribute__((vector_size(32)));
using Floats4 = float __attribute__((vector_size(16)));
using Ints4 = int __attribute__((vector_size(16)));

template <typename Vector, typename Number>
TVDELAY_INLINE void load(Vector& vector, const Number* from) {
    std::memcpy(&vector, from, sizeof(vector));
}

template <typename Vector, typename Number>
TVDELAY_INLINE void store(const Vector& vector, Number* to) {
    std::memcpy(to, &vector, sizeof(vector));
}

// Four frames, each side by itself.
struct FourFrames {
    Floats4 steady;
    Floats4 dipped;
};

// Four frames with both sides in turn: two frames, and the next two.
struct TurnedFrames {
    Floats4 first;
    Floats4 second;
};

TVDELAY_INLINE void inTurn(const FourFrames& frames, TurnedFrames& turned) {
    turned.first = __builtin_shufflevector(frames.steady, frames.dipped, 0, 4, 1, 5);
    turned.second = __builtin_shufflevector(frames.steady, frames.dipped, 2, 6, 3, 7);
}

TVDELAY_INLINE void apart(const TurnedFrames& turned, FourFrames& frames) {
    frames.steady = __builtin_shufflevector(turned.first, turned.second, 0, 2, 4, 6);
    frames.dipped = __builtin_shufflevector(turned.first, turned.second, 1, 3, 5, 7);
}

// How many former inputs a filter keeps.
constexpr int kInputHistory = 3;

// What goes into a pair over a sub-block: both sides in turn, widened from single precision. In
// front are the inputs of the pair's last ticks, oldest first, and behind is room for what it looks
// at ahead.
class Taps {
public:
    TVDELAY_INLINE double* frame(int i) {
        return samples_ + 2 * static_cast<std::ptrdiff_t>(kInputHistory + i);
    }

    TVDELAY_INLINE void widen(int i, const TurnedFrames& turned) {
        store(__builtin_convertvector(turned.first, Doubles4), frame(i));
        store(__builtin_convertvector(turned.second, Doubles4), frame(i + 2));
    }

    TVDELAY_INLINE void clear(int i) { widen(i, TurnedFrames{}); }

private:
    double samples_[2 * (kInputHistory + kMaxSubBlock + 2 * kSubBlockStep)];
};

} // namespace
