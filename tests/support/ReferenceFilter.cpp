#include "tests/support/ReferenceFilter.h"

#include <cmath>

void ReferenceFilter::init(std::int32_t lowFrequency, std::int32_t highFrequency,
                           std::int32_t sampleRate) {
    for (int i = 0; i < 4; ++i) {
        lowStages[i] = 0.0;
        highStages[i] = 0.0;
    }
    for (int i = 0; i < 3; ++i) {
        inputHistory[i] = 0.0;
    }
    lowGain = 1.0;
    midGain = 1.0;
    highGain = 1.0;
    const double r = 1.0 / static_cast<double>(sampleRate);
    const double sLow = std::sin((static_cast<double>(lowFrequency) * 3.141592653589793) * r);
    lowCoefficient = sLow + sLow;
    const double sHigh = std::sin((static_cast<double>(highFrequency) * 3.141592653589793) * r);
    highCoefficient = sHigh + sHigh;
}

namespace {

void runChain(double* s, double c, double x) {
    const double v = 1.0 / 4294967295.0;
    s[0] = (s[0] + v) + (x - s[0]) * c;
    s[1] = (s[0] - s[1]) * c + s[1];
    s[2] = (s[1] - s[2]) * c + s[2];
    s[3] = (s[2] - s[3]) * c + s[3];
}

} // namespace

double ReferenceFilter::tick(double sample) {
    runChain(lowStages, lowCoefficient, sample);
    runChain(highStages, highCoefficient, sample);
    const double low = lowStages[3];
    const double mid = highStages[3] - lowStages[3];
    const double high = inputHistory[2] - highStages[3];
    const double result = (highGain * high + midGain * mid) + lowGain * low;
    inputHistory[2] = inputHistory[1];
    inputHistory[1] = inputHistory[0];
    inputHistory[0] = sample;
    return result;
}
