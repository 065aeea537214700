#include "effect/FilterPair.h"

#include "effect/LiveField.h"

#include <emmintrin.h>

namespace {

__m128d gather(const double& left, const double& right) {
    return _mm_set_pd(right, left);
}

__m128d gatherLive(const double& left, const double& right) {
    return _mm_set_pd(readLive(right), readLive(left));
}

void scatter(__m128d lanes, double& left, double& right) {
    _mm_storel_pd(&left, lanes);
    _mm_storeh_pd(&right, lanes);
}

} // namespace

void tickPairSse2(FourPoleFilter* left, FourPoleFilter* right, float* taps, int frames) {
    const __m128d v = _mm_set1_pd(kAntiDenormal);
    const __m128d lowC = gather(left->lowCoefficient, right->lowCoefficient);
    const __m128d highC = gather(left->highCoefficient, right->highCoefficient);
    __m128d low[4];
    __m128d high[4];
    for (int stage = 0; stage < 4; ++stage) {
        low[stage] = gather(left->lowStages[stage], right->lowStages[stage]);
        high[stage] = gather(left->highStages[stage], right->highStages[stage]);
    }
    __m128d history[3];
    for (int age = 0; age < 3; ++age) {
        history[age] = gather(left->inputHistory[age], right->inputHistory[age]);
    }

    for (int i = 0; i < frames; ++i) {
        float* const tap = taps + 2 * i;
        const __m128d x =
            _mm_cvtps_pd(_mm_castpd_ps(_mm_load_sd(reinterpret_cast<const double*>(tap))));
        low[0] = _mm_add_pd(_mm_add_pd(low[0], v), _mm_mul_pd(_mm_sub_pd(x, low[0]), lowC));
        high[0] = _mm_add_pd(_mm_add_pd(high[0], v), _mm_mul_pd(_mm_sub_pd(x, high[0]), highC));
        for (int stage = 1; stage < 4; ++stage) {
            low[stage] =
                _mm_add_pd(_mm_mul_pd(_mm_sub_pd(low[stage - 1], low[stage]), lowC), low[stage]);
            high[stage] = _mm_add_pd(_mm_mul_pd(_mm_sub_pd(high[stage - 1], high[stage]), highC),
                                     high[stage]);
        }
        const __m128d midBand = _mm_sub_pd(high[3], low[3]);
        const __m128d highBand = _mm_sub_pd(history[2], high[3]);
        const __m128d lowGain = gatherLive(left->lowGain, right->lowGain);
        const __m128d midGain = gatherLive(left->midGain, right->midGain);
        const __m128d highGain = gatherLive(left->highGain, right->highGain);
        const __m128d result =
            _mm_add_pd(_mm_add_pd(_mm_mul_pd(highGain, highBand), _mm_mul_pd(midGain, midBand)),
                       _mm_mul_pd(lowGain, low[3]));
        _mm_store_sd(reinterpret_cast<double*>(tap), _mm_castps_pd(_mm_cvtpd_ps(result)));
        history[2] = history[1];
        history[1] = history[0];
        history[0] = x;
    }

    for (int stage = 0; stage < 4; ++stage) {
        scatter(low[stage], left->lowStages[stage], right->lowStages[stage]);
        scatter(high[stage], left->highStages[stage], right->highStages[stage]);
    }
    for (int age = 0; age < 3; ++age) {
        scatter(history[age], left->inputHistory[age], right->inputHistory[age]);
    }
}
