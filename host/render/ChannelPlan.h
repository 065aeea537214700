// How the channels of a sound reach the inputs of an effect.
#pragma once

#include <string>
#include <vector>

namespace tvhost {

// The channels go into the first inputs, one each, and further inputs, such as side-chains, get
// silence. Two exceptions: a mono sound goes into both inputs of a stereo effect, and an effect of
// one channel gets the mean of both channels of a stereo sound. Two inputs and one output make such
// an effect, whose second input is a side-chain, unless it says that its inputs are a pair.
class ChannelPlan {
public:
    // All 1 or more. `paired` is whether the first two inputs are left and right of one sound.
    ChannelPlan(int channels, int inputs, int outputs, bool paired);

    // Fills `frames` frames of every buffer in `inputs` from interleaved ones.
    void spread(const float* interleaved, int frames,
                std::vector<std::vector<float>>& inputs) const;

    // What somebody who gave the sound should know, about an effect of this name; empty when every
    // channel went into an input and every input got one.
    std::string note(const std::string& effect) const;

private:
    enum class Way { kOneToOne, kMonoIntoBoth, kMeanOfBoth };

    Way way_ = Way::kOneToOne;
    int channels_;
    int inputs_;
};

} // namespace tvhost
