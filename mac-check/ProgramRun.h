// A known signal through a program of the effect, and texts of its parameters, in figures that two
// systems can compare.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <cstdint>

inline constexpr int kPrograms = 26;
inline constexpr int kParameters = 9;
inline constexpr int kSpots = 64;

struct ProgramResult {
    std::uint64_t hash;          // of all samples of both channels
    std::uint32_t spots[kSpots]; // the bits of some, evenly spread, from left and right in turn
};

using EffectEntry = AEffect* (*)(audioMasterCallback);

// Answers 2400 to the question for the version and 0 to all else.
VstIntPtr checkingHost(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt);

// Half a second of noise at 8 kHz through a new instance.
ProgramResult runProgram(EffectEntry entry, int program);

// Of all texts of the parameter, from 0 to 1 by hundredths.
std::uint64_t hashOfTexts(AEffect* effect, int parameter);

// How many values lie between two samples, given by their bits.
std::uint32_t distanceInLastBits(std::uint32_t one, std::uint32_t other);
