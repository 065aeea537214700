#include "soundlib/BiquadRunner.h"

#include <algorithm>
#include <cmath>

#include <emmintrin.h>

// The feedback of the output enters each sum last: that leaves the shortest chain from sample to
// sample.

namespace {

// A decaying state would end in denormal numbers, some of them for ever, which take processors
// many times as long. Both state values below this are far below what a float output can show.
constexpr double kInaudible = 1e-100;
constexpr std::int64_t kFramesBetweenChecks = 64;

std::int32_t framesToCheck(std::int64_t start, std::int32_t sampleFrames) {
    return static_cast<std::int32_t>(std::min(kFramesBetweenChecks, sampleFrames - start));
}

void clearIfInaudible(double& state1, double& state2) {
    if (std::fabs(state1) < kInaudible && std::fabs(state2) < kInaudible) {
        state1 = 0.0;
        state2 = 0.0;
    }
}

double lowLane(__m128d lanes) {
    return _mm_cvtsd_f64(lanes);
}

double highLane(__m128d lanes) {
    return _mm_cvtsd_f64(_mm_unpackhi_pd(lanes, lanes));
}

void runSlice(BiquadDesigner* filter, const float* input, float* output,
              std::int32_t sampleFrames) {
    BiquadDesigner running = *filter; // `output` can't alias it, so it stays in registers
    for (std::int32_t frame = 0; frame < sampleFrames; ++frame) {
        output[frame] = static_cast<float>(tickBiquad(&running, static_cast<double>(input[frame])));
    }
    filter->state1 = running.state1;
    filter->state2 = running.state2;
}

void runSliceOfPair(BiquadDesigner* left, BiquadDesigner* right, const float* inputLeft,
                    const float* inputRight, float* outputLeft, float* outputRight,
                    std::int32_t sampleFrames) {
    using Field = double BiquadDesigner::*;
    const auto pair = [&](Field field) { return _mm_set_pd(right->*field, left->*field); };
    const __m128d a0 = pair(&BiquadDesigner::a0);
    const __m128d a1 = pair(&BiquadDesigner::a1);
    const __m128d a2 = pair(&BiquadDesigner::a2);
    const __m128d b1 = pair(&BiquadDesigner::b1);
    const __m128d b2 = pair(&BiquadDesigner::b2);
    __m128d state1 = pair(&BiquadDesigner::state1);
    __m128d state2 = pair(&BiquadDesigner::state2);
    for (std::int32_t frame = 0; frame < sampleFrames; ++frame) {
        const __m128d x = _mm_set_pd(static_cast<double>(inputRight[frame]),
                                     static_cast<double>(inputLeft[frame]));
        const __m128d y = _mm_add_pd(_mm_mul_pd(a0, x), state1);
        state1 = _mm_sub_pd(_mm_add_pd(_mm_mul_pd(a1, x), state2), _mm_mul_pd(b1, y));
        state2 = _mm_sub_pd(_mm_mul_pd(a2, x), _mm_mul_pd(b2, y));
        outputLeft[frame] = static_cast<float>(lowLane(y));
        outputRight[frame] = static_cast<float>(highLane(y));
    }
    left->state1 = lowLane(state1);
    left->state2 = lowLane(state2);
    right->state1 = highLane(state1);
    right->state2 = highLane(state2);
}

} // namespace

double tickBiquad(BiquadDesigner* filter, double input) {
    const double output = filter->a0 * input + filter->state1;
    filter->state1 = (filter->a1 * input + filter->state2) - filter->b1 * output;
    filter->state2 = filter->a2 * input - filter->b2 * output;
    return output;
}

void runBiquad(BiquadDesigner* filter, const float* input, float* output,
               std::int32_t sampleFrames) {
    for (std::int64_t start = 0; start < sampleFrames; start += kFramesBetweenChecks) {
        runSlice(filter, input + start, output + start, framesToCheck(start, sampleFrames));
        clearIfInaudible(filter->state1, filter->state2);
    }
}

void runBiquadPair(BiquadDesigner* left, BiquadDesigner* right, const float* const* inputs,
                   float* const* outputs, std::int32_t sampleFrames) {
    for (std::int64_t start = 0; start < sampleFrames; start += kFramesBetweenChecks) {
        runSliceOfPair(left, right, inputs[0] + start, inputs[1] + start, outputs[0] + start,
                       outputs[1] + start, framesToCheck(start, sampleFrames));
        clearIfInaudible(left->state1, left->state2);
        clearIfInaudible(right->state1, right->state2);
    }
}
