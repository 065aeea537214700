// Lanes of the filters are left and right of both chains, and two pairs take turns in one loop:
// each waits long for its own last result, and fills the other's waiting time.
#define TVDELAY_TARGET __attribute__((target("avx")))

#include "effect/LiveField.h"
#include "effect/SubBlockRender.h"

#include <immintrin.h>

namespace {

TVDELAY_INLINE __m128d gather(const double& left, const double& right) {
    return _mm_set_pd(right, left);
}

TVDELAY_INLINE __m256d gatherTwice(const double& left, const double& right) {
    const __m128d both = gather(left, right);
    return _mm256_set_m128d(both, both);
}

TVDELAY_INLINE void scatter(__m128d lanes, double& left, double& right) {
    _mm_storel_pd(&left, lanes);
    _mm_storeh_pd(&right, lanes);
}

// A pair while it runs over a sub-block; its filters get their state back by `finish`.
struct RunningPair {
    TVDELAY_INLINE void start(FilterPair filters, SubBlockTaps& taps) {
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
    TVDELAY_INLINE void tickTwo(long i, SubBlockTaps& out) {
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
    TVDELAY_INLINE void tickOne(long i, SubBlockTaps& out) {
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

    TVDELAY_INLINE void finish(long frames) {
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
    TVDELAY_INLINE __m256d advance(long i) {
        const __m256d x =
            _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(in + 2 * (kInputHistory + i)));
        const __m256d v = _mm256_set1_pd(kAntiDenormal);
        s0 = _mm256_add_pd(_mm256_add_pd(s0, v), _mm256_mul_pd(_mm256_sub_pd(x, s0), c));
        s1 = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s0, s1), c), s1);
        s2 = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s1, s2), c), s2);
        s3 = _mm256_add_pd(_mm256_mul_pd(_mm256_sub_pd(s2, s3), c), s3);
        return s3;
    }

    TVDELAY_INLINE __m256d stagesOf(int stage) const {
        return _mm256_set_m128d(gather(pair.left->highStages[stage], pair.right->highStages[stage]),
                                gather(pair.left->lowStages[stage], pair.right->lowStages[stage]));
    }

    TVDELAY_INLINE void keepStages(int stage, __m256d s) {
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

TVDELAY_INLINE __m256 bytesAt(const void* bytes) {
    return _mm256_loadu_ps(static_cast<const float*>(bytes));
}

TVDELAY_INLINE std::int64_t wordAt(const double& value) {
    std::int64_t word;
    std::memcpy(&word, &value, sizeof(word));
    return word;
}

struct Kernel {
    template <int kPairs>
    class FieldWatch {
    public:
        TVDELAY_INLINE FieldWatch(const SubBlock& subBlock, const DelayFields& liveFields,
                                  const DelayFields& held)
            : live(liveFields), feedBack(liveFields.feedBack),
              heldDelay(bytesAt(&held.delayLength)), heldPlacement(bytesAt(&held.lowPass)),
              heldMix(wordAt(held.mix)), heldPanDepth(wordAt(held.panDepth)),
              heldFeedBack(bitsOf(subBlock.feedBack)) {
            for (int pair = 0; pair < kPairs; ++pair) {
                gains[2 * pair] = gainsOf(subBlock.pairs[pair].left);
                gains[2 * pair + 1] = gainsOf(subBlock.pairs[pair].right);
            }
            for (int filter = 0; filter < kFilters; ++filter) {
                heldGains[filter] = bytesAt(gains[filter]);
            }
        }

        TVDELAY_INLINE bool twoFramesAlike() const {
            __m256 change = _mm256_setzero_ps();
            std::int64_t wordChange = 0;
            for (int frame = 0; frame < 2; ++frame) {
                forgetMemory();
                change = _mm256_or_ps(change, _mm256_xor_ps(heldDelay, bytesAt(&live.delayLength)));
                change = _mm256_or_ps(change, _mm256_xor_ps(heldPlacement, bytesAt(&live.lowPass)));
                for (int filter = 0; filter < kFilters; ++filter) {
                    change = _mm256_or_ps(change,
                                          _mm256_xor_ps(heldGains[filter], bytesAt(gains[filter])));
                }
                wordChange |= wordAt(live.mix) ^ heldMix;
                wordChange |= wordAt(live.panDepth) ^ heldPanDepth;
                wordChange |= bitsOf(feedBack) ^ heldFeedBack;
            }
            const __m256i bits = _mm256_castps_si256(change);
            return _mm256_testz_si256(bits, bits) != 0 && wordChange == 0;
        }

    private:
        static constexpr int kFilters = 2 * kPairs;

        // A filter's three gains, with the input before them, which changes only when a sub-block
        // is over.
        TVDELAY_INLINE static const void* gainsOf(const FourPoleFilter* filter) {
            return &filter->inputHistory[kInputHistory - 1];
        }

        const DelayFields& live;
        const float& feedBack;
        __m256 heldDelay;     // length and position
        __m256 heldPlacement; // filters, their places and the balance
        std::int64_t heldMix;
        std::int64_t heldPanDepth;
        int heldFeedBack;
        const void* gains[kFilters + 1];
        __m256 heldGains[kFilters + 1];
    };

    template <typename Meanwhile>
    TVDELAY_TARGET static int tickPair(FilterPair pair, SubBlockTaps& in, SubBlockTaps& out,
                                       int frames, Meanwhile meanwhile) {
        RunningPair running;
        running.start(pair, in);
        const long even = frames / 2 * 2;
        long i = 0;
        while (i < even && meanwhile(i)) {
            running.tickTwo(i, out);
            i += 2;
        }
        if (i == even && i < frames && meanwhile(i)) {
            running.tickOne(i, out);
            ++i;
        }
        running.finish(i);
        return static_cast<int>(i);
    }

    template <typename Meanwhile>
    TVDELAY_TARGET static int tickTwoPairs(FilterPair first, FilterPair second, SubBlockTaps& in,
                                           SubBlockTaps& between, SubBlockTaps& out, int frames,
                                           Meanwhile meanwhile) {
        // How far the second pair runs behind the first, so that what it takes is ready.
        constexpr long kLag = 8;
        RunningPair ahead;
        RunningPair behind;
        ahead.start(first, in);
        behind.start(second, between);
        const long even = frames / 2 * 2;
        long i = 0;
        while (i < even && meanwhile(i)) {
            ahead.tickTwo(i, between);
            if (i >= kLag) {
                behind.tickTwo(i - kLag, out);
            }
            i += 2;
        }
        long done = i > kLag ? i - kLag : 0;
        if (i == even && i < frames && meanwhile(i)) {
            ahead.tickOne(i, between);
            ++i;
        }
        for (; done + 2 <= i; done += 2) {
            behind.tickTwo(done, out);
        }
        if (done < i) {
            behind.tickOne(done, out);
        }
        ahead.finish(i);
        behind.finish(i);
        return static_cast<int>(i);
    }
};

} // namespace

TVDELAY_TARGET void renderSubBlockAvx(SubBlock& subBlock, const DelayFields& live,
                                      const DelayFields& held) {
    renderWith<Kernel>(subBlock, live, held);
}
