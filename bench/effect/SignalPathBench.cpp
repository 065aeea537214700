// What a stereo frame costs, beside the same frame in plain scalar arithmetic.
#include "effect/VstXSynth.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/Signal.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr std::size_t kFrames = 4096;
constexpr int kNoFilter = 1; // a program whose pairs are switched off here, for good

struct Choice {
    int program;
    const char* name;
};

constexpr Choice kChoices[] = {
    {14, "both_inside_swept"}, {17, "both_inside"}, {0, "low_inside_high_behind"},
    {20, "low_behind_swept"},  {7, "low_behind"},   {12, "high_behind_swept"},
    {kNoFilter, "no_filter"},
};

template <typename Effect>
void choose(Effect& effect, int program, float rate) {
    effect.setSampleRate(rate);
    effect.setProgram(program);
    if (program == kNoFilter) {
        effect.setParameter(kLowPass, 0.0f);
        effect.setParameter(kHighPass, 0.0f);
    }
    effect.resume();
}

class Block {
public:
    Block() : left_(kFrames), right_(kFrames), outLeft_(kFrames), outRight_(kFrames) {
        fillSignal(Signal::kNoise, 1, left_.data(), kFrames);
        fillSignal(Signal::kNoise, 2, right_.data(), kFrames);
    }

    // Takes all frames through `process` in blocks of `size`.
    template <typename Process>
    void run(int size, Process process) {
        for (std::size_t done = 0; done < kFrames; done += static_cast<std::size_t>(size)) {
            float* inputs[2] = {&left_[done], &right_[done]};
            float* outputs[2] = {&outLeft_[done], &outRight_[done]};
            process(inputs, outputs, size);
        }
        benchmark::DoNotOptimize(outLeft_.data());
        benchmark::ClobberMemory();
    }

private:
    std::vector<float> left_;
    std::vector<float> right_;
    std::vector<float> outLeft_;
    std::vector<float> outRight_;
};

// One for all runs: an instance never gives its buffers back.
VstXSynth& sharedEffect() {
    static VstXSynth effect(nullptr);
    return effect;
}

void benchEffect(benchmark::State& state, int program, float rate, int blockSize) {
    VstXSynth& effect = sharedEffect();
    choose(effect, program, rate);
    Block block;
    for ([[maybe_unused]] auto _ : state) {
        block.run(blockSize, [&](float** inputs, float** outputs, int frames) {
            effect.processReplacing(inputs, outputs, frames);
        });
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kFrames));
}

void benchReference(benchmark::State& state, int program, float rate, int blockSize) {
    ReferenceDelay effect;
    choose(effect, program, rate);
    Block block;
    for ([[maybe_unused]] auto _ : state) {
        block.run(blockSize, [&](float** inputs, float** outputs, int frames) {
            effect.process(inputs, outputs, frames);
        });
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kFrames));
}

const bool kRegistered = [] {
    for (const float rate : {44100.0f, 96000.0f}) {
        for (const Choice& choice : kChoices) {
            for (const int size : {32, 64, 512, 4096}) {
                const std::string stem = std::string(choice.name) + "/" +
                                         std::to_string(static_cast<int>(rate)) + "/" +
                                         std::to_string(size);
                benchmark::RegisterBenchmark((stem + "/effect").c_str(), benchEffect,
                                             choice.program, rate, size);
                benchmark::RegisterBenchmark((stem + "/reference").c_str(), benchReference,
                                             choice.program, rate, size);
            }
        }
    }
    return true;
}();

} // namespace
