// VstXSynth's signal path.
//
// Samples are taken in stretches, so that each filter runs over many samples in a row. A stretch
// ends before the lines wrap: none of its taps depends on what it writes. Everything but the
// filters goes sample by sample, and every sample reads the fields that it depends on for itself.
#include "effect/FilterPair.h"
#include "effect/LiveField.h"
#include "effect/VstXSynth.h"
#include "plugin/Truncation.h"

#include <algorithm>
#include <emmintrin.h>

namespace {

// Where the filter pairs stand.
enum Placement : unsigned {
    kLowInside = 1u << 0,
    kLowBehind = 1u << 1,
    kHighInside = 1u << 2,
    kHighBehind = 1u << 3,
};

// Below this many frames a stretch costs more than it saves.
constexpr VstInt32 kMinStretch = 4;

void filterTaps(FourPoleFilter* left, FourPoleFilter* right, float* taps, VstInt32 frames) {
    if (frames >= kMinStretch) {
        tickPair(left, right, taps, frames);
        return;
    }
    for (VstInt32 i = 0; i < frames; ++i) {
        taps[2 * i] = static_cast<float>(tick(left, static_cast<double>(taps[2 * i])));
        taps[2 * i + 1] = static_cast<float>(tick(right, static_cast<double>(taps[2 * i + 1])));
    }
}

// Two floats, `low` in the lower lane.
__m128 twoFloats(float low, float high) {
    return _mm_setr_ps(low, high, 0.0f, 0.0f);
}

// Gains of what goes to the left and to the right output, in the lanes of these outputs.
__m128 balanceGains(double leftRight) {
    if (leftRight < 0.5) {
        return twoFloats(1.0f, static_cast<float>(leftRight + leftRight));
    }
    if (leftRight > 0.5) {
        return twoFloats(static_cast<float>(2.0 - (leftRight + leftRight)), 1.0f);
    }
    return twoFloats(1.0f, 1.0f);
}

} // namespace

void VstXSynth::processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) {
    if (static_cast<float>(lastSampleRate) != getSampleRate()) {
        followSampleRate();
    }

    const float* inLeft = inputs[0];
    const float* inRight = inputs[1];
    float* outLeft = outputs[0];
    float* outRight = outputs[1];
    updateSweep();

    for (VstInt32 done = 0; done < sampleFrames;) {
        done += processStretch(inLeft + done, inRight + done, outLeft + done, outRight + done,
                               sampleFrames - done);
    }

    lastSampleRate = truncateToInt64(getSampleRate());
}

// The former filters stay allocated.
void VstXSynth::followSampleRate() {
    makeLowPassPair();
    makeHighPassPair();
    setParameter(kLowPass, static_cast<float>(lowPass));
    setParameter(kHighPass, static_cast<float>(highPass));

    programs[curProgram].delayTime = delayTime;
    lengthFromDelayTime(delayTime);
    clearDelayLines();
}

void VstXSynth::updateSweep() {
    const std::int64_t length = readLive(delayLength);
    const std::int64_t position = readLive(delayPosition);
    const double phase =
        length > 0 ? static_cast<double>(position) / static_cast<double>(length) : 0.0;
    std::int64_t index = truncateToInt64(phase * static_cast<double>(kSineTableSize));
    if (index >= kSineTableSize) {
        index = kSineTableSize - 1;
    }
    if (index < 0) {
        index = 0;
    }
    writeLive(sweepPhase, phase);
    writeLive(sineIndex, index);
}

unsigned VstXSynth::readPlacements() const {
    unsigned placements = 0;
    if (readLive(lowPass) > 0.0) {
        placements |= readLive(lowPassType) ? kLowInside : kLowBehind;
    }
    if (readLive(highPass) > 0.0) {
        placements |= readLive(highPassType) ? kHighInside : kHighBehind;
    }
    return placements;
}

// Returns how many of `frames` it has processed, at least one.
VstInt32 VstXSynth::processStretch(const float* inLeft, const float* inRight, float* outLeft,
                                   float* outRight, VstInt32 frames) {
    // Left and right in turn: the taps as they go into the loop, and as they go out.
    alignas(16) float loopTaps[2 * kMaxStretch];
    alignas(16) float behindTaps[2 * kMaxStretch];

    const std::int64_t start = readLive(delayPosition);
    const std::int64_t length = readLive(delayLength);
    const std::int64_t toWrap = length > start ? length - start : 1;
    const std::int64_t longest = std::min<std::int64_t>({toWrap, frames, kMaxStretch});
    const unsigned placements = readPlacements();
    VstInt32 count = 0;
    do {
        loopTaps[2 * count] = delayBufferLeft[start + count];
        loopTaps[2 * count + 1] = delayBufferRight[start + count];
        ++count;
    } while (count < longest && readPlacements() == placements);

    if ((placements & kLowInside) != 0) {
        filterTaps(lowPassLeft, lowPassRight, loopTaps, count);
    }
    if ((placements & kHighInside) != 0) {
        filterTaps(highPassLeft, highPassRight, loopTaps, count);
    }
    const float* outTaps = loopTaps;
    if ((placements & (kLowBehind | kHighBehind)) != 0) {
        std::copy(loopTaps, loopTaps + 2 * count, behindTaps);
        if ((placements & kLowBehind) != 0) {
            filterTaps(lowPassLeft, lowPassRight, behindTaps, count);
        }
        if ((placements & kHighBehind) != 0) {
            filterTaps(highPassLeft, highPassRight, behindTaps, count);
        }
        outTaps = behindTaps;
    }

    for (VstInt32 i = 0; i < count; ++i) {
        const __m128 in = twoFloats(inLeft[i], inRight[i]);
        const __m128 gains = balanceGains(readLive(leftRight));
        updateSweep();

        const __m128 loopTap = twoFloats(loopTaps[2 * i], loopTaps[2 * i + 1]);
        const __m128 fed = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(readLive(feedBack)), loopTap), in);
        const std::int64_t position = readLive(delayPosition);
        _mm_store_ss(delayBufferLeft + position, fed);
        _mm_store_ss(delayBufferRight + position, _mm_shuffle_ps(fed, fed, 1));
        if (position + 1 >= readLive(delayLength)) {
            writeLive<std::int64_t>(delayPosition, 0);
            panSide = !panSide;
        } else {
            writeLive(delayPosition, position + 1);
        }

        // The lines cross here: the right one feeds the left output.
        const __m128 crossed = twoFloats(outTaps[2 * i + 1], outTaps[2 * i]);
        const __m128d wet =
            _mm_mul_pd(_mm_cvtps_pd(_mm_mul_ps(crossed, gains)), _mm_set1_pd(readLive(mix)));
        const double sweep = 1.0 - readLive(panDepth) * sineTable[readLive(sineIndex)];
        const __m128d sweeps = panSide ? _mm_setr_pd(sweep, 1.0) : _mm_setr_pd(1.0, sweep);
        const __m128 out = _mm_cvtpd_ps(_mm_add_pd(_mm_mul_pd(wet, sweeps), _mm_cvtps_pd(in)));
        _mm_store_ss(outLeft + i, out);
        _mm_store_ss(outRight + i, _mm_shuffle_ps(out, out, 1));
    }
    return count;
}
