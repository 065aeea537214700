// The four-pole filter in plain scalar arithmetic, one operation after the other.
#pragma once

#include <cstdint>

// Sixteen doubles in the order of the effect's own record.
struct ReferenceFilter {
    double lowCoefficient;
    double lowStages[4];
    double highCoefficient;
    double highStages[4];
    double inputHistory[3];
    double lowGain;
    double midGain;
    double highGain;

    void init(std::int32_t lowFrequency, std::int32_t highFrequency, std::int32_t sampleRate);
    double tick(double sample);
};
