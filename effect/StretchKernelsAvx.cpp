// Lanes of the filters are left and right of both chains, and two pairs take turns in one loop:
// each waits long for its own last result, and fills the other's waiting time.
#include "effect/LiveField.h"
#include "effect/StretchRender.h"

#include <immintrin.h>

#define TVDELAY_AVX __attribute__((target("avx")))

namespace {

TVDELAY_AVX TVDELAY_INLINE __m128d gather(const double& left, const double& right) {
    return _mm_set_pd(right, left);
}

TVDELAY_AVX TVDELAY_INLINE __m256d gatherTwice(const double& left, const double& right) {
    const __m128d both = gather(left, right);
    return _mm256_set_m128d(both, both);
}

TVDELAY_AVX TVDELAY_INLINE void scatter(__m128d lanes, double& left, double& right) {
    _mm_storel_pd(&left, lanes);
    _mm_storeh_pd(&right, lanes);
}

// A pair while it runs over a stretch; its filters get their state back by `finish`.
struct RunningPair {
    TVDELAY_AVX TVDELAY_INLINE void start(FilterPair filters, StretchTaps& taps) {
        pair = filters;
        in = taps.samples;
        c = _mm256_set_m128d(gather(pair.left->highCoefficient, pair.right->highCoefficient),
                             gather(pair.left->lowCoefficient, pair.right->lowCoefficient));
        lowGain = gatherTwice(pair.left->lowGain, pair.right->lowGain);
        midGain = gatherTwice(pair.left->midGain, pair.right->midGain);
        highGain = gatherTwice(pair.left->highGain, pair.right->highGain);
        s0 = stagesOf(0);
        s1 = stagesOf(1);
        s2 = stagesOf(2);
        s3 = stagesOf(3);
        for (int age = 0; age < kInputHistory; ++age) {
            _mm_store_pd(taps.samples + 2 * (kInputHistory - 1 - age),
                         gather(pair.left->inputHistory[age], pair.right->inputHistory[age]));
        }
    }

    // Frames `i` and `i + 1`; writes their results, rounded to single precision, to `out`.
    TVDELAY_AVX TVDELAY_INLINE void tickTwo(long i, StretchTaps& out) {
        const __m256d first = advance(i);
        const __m256d second = advance(i + 1);
        const __m256d lowBand = _mm256_permute2f128_pd(first, second, 0x20);
        const __m256d highChain = _mm256_permute2f128_pd(first, second, 0x31);
        const __m256d midBand = _mm256_sub_pd(highChain, lowBand);
        const __m256d highBand = _mm256_sub_pd(_mm256_loadu_pd(in + 2 * i), highChain);
        const __m256d result = _mm256_add_pd(
            _mm256_add_pd(_mm256_mul_pd(highGain, highBand), _mm256_mul_pd(midGain, midBand)),
            _mm256_mul_pd(lowGain, lowBand));
        _mm256_storeu_pd(out.first() + 2 * i, _mm256_cvtps_pd(_mm256_cvtpd_ps(result)));
    }

    // Frame `i` by itself.
    TVDELAY_AVX TVDELAY_INLINE void tickOne(long i, StretchTaps& out) {
        const __m256d chains = advance(i);
        const __m128d lowBand = _mm256_castpd256_pd128(chains);
        const __m128d highChain = _mm256_extractf128_pd(chains, 1);
        const __m128d midBand = _mm_sub_pd(highChain, lowBand);
        const __m128d highBand = _mm_sub_pd(_mm_load_pd(in + 2 * i), highChain);
        const __m128d high = _mm_mul_pd(_mm256_castpd256_pd128(highGain), highBand);
        const __m128d mid = _mm_mul_pd(_mm256_castpd256_pd128(midGain), midBand);
        const __m128d low = _mm_mul_pd(_mm256_castpd256_pd128(lowGain), lowBand);
        _mm_store_pd(out.first() + 2 * i,
                     _mm_cvtps_pd(_mm_cvtpd_ps(_mm_add_pd(_mm_add_pd(high, mid), low))));
    }

    TVDELAY_AVX TVDELAY_INLINE void finish(int frames) {
        keepStages(0, s0);
        keepStages(1, s1);
        keepStages(2, s2);
        keepStages(3, s3);
        for (int age = 0; age < kInputHistory; ++age) {
            scatter(_mm_load_pd(in + 2 * (kInputHistory + frames - 1 - age)),
                    pair.left->inputHistory[age], pair.right->inputHistory[age]);
        }
    }

private:
    // Both chains on the input of frame `i`; returns their last stages.
    TVDELAY_AVX TVDELAY_INLINE __m256d advance(long i) {
        const __m256d x =
            _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(in + 2 * (kInputHistory + i)));
        const __m256d v = _mm256_set1_pd(kAntiDenormal);
        s0 = _mm256_add_pd(_mm256_add_pd(s0, v), _mm256_mul_pd(_mm256_sub_pd(x, s0), c));
        s1 = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s0, s1), c), s1);
        s2 = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s1, s2), c), s2);
        s3 = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s2, s3), c), s3);
        return s3;
    }

    TVDELAY_AVX TVDELAY_INLINE __m256d stagesOf(int stage) const {
        return _mm256_set_m128d(gather(pair.left->highStages[stage], pair.right->highStages[stage]),
                                gather(pair.left->lowStages[stage], pair.right->lowStages[stage]));
    }

    TVDELAY_AVX TVDELAY_INLINE void keepStages(int stage, __m256d s) {
        scatter(_mm256_castpd256_pd128(s), pair.left->lowStages[stage],
                pair.right->lowStages[stage]);
        scatter(_mm256_extractf128_pd(s, 1), pair.left->highStages[stage],
                pair.right->highStages[stage]);
    }

    FilterPair pair;
    const double* in;
    __m256d c;
    __m256d lowGain;
    __m256d midGain;
    __m256d highGain;
    __m256d s0;
    __m256d s1;
    __m256d s2;
    __m256d s3;
};

struct Pairs {
    template <typename Meanwhile>
    TVDELAY_AVX static void tickPair(FilterPair pair, StretchTaps& in, StretchTaps& out, int frames,
                                     Meanwhile meanwhile) {
        RunningPair running;
        running.start(pair, in);
        long i = 0;
        for (; i + 2 <= frames; i += 2) {
            running.tickTwo(i, out);
            meanwhile(i);
        }
        if (i < frames) {
            running.tickOne(i, out);
            meanwhile(i);
        }
        running.finish(frames);
    }

    template <typename Meanwhile>
    TVDELAY_AVX static void tickTwoPairs(FilterPair first, FilterPair second, StretchTaps& in,
                                         StretchTaps& between, StretchTaps& out, int frames,
                                         Meanwhile meanwhile) {
        // How far the second pair runs behind the first, so that what it takes is ready.
        constexpr long kLag = 8;
        if (frames < kLag) {
            tickPair(first, in, between, frames, meanwhile);
            tickPair(second, between, out, frames, NoFactors());
            return;
        }
        RunningPair ahead;
        RunningPair behind;
        ahead.start(first, in);
        behind.start(second, between);
        for (long i = 0; i < kLag; i += 2) {
            ahead.tickTwo(i, between);
            meanwhile(i);
        }
        long i = kLag;
        for (; i + 2 <= frames; i += 2) {
            ahead.tickTwo(i, between);
            behind.tickTwo(i - kLag, out);
            meanwhile(i);
        }
        if (i < frames) {
            ahead.tickOne(i, between);
            meanwhile(i);
        }
        i -= kLag;
        for (; i + 2 <= frames; i += 2) {
            behind.tickTwo(i, out);
        }
        if (i < frames) {
            behind.tickOne(i, out);
        }
        ahead.finish(frames);
        behind.finish(frames);
    }
};

TVDELAY_AVX void render(Stretch& stretch) {
    renderWith<Pairs>(stretch);
}

TVDELAY_AVX TVDELAY_INLINE __m256 bytesAt(const void* bytes) {
    return _mm256_loadu_ps(static_cast<const float*>(bytes));
}

TVDELAY_AVX TVDELAY_INLINE __m256 changeAt(const void* bytes, __m256 held) {
    return _mm256_xor_ps(held, bytesAt(bytes));
}

TVDELAY_AVX TVDELAY_INLINE std::int64_t wordAt(const double& value) {
    std::int64_t word;
    std::memcpy(&word, &value, sizeof(word));
    return word;
}

// A filter's three gains, with the input before them, which is the audio thread's own.
TVDELAY_AVX TVDELAY_INLINE const void* gainsOf(const FourPoleFilter* filter) {
    return &filter->inputHistory[2];
}

template <int kPairs>
TVDELAY_AVX TVDELAY_INLINE int countAlikeWith(const Stretch& stretch, const SampleFields& live,
                                              const SampleFields& held, const float& liveFeedBack,
                                              int most) {
    // Length and position of the delay; filters, their places and the balance.
    const __m256 delay = bytesAt(&held.delayLength);
    const __m256 placement = bytesAt(&held.lowPass);
    const std::int64_t mix = wordAt(held.mix);
    const std::int64_t panDepth = wordAt(held.panDepth);
    const int feedBack = bitsOf(stretch.feedBack);
    constexpr int kFilters = 2 * kPairs;
    const void* filters[kFilters + 1];
    __m256 gains[kFilters + 1];
    for (int pair = 0; pair < kPairs; ++pair) {
        filters[2 * pair] = gainsOf(stretch.pairs[pair].left);
        filters[2 * pair + 1] = gainsOf(stretch.pairs[pair].right);
    }
    for (int filter = 0; filter < kFilters; ++filter) {
        gains[filter] = bytesAt(filters[filter]);
    }

    constexpr int kSamplesPerBranch = 4;
    int count = 0;
    while (count < most) {
        __m256 change = _mm256_setzero_ps();
        std::int64_t wordChange = 0;
        int feedBackChange = 0;
        for (int sample = 0; sample < kSamplesPerBranch; ++sample) {
            forgetMemory();
            change = _mm256_or_ps(change, changeAt(&live.delayLength, delay));
            change = _mm256_or_ps(change, changeAt(&live.lowPass, placement));
            for (int filter = 0; filter < kFilters; ++filter) {
                change = _mm256_or_ps(change, changeAt(filters[filter], gains[filter]));
            }
            wordChange |= wordAt(live.mix) ^ mix;
            wordChange |= wordAt(live.panDepth) ^ panDepth;
            feedBackChange |= bitsOf(liveFeedBack) ^ feedBack;
        }
        const __m256i bits = _mm256_castps_si256(change);
        if (_mm256_testz_si256(bits, bits) == 0 || (wordChange | feedBackChange) != 0) {
            return count;
        }
        count += kSamplesPerBranch;
    }
    return most;
}

TVDELAY_AVX int countAlike(const Stretch& stretch, const SampleFields& live,
                           const SampleFields& held, const float& liveFeedBack, int most) {
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

const StretchKernels kAvxKernels = {countAlike, render};
