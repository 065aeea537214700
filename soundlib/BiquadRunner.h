// Runs the filter that a `BiquadDesigner` has designed, on its two state values.
#pragma once

#include <cstdint>

#include "soundlib/BiquadDesigner.h"

// Filters one sample in transposed direct form II and gives the output. Allocates nothing.
double tickBiquad(BiquadDesigner* filter, double input);

// Filters `sampleFrames` samples of one channel, in double precision between float samples. The
// output is bit for bit that of `tickBiquad` sample by sample, but for the sign of a zero: a state
// that has decayed below 1e-100 is cleared, so that silence costs no more than sound. `input` and
// `output` may be the same buffer. A `sampleFrames` of 0 or below does nothing. Allocates nothing.
// A setter on another thread has to wait until the block is done.
void runBiquad(BiquadDesigner* filter, const float* input, float* output,
               std::int32_t sampleFrames);

// The same for two channels, each with a filter of its own: both advance together, in little more
// time than one takes. `left` and `right` must be two filters.
void runBiquadPair(BiquadDesigner* left, BiquadDesigner* right, const float* const* inputs,
                   float* const* outputs, std::int32_t sampleFrames);
