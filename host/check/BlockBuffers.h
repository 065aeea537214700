// The channels of one block, with marked room around each to tell what was written beside it.
#pragma once

#include <vector>

namespace tvhost {

class BlockBuffers {
public:
    static constexpr int kMargin = 1024; // frames before and behind each channel

    // For blocks of at most `mostFrames` frames. In place, outputs are the inputs of the same
    // number, as far as there are any.
    BlockBuffers(int inputs, int outputs, int mostFrames, bool inPlace = false);

    float** inputs() { return inputs_.data(); }
    float** outputs() { return outputs_.data(); }
    int inputCount() const { return inputCount_; }
    int outputCount() const { return outputCount_; }
    int mostFrames() const { return mostFrames_; }

    // Outputs that are no inputs, as the next block finds them.
    void fillOutputs(float value);

    // Marks everything around a block of `frames` frames, and tells whether all marks are as they
    // were.
    void markAround(int frames);
    bool marksStand(int frames) const;

private:
    static constexpr float kMark = 1.2345e21f; // no sound

    int inputCount_;
    int outputCount_;
    int mostFrames_;
    std::vector<std::vector<float>> rooms_;
    std::vector<float*> inputs_;
    std::vector<float*> outputs_;
};

} // namespace tvhost
