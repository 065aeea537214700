// The memory of one block, with its channels where a layout puts them.
#pragma once

#include "tests/support/ScriptGenerator.h"

#include <string>
#include <vector>

class BlockMemory {
public:
    // Filled with the step's signal.
    explicit BlockMemory(const ScriptStep& step)
        : layout_(step.layout), samples_(step.layout.size) {
        fillSignal(step.signal, step.signalSeed, samples_.data(), samples_.size());
        for (int channel = 0; channel < 2; ++channel) {
            inputs_[channel] = samples_.data() + layout_.inputs[channel];
            outputs_[channel] = samples_.data() + layout_.outputs[channel];
        }
    }
    BlockMemory(const BlockMemory&) = delete;
    BlockMemory& operator=(const BlockMemory&) = delete;

    float** inputs() { return inputs_; }
    float** outputs() { return outputs_; }
    const std::vector<float>& samples() const { return samples_; }

    // The first sample in which it is not the expected one, in words that further ones may follow;
    // empty where there is none.
    std::string differenceFrom(const BlockMemory& expected) const;

private:
    BlockLayout layout_;
    std::vector<float> samples_;
    float* inputs_[2];
    float* outputs_[2];
};
