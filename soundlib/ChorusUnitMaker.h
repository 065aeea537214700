// Allocation of a `ChorusUnit` that is ready to run.
#pragma once

#include "soundlib/ChorusUnit.h"

// Frequencies in Hz that `makeChorusUnit` gives to `designSmoother`.
constexpr float kDelaySmootherFrequency = 10.0f;
constexpr float kWetSmootherFrequency = 20.0f;

// Makes a unit with cleared lines, stereo input and a slow, shallow chorus: 0.3 of the rate, 0.25
// of the depth, 0.5 of the delay, no feedback, wet 0.5. The smoothers are settled on these values,
// so that the first sample is processed as any later one. Throws std::bad_alloc; not for an audio
// thread.
ChorusUnit* makeChorusUnit();

// Releases `unit` with its lines and smoothers. A null pointer does nothing.
void destroyChorusUnit(ChorusUnit* unit);
