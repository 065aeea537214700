// The filter of the signal path: two chains of four one-pole low-pass stages on one input, and
// three bands formed from them.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <cstddef>

// A plain record. `init` makes it usable; after that only `tick` changes it, apart from the three
// gains, which the owner may write at any time and from any thread.
struct FourPoleFilter {
    double lowCoefficient; // 2 sin(pi f / fs)
    double lowStages[4];   // input side first
    double highCoefficient;
    double highStages[4];
    double inputHistory[3]; // newest first
    double lowGain;
    double midGain;
    double highGain;
};

// The fast signal path loads the oldest input and the three gains as one.
static_assert(offsetof(FourPoleFilter, lowGain) ==
              offsetof(FourPoleFilter, inputHistory) + 3 * sizeof(double));
static_assert(offsetof(FourPoleFilter, midGain) ==
              offsetof(FourPoleFilter, lowGain) + sizeof(double));
static_assert(offsetof(FourPoleFilter, highGain) ==
              offsetof(FourPoleFilter, lowGain) + 2 * sizeof(double));

// Clears the state and sets all gains to 1.0. Frequencies and rate in Hz; any value is taken as it
// stands.
void init(FourPoleFilter* filter, VstInt32 lowFrequency, VstInt32 highFrequency,
          VstInt32 sampleRate);

// One sample through the filter. The bands are taken against the input of three ticks ago.
// Not-a-numbers and infinities stay in the stages until the next `init`.
double tick(FourPoleFilter* filter, double sample);

// Goes into the first stage of each chain with each tick and keeps the states out of denormal range
// when the input falls silent: 1 / 4294967295.
constexpr double kAntiDenormal = 2.3283064370807974e-10;
