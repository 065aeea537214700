// A pair of filters, left and right, over a stretch of samples at once.
#pragma once

#include "effect/FourPoleFilter.h"

// The longest stretch, in frames.
constexpr int kMaxStretch = 64;

// Ticks `left` and `right` once for each of `frames` (1 to kMaxStretch) and replaces each tap by
// the result rounded to single precision. `taps` holds left and right in turn. Equal, bit for bit,
// to `tick` on each filter; the gains are read at each tick. Neither allocates nor locks.
using TickPair = void (*)(FourPoleFilter* left, FourPoleFilter* right, float* taps, int frames);

// For any x86-64: lanes are left and right.
void tickPairSse2(FourPoleFilter* left, FourPoleFilter* right, float* taps, int frames);

// For machines with AVX: lanes are left and right of both chains.
void tickPairAvx(FourPoleFilter* left, FourPoleFilter* right, float* taps, int frames);

bool machineHasAvx();

// The fastest that this machine runs, chosen when the code is loaded.
extern const TickPair tickPair;
