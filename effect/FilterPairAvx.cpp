#include "effect/FilterPair.h"

#include "effect/LiveField.h"

#include <immintrin.h>

#define TVDELAY_AVX __attribute__((target("avx")))

namespace {

// Lanes: left low, right low, left high, right high.
TVDELAY_AVX __m256d gatherChains(const double& leftLow, const double& rightLow,
                                 const double& leftHigh, const double& rightHigh) {
    return _mm256_set_pd(rightHigh, leftHigh, rightLow, leftLow);
}

TVDELAY_AVX __m128d gatherLive(const double& left, const double& right) {
    return _mm_set_pd(readLive(right), readLive(left));
}

TVDELAY_AVX void scatter(__m128d lanes, double& left, double& right) {
    _mm_storel_pd(&left, lanes);
    _mm_storeh_pd(&right, lanes);
}

} // namespace

TVDELAY_AVX void tickPairAvx(FourPoleFilter* left, FourPoleFilter* right, float* taps, int frames) {
    constexpr int kHistory = 3;
    // Inputs of both lines in turn, widened, behind those of the last three ticks, oldest first.
    alignas(32) double x[2 * (kHistory + kMaxStretch)];
    for (int age = 0; age < kHistory; ++age) {
        x[2 * (kHistory - 1 - age)] = left->inputHistory[age];
        x[2 * (kHistory - 1 - age) + 1] = right->inputHistory[age];
    }
    for (int i = 0; i < frames; ++i) {
        const __m128 tap =
            _mm_castpd_ps(_mm_load_sd(reinterpret_cast<const double*>(taps + 2 * i)));
        _mm_store_pd(x + 2 * (kHistory + i), _mm_cvtps_pd(tap));
    }

    const __m256d v = _mm256_set1_pd(kAntiDenormal);
    const __m256d c = gatherChains(left->lowCoefficient, right->lowCoefficient,
                                   left->highCoefficient, right->highCoefficient);
    __m256d s[4];
    for (int stage = 0; stage < 4; ++stage) {
        s[stage] = gatherChains(left->lowStages[stage], right->lowStages[stage],
                                left->highStages[stage], right->highStages[stage]);
    }

    for (int i = 0; i < frames; ++i) {
        const __m256d input =
            _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(x + 2 * (kHistory + i)));
        s[0] = _mm256_add_pd(_mm256_add_pd(s[0], v), _mm256_mul_pd(_mm256_sub_pd(input, s[0]), c));
        s[1] = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s[0], s[1]), c), s[1]);
        s[2] = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s[1], s[2]), c), s[2]);
        s[3] = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s[2], s[3]), c), s[3]);

        const __m128d lowChain = _mm256_castpd256_pd128(s[3]);
        const __m128d highChain = _mm256_extractf128_pd(s[3], 1);
        const __m128d midBand = _mm_sub_pd(highChain, lowChain);
        const __m128d highBand = _mm_sub_pd(_mm_load_pd(x + 2 * i), highChain);
        const __m128d lowGain = gatherLive(left->lowGain, right->lowGain);
        const __m128d midGain = gatherLive(left->midGain, right->midGain);
        const __m128d highGain = gatherLive(left->highGain, right->highGain);
        const __m128d result =
            _mm_add_pd(_mm_add_pd(_mm_mul_pd(highGain, highBand), _mm_mul_pd(midGain, midBand)),
                       _mm_mul_pd(lowGain, lowChain));
        _mm_store_sd(reinterpret_cast<double*>(taps + 2 * i), _mm_castps_pd(_mm_cvtpd_ps(result)));
    }

    for (int stage = 0; stage < 4; ++stage) {
        scatter(_mm256_castpd256_pd128(s[stage]), left->lowStages[stage], right->lowStages[stage]);
        scatter(_mm256_extractf128_pd(s[stage], 1), left->highStages[stage],
                right->highStages[stage]);
    }
    for (int age = 0; age < kHistory; ++age) {
        left->inputHistory[age] = x[2 * (kHistory + frames - 1 - age)];
        right->inputHistory[age] = x[2 * (kHistory + frames - 1 - age) + 1];
    }
}
