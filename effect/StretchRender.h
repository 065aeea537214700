// The signal path over a stretch, for the kernel of an instruction set to be built from.
//
// Everything here is inlined into the kernel and compiled for its instruction set: nothing of it
// may leave a function of its own behind, which the linker could give to machines that cannot run
// it.
#pragma once

#include "effect/Stretch.h"

#include <cstring>
#include <emmintrin.h>

#define TVDELAY_INLINE __attribute__((always_inline)) inline

namespace {

TVDELAY_INLINE int bitsOf(float value) {
    int bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

// How many former inputs a filter keeps.
constexpr int kInputHistory = 3;

// The samples of both lines over a stretch, left and right in turn, widened from single precision.
struct StretchTaps {
    TVDELAY_INLINE double* first() { return samples + 2 * kInputHistory; }
    TVDELAY_INLINE const double* first() const { return samples + 2 * kInputHistory; }

    // The first frames are a pair's room for the inputs of its last ticks, oldest first.
    alignas(64) double samples[2 * (kInputHistory + kMaxStretch)];
};

// The samples of one line or channel.
using Channel = float[kMaxStretch];

TVDELAY_INLINE void interleave(const float* left, const float* right, StretchTaps& taps,
                               int frames) {
    float both[2 * kMaxStretch];
    for (int i = 0; i < frames; ++i) {
        both[2 * i] = left[i];
        both[2 * i + 1] = right[i];
    }
    for (int i = 0; i < 2 * frames; ++i) {
        taps.first()[i] = static_cast<double>(both[i]);
    }
}

TVDELAY_INLINE void deinterleave(const StretchTaps& taps, float* left, float* right, int frames) {
    float both[2 * kMaxStretch];
    for (int i = 0; i < 2 * frames; ++i) {
        both[i] = static_cast<float>(taps.first()[i]);
    }
    for (int i = 0; i < frames; ++i) {
        left[i] = both[2 * i];
        right[i] = both[2 * i + 1];
    }
}

TVDELAY_INLINE void copy(const float* __restrict from, float* __restrict to, int frames) {
    for (int i = 0; i < frames; ++i) {
        to[i] = from[i];
    }
}

TVDELAY_INLINE void feed(float* __restrict line, const float* __restrict taps, float feedBack,
                         const float* __restrict in, int frames) {
    for (int i = 0; i < frames; ++i) {
        line[i] = feedBack * taps[i] + in[i];
    }
}

// Works out the factors by which the sweep dips an output, two samples at a time: nothing in them
// hangs on the filters, so they fit into the time that the filters wait for their own results.
class SweepFactors {
public:
    TVDELAY_INLINE SweepFactors(const Stretch& stretch, double* factors)
        : position(_mm_set_pd(stretch.start + 1.0, stretch.start)),
          length(_mm_set1_pd(stretch.length)), size(_mm_set1_pd(stretch.sineTableSize)),
          panDepth(_mm_set1_pd(stretch.panDepth)), sineTable(stretch.sineTable), out(factors) {}

    // Frames `i` and `i + 1`; to be called for i = 0, 2, 4 and so on. Of an odd number of frames
    // the last call makes one factor more.
    TVDELAY_INLINE void operator()(long i) {
        const __m128d phase = _mm_div_pd(position, length);
        position = _mm_add_pd(position, _mm_set1_pd(2.0));
        const std::int64_t indices = _mm_cvtsi128_si64(_mm_cvttpd_epi32(_mm_mul_pd(phase, size)));
        const __m128d sines = _mm_set_pd(sineTable[indices >> 32], sineTable[indices & 0xffffffff]);
        _mm_storeu_pd(out + i, _mm_sub_pd(_mm_set1_pd(1.0), _mm_mul_pd(panDepth, sines)));
    }

private:
    __m128d position;
    __m128d length;
    __m128d size;
    __m128d panDepth;
    const double* sineTable;
    double* out;
};

// For a stretch without a sweep.
struct NoFactors {
    TVDELAY_INLINE void operator()(long i) {}
};

TVDELAY_INLINE void mixPlain(float* __restrict out, const float* __restrict taps, float gain,
                             double mix, const float* __restrict in, int frames) {
    for (int i = 0; i < frames; ++i) {
        const float wet = taps[i] * gain;
        out[i] = static_cast<float>(static_cast<double>(wet) * mix + static_cast<double>(in[i]));
    }
}

TVDELAY_INLINE void mixSwept(float* __restrict out, const float* __restrict taps, float gain,
                             double mix, const double* __restrict sweep, const float* __restrict in,
                             int frames) {
    for (int i = 0; i < frames; ++i) {
        const float wet = taps[i] * gain;
        out[i] = static_cast<float>((static_cast<double>(wet) * mix) * sweep[i] +
                                    static_cast<double>(in[i]));
    }
}

// The taps of a stretch: into the loop, and as they go out.
struct FilteredTaps {
    Channel loopLeft;
    Channel loopRight;
    Channel behindLeft;
    Channel behindRight;
    const float* wetLeft;
    const float* wetRight;
};

// `Pairs` has the filters: tickPair(pair, in, out, frames, meanwhile) runs `in` through a pair into
// `out`, and tickTwoPairs(first, second, in, between, out, frames, meanwhile) through two; every
// result is rounded to single precision. Both call meanwhile(i) for each even frame.
template <typename Pairs, typename Meanwhile>
TVDELAY_INLINE void filterTaps(const Stretch& stretch, FilteredTaps& filtered,
                               Meanwhile meanwhile) {
    const int frames = stretch.frames;
    filtered.wetLeft = filtered.loopLeft;
    filtered.wetRight = filtered.loopRight;
    if (stretch.pairsRunning == 0) {
        copy(stretch.lineLeft, filtered.loopLeft, frames);
        copy(stretch.lineRight, filtered.loopRight, frames);
        for (long i = 0; i < frames; i += 2) {
            meanwhile(i);
        }
        return;
    }
    StretchTaps taps[3]; // before, between and behind the pairs
    interleave(stretch.lineLeft, stretch.lineRight, taps[0], frames);
    if (stretch.pairsRunning == 2) {
        Pairs::tickTwoPairs(stretch.pairs[0], stretch.pairs[1], taps[0], taps[1], taps[2], frames,
                            meanwhile);
    } else {
        Pairs::tickPair(stretch.pairs[0], taps[0], taps[1], frames, meanwhile);
    }
    deinterleave(taps[stretch.pairsInside], filtered.loopLeft, filtered.loopRight, frames);
    if (stretch.pairsRunning > stretch.pairsInside) {
        deinterleave(taps[stretch.pairsRunning], filtered.behindLeft, filtered.behindRight, frames);
        filtered.wetLeft = filtered.behindLeft;
        filtered.wetRight = filtered.behindRight;
    }
}

template <typename Pairs>
TVDELAY_INLINE void renderWith(Stretch& stretch) {
    const int frames = stretch.frames;
    const bool swept = stretch.panDepth != 0.0; // else the factors are exactly 1.0
    FilteredTaps taps;
    double factors[kMaxStretch + 1];
    if (swept) {
        filterTaps<Pairs>(stretch, taps, SweepFactors(stretch, factors));
    } else {
        filterTaps<Pairs>(stretch, taps, NoFactors());
    }
    stretch.sweepPhase =
        static_cast<double>(stretch.start + frames - 1) / static_cast<double>(stretch.length);
    stretch.sineIndex = static_cast<VstInt32>(stretch.sweepPhase * stretch.sineTableSize);

    Channel inLeft; // the outputs may be written over the inputs
    Channel inRight;
    copy(stretch.inLeft, inLeft, frames);
    copy(stretch.inRight, inRight, frames);
    feed(stretch.lineLeft, taps.loopLeft, stretch.feedBack, inLeft, frames);
    feed(stretch.lineRight, taps.loopRight, stretch.feedBack, inRight, frames);

    // The lines cross here: the right one feeds the left output.
    if (swept && stretch.panSide) {
        mixSwept(stretch.outLeft, taps.wetRight, stretch.gainToLeft, stretch.mix, factors, inLeft,
                 frames);
    } else {
        mixPlain(stretch.outLeft, taps.wetRight, stretch.gainToLeft, stretch.mix, inLeft, frames);
    }
    if (swept && !stretch.panSide) {
        mixSwept(stretch.outRight, taps.wetLeft, stretch.gainToRight, stretch.mix, factors, inRight,
                 frames);
    } else {
        mixPlain(stretch.outRight, taps.wetLeft, stretch.gainToRight, stretch.mix, inRight, frames);
    }
}

} // namespace
