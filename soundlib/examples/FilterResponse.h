// What a designed filter does to each frequency.
#pragma once

#include "soundlib/BiquadDesigner.h"
#include "soundlib/examples/Picture.h"

// Gain in decibels at `frequency`, a fraction of the sample rate, from the coefficients.
double designedGain(const BiquadDesigner& filter, double frequency);

// The same measured: the level of a sine that has run through the filter.
double measuredGain(BiquadDesigner filter, double frequency);

// Points of `designedGain` over `low` to `high` Hz, evenly spread on a logarithmic axis.
Picture::Points designedCurve(const BiquadDesigner& filter, double sampleRate, double low,
                              double high);

// Points of `measuredGain`, far fewer.
Picture::Points measuredDots(const BiquadDesigner& filter, double sampleRate, double low,
                             double high);

// The axes that the responses are drawn on.
Axis frequencyAxis();
Axis gainAxis(double low, double high, int step);
