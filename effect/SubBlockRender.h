// The signal path over a sub-block, for the kernel of an instruction set to be built from.
//
// Everything here is inlined into the kernel and compiled for its instruction set: nothing of it
// may leave a function of its own behind, which the linker could give to machines that cannot run
// it.
#pragma once

#include "effect/SubBlock.h"

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

// The samples of both lines over a sub-block, left and right in turn, widened from single
// precision.
struct SubBlockTaps {
    TVDELAY_INLINE double* first() { return samples + 2 * kInputHistory; }
    TVDELAY_INLINE const double* first() const { return samples + 2 * kInputHistory; }

    // The first frames are a pair's room for the inputs of its last ticks, oldest first.
    alignas(64) double samples[2 * (kInputHistory + kMaxSubBlock)];
};

// The samples of one line or channel.
using Channel = float[kMaxSubBlock];

TVDELAY_INLINE void interleave(const float* left, const float* right, SubBlockTaps& taps,
                               int frames) {
    float both[2 * kMaxSubBlock];
    for (int i = 0; i < frames; ++i) {
        both[2 * i] = left[i];
        both[2 * i + 1] = right[i];
    }
    for (int i = 0; i < 2 * frames; ++i) {
        taps.first()[i] = static_cast<double>(both[i]);
    }
}

TVDELAY_INLINE void deinterleave(const SubBlockTaps& taps, float* left, float* right, int frames) {
    float both[2 * kMaxSubBlock];
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
    TVDELAY_INLINE SweepFactors(const SubBlock& subBlock, double* factors)
        : position(_mm_set_pd(subBlock.start + 1.0, subBlock.start)),
          length(_mm_set1_pd(subBlock.length)), size(_mm_set1_pd(subBlock.sineTableSize)),
          panDepth(_mm_set1_pd(subBlock.panDepth)), sineTable(subBlock.sineTable), out(factors) {}

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

// For a sub-block without a sweep.
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

    // False when frame `i` or `i + 1` reads something new: the sub-block is to end before `i`.
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

// The taps of a sub-block: into the loop, and as they go out.
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
TVDELAY_INLINE int filterTaps(const SubBlock& subBlock, const DelayFields& live,
                              const DelayFields& held, const Factors& factors,
                              FilteredTaps& filtered) {
    using Watch = typename Kernel::template FieldWatch<kPairs>;
    Meanwhile<Watch, Factors> meanwhile(Watch(subBlock, live, held), factors);
    filtered.wetLeft = filtered.loopLeft;
    filtered.wetRight = filtered.loopRight;
    if (kPairs == 0) {
        int frames = 0;
        while (frames < subBlock.frames && meanwhile(frames)) {
            frames += 2;
        }
        frames = frames < subBlock.frames ? frames : subBlock.frames;
        copy(subBlock.lineLeft, filtered.loopLeft, frames);
        copy(subBlock.lineRight, filtered.loopRight, frames);
        return frames;
    }
    SubBlockTaps taps[kPairs + 1]; // before, between and behind the pairs
    interleave(subBlock.lineLeft, subBlock.lineRight, taps[0], subBlock.frames);
    int frames;
    if constexpr (kPairs == 2) {
        frames = Kernel::tickTwoPairs(subBlock.pairs[0], subBlock.pairs[1], taps[0], taps[1],
                                      taps[2], subBlock.frames, meanwhile);
    } else {
        frames =
            Kernel::tickPair(subBlock.pairs[0], taps[0], taps[kPairs], subBlock.frames, meanwhile);
    }
    deinterleave(taps[subBlock.pairsInside], filtered.loopLeft, filtered.loopRight, frames);
    if (subBlock.pairsInside < kPairs) {
        deinterleave(taps[kPairs], filtered.behindLeft, filtered.behindRight, frames);
        filtered.wetLeft = filtered.behindLeft;
        filtered.wetRight = filtered.behindRight;
    }
    return frames;
}

template <typename Kernel, typename Factors>
TVDELAY_INLINE int filterTaps(const SubBlock& subBlock, const DelayFields& live,
                              const DelayFields& held, const Factors& factors,
                              FilteredTaps& filtered) {
    switch (subBlock.pairsRunning) {
    case 2:
        return filterTaps<Kernel, 2>(subBlock, live, held, factors, filtered);
    case 1:
        return filterTaps<Kernel, 1>(subBlock, live, held, factors, filtered);
    default:
        return filterTaps<Kernel, 0>(subBlock, live, held, factors, filtered);
    }
}

template <typename Kernel>
TVDELAY_INLINE void renderWith(SubBlock& subBlock, const DelayFields& live,
                               const DelayFields& held) {
    const bool swept = subBlock.panDepth != 0.0; // else the factors are exactly 1.0
    FilteredTaps taps;
    double factors[kMaxSubBlock + 1];
    const int frames =
        swept ? filterTaps<Kernel>(subBlock, live, held, SweepFactors(subBlock, factors), taps)
              : filterTaps<Kernel>(subBlock, live, held, NoFactors(), taps);
    subBlock.frames = frames;
    if (frames == 0) {
        return;
    }
    subBlock.sweepPhase =
        static_cast<double>(subBlock.start + frames - 1) / static_cast<double>(subBlock.length);
    subBlock.sineIndex = static_cast<VstInt32>(subBlock.sweepPhase * subBlock.sineTableSize);

    Channel inLeft; // the outputs may be written over the inputs
    Channel inRight;
    copy(subBlock.inLeft, inLeft, frames);
    copy(subBlock.inRight, inRight, frames);
    feed(subBlock.lineLeft, taps.loopLeft, subBlock.feedBack, inLeft, frames);
    feed(subBlock.lineRight, taps.loopRight, subBlock.feedBack, inRight, frames);

    // The lines cross here: the right one feeds the left output.
    if (swept && subBlock.panSide) {
        mixSwept(subBlock.outLeft, taps.wetRight, subBlock.gainToLeft, subBlock.mix, factors,
                 inLeft, frames);
    } else {
        mixPlain(subBlock.outLeft, taps.wetRight, subBlock.gainToLeft, subBlock.mix, inLeft,
                 frames);
    }
    if (swept && !subBlock.panSide) {
        mixSwept(subBlock.outRight, taps.wetLeft, subBlock.gainToRight, subBlock.mix, factors,
                 inRight, frames);
    } else {
        mixPlain(subBlock.outRight, taps.wetLeft, subBlock.gainToRight, subBlock.mix, inRight,
                 frames);
    }
}

} // namespace
