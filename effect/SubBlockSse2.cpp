// Lanes of the filters are left and right; each chain has registers of its own.
#define TVDELAY_TARGET

#include "effect/LiveField.h"
#include "effect/SubBlockRender.h"

#include <emmintrin.h>

namespace {

TVDELAY_INLINE __m128d gather(const double& left, const double& right) {
    return _mm_set_pd(right, left);
}

TVDELAY_INLINE void scatter(__m128d lanes, double& left, double& right) {
    _mm_storel_pd(&left, lanes);
    _mm_storeh_pd(&right, lanes);
}

TVDELAY_INLINE __m128i bytesAt(const void* bytes) {
    return _mm_loadu_si128(static_cast<const __m128i*>(bytes));
}

struct Kernel {
    template <int kPairs>
    class FieldWatch {
    public:
        TVDELAY_INLINE FieldWatch(const SubBlock& subBlock, const DelayFields& live,
                                  const DelayFields& held)
            : feedBack(live.feedBack), heldFeedBack(bitsOf(subBlock.feedBack)) {
            watch(0, &live.delayLength, &held.delayLength);
            watch(1, &live.delayPosition, &held.delayPosition);
            watch(2, &live.lowPass, &held.lowPass);           // and highPass
            watch(3, &live.highPassType, &held.highPassType); // and lowPassType and leftRight
            watch(4, &live.mix, &held.mix);
            watch(5, &live.lastSampleRate, &held.lastSampleRate); // and panDepth
            for (int pair = 0; pair < kPairs; ++pair) {
                watchGains(kFields + 4 * pair, subBlock.pairs[pair].left);
                watchGains(kFields + 4 * pair + 2, subBlock.pairs[pair].right);
            }
        }

        TVDELAY_INLINE bool twoFramesAlike() const {
            __m128i change = _mm_setzero_si128();
            for (int frame = 0; frame < 2; ++frame) {
                forgetMemory();
                change = _mm_or_si128(change, _mm_cvtsi32_si128(bitsOf(feedBack) ^ heldFeedBack));
                for (int part = 0; part < kParts; ++part) {
                    change =
                        _mm_or_si128(change, _mm_xor_si128(parts[part], bytesAt(places[part])));
                }
            }
            return _mm_movemask_epi8(_mm_cmpeq_epi8(change, _mm_setzero_si128())) == 0xffff;
        }

    private:
        static constexpr int kFields = 6;
        static constexpr int kParts = kFields + 4 * kPairs;

        TVDELAY_INLINE void watch(int part, const void* live, const void* held) {
            places[part] = live;
            parts[part] = bytesAt(held);
        }

        TVDELAY_INLINE void watchGains(int part, const FourPoleFilter* filter) {
            watch(part, &filter->lowGain, &filter->lowGain);     // and midGain
            watch(part + 1, &filter->midGain, &filter->midGain); // and highGain
        }

        const float& feedBack;
        int heldFeedBack;
        const void* places[kParts];
        __m128i parts[kParts];
    };

    template <typename Meanwhile>
    static int tickPair(FilterPair pair, SubBlockTaps& in, SubBlockTaps& out, int frames,
                        Meanwhile meanwhile) {
        FourPoleFilter* const left = pair.left;
        FourPoleFilter* const right = pair.right;
        const __m128d v = _mm_set1_pd(kAntiDenormal);
        const __m128d lowC = gather(left->lowCoefficient, right->lowCoefficient);
        const __m128d highC = gather(left->highCoefficient, right->highCoefficient);
        const __m128d lowGain = gather(left->lowGain, right->lowGain);
        const __m128d midGain = gather(left->midGain, right->midGain);
        const __m128d highGain = gather(left->highGain, right->highGain);
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

        int i = 0;
        for (; i < frames && (i % 2 != 0 || meanwhile(i)); ++i) {
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
        }

        for (int stage = 0; stage < 4; ++stage) {
            scatter(low[stage], left->lowStages[stage], right->lowStages[stage]);
            scatter(high[stage], left->highStages[stage], right->highStages[stage]);
        }
        for (int age = 0; age < kInputHistory; ++age) {
            scatter(history[age], left->inputHistory[age], right->inputHistory[age]);
        }
        return i;
    }

    template <typename Meanwhile>
    TVDELAY_INLINE static int tickTwoPairs(FilterPair first, FilterPair second, SubBlockTaps& in,
                                           SubBlockTaps& between, SubBlockTaps& out, int frames,
                                           Meanwhile meanwhile) {
        const int taken = tickPair(first, in, between, frames, meanwhile);
        return tickPair(second, between, out, taken, [](long) { return true; });
    }
};

} // namespace

void renderSubBlockSse2(SubBlock& subBlock, const DelayFields& live, const DelayFields& held) {
    renderWith<Kernel>(subBlock, live, held);
}
