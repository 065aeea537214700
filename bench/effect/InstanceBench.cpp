// What instances cost: making one, changing its program, and running many in turn until the caches
// are full.
#include "effect/VstXSynth.h"
#include "tests/support/Signal.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

// The buffers of an instance are never released, so each pass leaves some three megabytes behind.
void createInstance(benchmark::State& state) {
    for (auto _ : state) {
        VstXSynth effect(nullptr);
        benchmark::DoNotOptimize(effect.delayBufferLeft);
    }
}
BENCHMARK(createInstance)->Iterations(20);

void changeProgram(benchmark::State& state) {
    VstXSynth effect(nullptr);
    int program = 0;
    for (auto _ : state) {
        effect.setProgram(program);
        program = (program + 1) % kNumPrograms;
    }
}
BENCHMARK(changeProgram);

constexpr int kMostInstances = 256;

// One pool for all runs: an instance never gives its buffers back.
std::vector<std::unique_ptr<VstXSynth>>& pool() {
    static std::vector<std::unique_ptr<VstXSynth>> effects = [] {
        constexpr int kWalkingShadow = 14; // both pairs, swept
        std::vector<std::unique_ptr<VstXSynth>> made;
        for (int i = 0; i < kMostInstances; ++i) {
            made.push_back(std::make_unique<VstXSynth>(nullptr));
            made.back()->setProgram(kWalkingShadow);
        }
        return made;
    }();
    return effects;
}

// One block of 64 frames of each instance in turn, per frame and instance.
void instancesInTurn(benchmark::State& state) {
    constexpr int kFrames = 64;
    std::vector<float> left(kFrames);
    std::vector<float> right(kFrames);
    fillSignal(Signal::Noise, 1, left.data(), kFrames);
    fillSignal(Signal::Noise, 2, right.data(), kFrames);
    std::vector<float> outLeft(kFrames);
    std::vector<float> outRight(kFrames);
    float* inputs[2] = {left.data(), right.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    const auto instances = static_cast<std::size_t>(state.range(0));
    auto& effects = pool();
    for (auto _ : state) {
        for (std::size_t i = 0; i < instances; ++i) {
            effects[i]->processReplacing(inputs, outputs, kFrames);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * kFrames);
}
BENCHMARK(instancesInTurn)->RangeMultiplier(2)->Range(1, kMostInstances);

} // namespace
