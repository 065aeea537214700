// The signal path over a stretch, for the kernel of an instruction set to be built from.
//
// Everything here is inlined into the kernel and compiled for its instruction set: nothing of it
// may leave a function of its own behind, which the linker could give to machines that cannot run
// it.
#pragma once

#include "effect/Stretch.h"

#include <cstring>
#include <emmintrin.h>

#define TVDELAY_INLINE TVDELAY_TARGET __attribute__((always_inline)) inline

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

// What goes on at every second frame while the filters run. Of an odd number of frames the last
// call covers one frame more than there is.
template <typename Watch, typename Factors>
class Meanwhile {
public:
    TVDELAY_INLINE Meanwhile(const Watch& fieldWatch, const Factors& sweepFactors)
        : watch(fieldWatch), factors(sweepFactors) {}

    // False when frame `i` or `i + 1` reads something new: the stretch is to end before `i`.
    TVDELAY_INLINE bool operator()(long i) {
        if (!watch.twoFramesAlike()) {
            return false;
        }
        factors(i);
        return true;
    }

private:
    Watch watch;
    Factors factors;
};

// The taps of a stretch: into the loop, and as they go out.
struct FilteredTaps {
    Channel loopLeft;
    Channel loopRight;
    Channel behindLeft;
    Channel behindRight;
    const float* wetLeft;
    const float* wetRight;
};

// Returns how many frames were taken.
//
// `Kernel` has what depends on the instruction set: tickPair(pair, in, out, frames, meanwhile) runs
// `in` through a pair into `out`, and tickTwoPairs(first, second, in, between, out, frames,
// meanwhile) through two; every result is rounded to single precision. Both ask meanwhile(i) ahead
// of each even frame, end before it when it answers false, and return how many frames they took.
template <typename Kernel, int kPairs, typename Factors>
TVDELAY_INLINE int filterTaps(const Stretch& stretch, const SampleFields& live,
                              const SampleFields& held, const float& liveFeedBack,
                              const Factors& factors, FilteredTaps& filtered) {
    using Watch = typename Kernel::template FieldWatch<kPairs>;
    Meanwhile<Watch, Factors> meanwhile(Watch(stretch, live, held, liveFeedBack), factors);
    filtered.wetLeft = filtered.loopLeft;
    filtered.wetRight = filtered.loopRight;
    if (kPairs == 0) {
        int frames = 0;
        while (frames < stretch.frames && meanwhile(frames)) {
            frames += 2;
        }
        frames = frames < stretch.frames ? frames : stretch.frames;
        copy(stretch.lineLeft, filtered.loopLeft, frames);
        copy(stretch.lineRight, filtered.loopRight, frames);
        return frames;
    }
    StretchTaps taps[kPairs + 1]; // before, between and behind the pairs
    interleave(stretch.lineLeft, stretch.lineRight, taps[0], stretch.frames);
    int frames;
    if constexpr (kPairs == 2) {
        frames = Kernel::tickTwoPairs(stretch.pairs[0], stretch.pairs[1], taps[0], taps[1], taps[2],
                                      stretch.frames, meanwhile);
    } else {
        frames =
            Kernel::tickPair(stretch.pairs[0], taps[0], taps[kPairs], stretch.frames, meanwhile);
    }
    deinterleave(taps[stretch.pairsInside], filtered.loopLeft, filtered.loopRight, frames);
    if (stretch.pairsInside < kPairs) {
        deinterleave(taps[kPairs], filtered.behindLeft, filtered.behindRight, frames);
        filtered.wetLeft = filtered.behindLeft;
        filtered.wetRight = filtered.behindRight;
    }
    return frames;
}

template <typename Kernel, typename Factors>
TVDELAY_INLINE int filterTaps(const Stretch& stretch, const SampleFields& live,
                              const SampleFields& held, const float& liveFeedBack,
                              const Factors& factors, FilteredTaps& filtered) {
    switch (stretch.pairsRunning) {
    case 2:
        return filterTaps<Kernel, 2>(stretch, live, held, liveFeedBack, factors, filtered);
    case 1:
        return filterTaps<Kernel, 1>(stretch, live, held, liveFeedBack, factors, filtered);
    default:
        return filterTaps<Kernel, 0>(stretch, live, held, liveFeedBack, factors, filtered);
    }
}

template <typename Kernel>
TVDELAY_INLINE void renderWith(Stretch& stretch, const SampleFields& live, const SampleFields& held,
                               const float& liveFeedBack) {
    const bool swept = stretch.panDepth != 0.0; // else the factors are exactly 1.0
    FilteredTaps taps;
    double factors[kMaxStretch + 1];
    const int frames =
        swept ? filterTaps<Kernel>(stretch, live, held, liveFeedBack,
                                   SweepFactors(stretch, factors), taps)
              : filterTaps<Kernel>(stretch, live, held, liveFeedBack, NoFactors(), taps);
    stretch.frames = frames;
    if (frames == 0) {
        return;
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
