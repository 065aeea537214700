// What instances cost: making one, changing its program, and running many in turn until the caches
// are full.
#include "effect/VstXSynth.h"
#include "tests/support/Signal.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace {

// The buffers of an instance are never released, so each pass leaves some three megabytes behind.
void createInstance(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        VstXSynth effect(nullptr);
        benchmark::DoNotOptimize(effect.delayBufferLeft);
    }
}
BENCHMARK(createInstance)->Iterations(20);

void changeProgram(benchmark::State& state) {
    VstXSynth effect(nullptr);
    int program = 0;
    for ([[maybe_unused]] auto _ : state) {
        effect.setProgram(program);
        program = (program + 1) % kNumPrograms;
    }
}
BENCHMARK(changeProgram);

constexpr std::size_t kMostInstances = 256;

// One pool for all runs: an instance never gives its buffers back.
std::vector<std::unique_ptr<VstXSynth>>& pool() {
    static std::vector<std::unique_ptr<VstXSynth>> effects = [] {
        std::vector<std::unique_ptr<VstXSynth>> made;
        while (made.size() < kMostInstances) {
            made.push_back(std::make_unique<VstXSynth>(nullptr));
        }
        return made;
    }();
    return effects;
}

// One block of 64 frames of each instance in turn, per frame and instance.
void inTurn(benchmark::State& state, int program, std::size_t instances) {
    constexpr int kFrames = 64;
    std::vector<float> left(kFrames);
    std::vector<float> right(kFrames);
    fillSignal(Signal::kNoise, 1, left.data(), kFrames);
    fillSignal(Signal::kNoise, 2, right.data(), kFrames);
    std::vector<float> outLeft(kFrames);
    std::vector<float> outRight(kFrames);
    float* inputs[2] = {left.data(), right.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    auto& effects = pool();
    for (std::size_t i = 0; i < instances; ++i) {
        effects[i]->setProgram(program);
    }
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t i = 0; i < instances; ++i) {
            effects[i]->processReplacing(inputs, outputs, kFrames);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(instances) * kFrames);
}

struct Choice {
    int program;
    const char* name;
};

constexpr Choice kChoices[] = {
    {14, "both_inside_swept"}, {17, "both_inside"}, {20, "low_behind_swept"}, {7, "low_behind"}};

// A single instance is the reference.
const bool kRegistered = [] {
    for (const Choice& choice : kChoices) {
        const auto add = [&](const std::string& name, std::size_t instances) {
            benchmark::RegisterBenchmark(
                (std::string("in_turn/") + choice.name + "/" + name).c_str(), inTurn,
                choice.program, instances);
        };
        add("reference", 1);
        for (const std::size_t instances : {16, 64, 256}) {
            add(std::to_string(instances), instances);
        }
    }
    return true;
}();

} // namespace
