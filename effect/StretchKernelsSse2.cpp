// Lanes of the filters are left and right; each chain has registers of its own.
#include "effect/LiveField.h"
#include "effect/StretchRender.h"

#include <emmintrin.h>

namespace {

TVDELAY_INLINE __m128d gather(const double& left, const double& right) {
    return _mm_set_pd(right, left);
}

TVDELAY_INLINE void scatter(__m128d lanes, double& left, double& right) {
    _mm_storel_pd(&left, lanes);
    _mm_storeh_pd(&right, lanes);
}

struct Pairs {
    template <typename Meanwhile>
    static void tickPair(FilterPair pair, StretchTaps& in, StretchTaps& out, int frames,
                         Meanwhile meanwhile) {
        FourPoleFilter* const left = pair.left;
        FourPoleFilter* const right = pair.right;
        const __m128d v = _mm_set1_pd(kAntiDenormal);
        const __m128d lowC = gather(left->lowCoefficient, right->lowCoefficient);
        const __m128d highC = gather(left->highCoefficient, right->highCoefficient);
        __m128d low[4];
        __m128d high[4];
        for (int stage = 0; stage < 4; ++stage) {
            low[stage] = gather(left->lowStages[stage], right->lowStages[stage]);
            high[stage] = gather(left->highStages[stage], right->highStages[stage]);
        }
        __m128d history[kInputHistory];
        for (int age = 0; age < kInputHistory; ++age) {
            history[age] = gather(left->inputHistory[age], right->inputHistory[age]);
        }
        const __m128d lowGain = gather(left->lowGain, right->lowGain);
        const __m128d midGain = gather(left->midGain, right->midGain);
        const __m128d highGain = gather(left->highGain, right->highGain);

        for (int i = 0; i < frames; ++i) {
            const __m128d x = _mm_load_pd(in.first() + 2 * i);
            low[0] = _mm_add_pd(_mm_add_pd(low[0], v), _mm_mul_pd(_mm_sub_pd(x, low[0]), lowC));
            high[0] = _mm_add_pd(_mm_add_pd(high[0], v), _mm_mul_pd(_mm_sub_pd(x, high[0]), highC));
            for (int stage = 1; stage < 4; ++stage) {
                low[stage] = _mm_add_pd(_mm_mul_pd(_mm_sub_pd(low[stage - 1], low[stage]), lowC),
                                        low[stage]);
                high[stage] = _mm_add_pd(
                    _mm_mul_pd(_mm_sub_pd(high[stage - 1], high[stage]), highC), high[stage]);
            }
            const __m128d midBand = _mm_sub_pd(high[3], low[3]);
            const __m128d highBand = _mm_sub_pd(history[2], high[3]);
            const __m128d result =
                _mm_add_pd(_mm_add_pd(_mm_mul_pd(highGain, highBand), _mm_mul_pd(midGain, midBand)),
                           _mm_mul_pd(lowGain, low[3]));
            _mm_store_pd(out.first() + 2 * i, _mm_cvtps_pd(_mm_cvtpd_ps(result)));
            history[2] = history[1];
            history[1] = history[0];
            history[0] = x;
            if (i % 2 == 0) {
                meanwhile(i);
            }
        }

        for (int stage = 0; stage < 4; ++stage) {
            scatter(low[stage], left->lowStages[stage], right->lowStages[stage]);
            scatter(high[stage], left->highStages[stage], right->highStages[stage]);
        }
        for (int age = 0; age < kInputHistory; ++age) {
            scatter(history[age], left->inputHistory[age], right->inputHistory[age]);
        }
    }

    template <typename Meanwhile>
    TVDELAY_INLINE static void tickTwoPairs(FilterPair first, FilterPair second, StretchTaps& in,
                                            StretchTaps& between, StretchTaps& out, int frames,
                                            Meanwhile meanwhile) {
        tickPair(first, in, between, frames, meanwhile);
        tickPair(second, between, out, frames, NoFactors());
    }
};

void render(Stretch& stretch) {
    renderWith<Pairs>(stretch);
}

TVDELAY_INLINE __m128i bytesAt(const void* bytes, int offset) {
    return _mm_loadu_si128(
        reinterpret_cast<const __m128i*>(static_cast<const char*>(bytes) + offset));
}

constexpr int kFieldParts = 7;
constexpr int kFieldOffsets[kFieldParts] = {0, 16, 32, 48, 64, 80, sizeof(SampleFields) - 16};

template <int kPairs>
TVDELAY_INLINE int countAlikeWith(const Stretch& stretch, const SampleFields& live,
                                  const SampleFields& held, const float& liveFeedBack, int most) {
    __m128i fields[kFieldParts];
    for (int part = 0; part < kFieldParts; ++part) {
        fields[part] = bytesAt(&held, kFieldOffsets[part]);
    }
    constexpr int kGainParts = 4 * kPairs;
    const double* gainPlaces[kGainParts + 1];
    __m128i gains[kGainParts + 1];
    for (int pair = 0; pair < kPairs; ++pair) {
        gainPlaces[4 * pair] = &stretch.pairs[pair].left->lowGain;
        gainPlaces[4 * pair + 1] = &stretch.pairs[pair].left->midGain;
        gainPlaces[4 * pair + 2] = &stretch.pairs[pair].right->lowGain;
        gainPlaces[4 * pair + 3] = &stretch.pairs[pair].right->midGain;
    }
    for (int part = 0; part < kGainParts; ++part) {
        gains[part] = bytesAt(gainPlaces[part], 0);
    }

    for (int count = 0; count < most; ++count) {
        forgetMemory();
        __m128i change = _mm_cvtsi32_si128(bitsOf(liveFeedBack) ^ bitsOf(stretch.feedBack));
        for (int part = 0; part < kFieldParts; ++part) {
            change = _mm_or_si128(change,
                                  _mm_xor_si128(fields[part], bytesAt(&live, kFieldOffsets[part])));
        }
        for (int part = 0; part < kGainParts; ++part) {
            change = _mm_or_si128(change, _mm_xor_si128(gains[part], bytesAt(gainPlaces[part], 0)));
        }
        if (_mm_movemask_epi8(_mm_cmpeq_epi8(change, _mm_setzero_si128())) != 0xffff) {
            return count;
        }
    }
    return most;
}

int countAlike(const Stretch& stretch, const SampleFields& live, const SampleFields& held,
               const float& liveFeedBack, int most) {
    switch (stretch.pairsRunning) {
    case 2:
        return countAlikeWith<2>(stretch, live, held, liveFeedBack, most);
    case 1:
        return countAlikeWith<1>(stretch, live, held, liveFeedBack, most);
    default:
        return countAlikeWith<0>(stretch, live, held, liveFeedBack, most);
    }
}

} // namespace

const StretchKernels kSse2Kernels = {countAlike, render};
