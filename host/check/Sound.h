// Sound that checks feed and compare.
#pragma once

#include "host/check/CheckRun.h"

#include <cstddef>
#include <vector>

namespace tvhost {

// Channels of equal length at full scale 1.0.
using Sound = std::vector<std::vector<float>>;

Sound silence(int channels, int frames);
// White noise, evenly spread between `-level` and `level`.
Sound noise(CheckRun& run, int channels, int frames, float level);

// Of the frames from `first` to before `end`; `end` may lie behind the last. What is no number
// counts as infinity.
float peak(const Sound& sound, std::size_t first = 0, std::size_t end = ~std::size_t{0});
bool isFinite(const Sound& sound);
// The level of the difference relative to the louder of both, in dB; -400 when they are equal.
// Samples that are no number in both count as equal.
double differenceInDb(const Sound& a, const Sound& b);

// The mean power of all channels; -400 dB for silence.
double levelInDb(const Sound& sound);

} // namespace tvhost
