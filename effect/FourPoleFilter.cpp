#include "effect/FourPoleFilter.h"

#include "effect/LiveField.h"

#include <cmath>
#include <emmintrin.h>

namespace {

double coefficientOf(VstInt32 frequency, double samplePeriod) {
    const double s = std::sin(static_cast<double>(frequency) * 3.141592653589793 * samplePeriod);
    return s + s;
}

} // namespace

void init(FourPoleFilter* filter, VstInt32 lowFrequency, VstInt32 highFrequency,
          VstInt32 sampleRate) {
    for (int stage = 0; stage < 4; ++stage) {
        filter->lowStages[stage] = 0.0;
        filter->highStages[stage] = 0.0;
    }
    for (double& sample : filter->inputHistory) {
        sample = 0.0;
    }
    filter->lowGain = 1.0;
    filter->midGain = 1.0;
    filter->highGain = 1.0;

    const double r = 1.0 / static_cast<double>(sampleRate);
    filter->lowCoefficient = coefficientOf(lowFrequency, r);
    filter->highCoefficient = coefficientOf(highFrequency, r);
}

double tick(FourPoleFilter* filter, double sample) {
    // Lanes: the low chain and the high chain.
    const __m128d c = _mm_set_pd(filter->highCoefficient, filter->lowCoefficient);
    const __m128d x = _mm_set1_pd(sample);
    __m128d s[4];
    for (int stage = 0; stage < 4; ++stage) {
        s[stage] = _mm_set_pd(filter->highStages[stage], filter->lowStages[stage]);
    }
    s[0] = _mm_add_pd(_mm_add_pd(s[0], _mm_set1_pd(kAntiDenormal)),
                      _mm_mul_pd(_mm_sub_pd(x, s[0]), c));
    for (int stage = 1; stage < 4; ++stage) {
        s[stage] = _mm_add_pd(_mm_mul_pd(_mm_sub_pd(s[stage - 1], s[stage]), c), s[stage]);
    }
    for (int stage = 0; stage < 4; ++stage) {
        _mm_storel_pd(&filter->lowStages[stage], s[stage]);
        _mm_storeh_pd(&filter->highStages[stage], s[stage]);
    }

    const double low = filter->lowStages[3];
    const double mid = filter->highStages[3] - filter->lowStages[3];
    const double high = filter->inputHistory[2] - filter->highStages[3];
    const double result = (readLive(filter->highGain) * high + readLive(filter->midGain) * mid) +
                          readLive(filter->lowGain) * low;

    filter->inputHistory[2] = filter->inputHistory[1];
    filter->inputHistory[1] = filter->inputHistory[0];
    filter->inputHistory[0] = sample;
    return result;
}
