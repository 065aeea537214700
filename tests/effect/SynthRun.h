// Samples through an effect, in blocks of one's choice.
#pragma once

#include "effect/VstXSynth.h"

#include <algorithm>
#include <vector>

struct Stereo {
    std::vector<float> left;
    std::vector<float> right;

    Stereo() = default;
    explicit Stereo(std::size_t frames) : left(frames), right(frames) {}
};

// What comes out for `in`, with blocks of at most `blockFrames`.
inline Stereo runThrough(VstXSynth& effect, const Stereo& in, std::size_t blockFrames = 512) {
    Stereo input = in;
    Stereo output(in.left.size());
    for (std::size_t done = 0; done < in.left.size(); done += blockFrames) {
        float* inputs[2] = {input.left.data() + done, input.right.data() + done};
        float* outputs[2] = {output.left.data() + done, output.right.data() + done};
        effect.processReplacing(
            inputs, outputs, static_cast<VstInt32>(std::min(blockFrames, in.left.size() - done)));
    }
    return output;
}

// A value of kDelay that gives this length at this rate.
inline float delayOf(std::int64_t samples, float rate = 44100.0f) {
    return (static_cast<float>(samples) + 0.5f) / (rate - 1.0f);
}

// Echoes at full level and nothing else: no filter, no sweep, the balance in the middle.
inline void setPlainEchoes(VstXSynth& effect, std::int64_t samples, float feedBack) {
    effect.setParameter(kDelay, delayOf(samples));
    effect.setParameter(kFeedBack, feedBack);
    effect.setParameter(kLowPass, 0.0f);
    effect.setParameter(kHighPass, 0.0f);
    effect.setParameter(kLeftRight, 0.5f);
    effect.setParameter(kPanDepth, 0.0f);
    effect.setParameter(kMix, 1.0f);
}
