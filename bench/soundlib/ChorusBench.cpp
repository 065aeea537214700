// What a stereo frame of the chorus costs, beside the same frame in plain scalar arithmetic.
#include "soundlib/ChorusUnitMaker.h"
#include "tests/soundlib/ReferenceChorus.h"
#include "tests/support/Signal.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include <pmmintrin.h>

namespace {

constexpr std::int32_t kBlock = 256;

using UnitPointer = std::unique_ptr<ChorusUnit, decltype(&destroyChorusUnit)>;

struct Block {
    std::vector<float> left = std::vector<float>(kBlock);
    std::vector<float> right = std::vector<float>(kBlock);
    std::vector<float> outLeft = std::vector<float>(kBlock);
    std::vector<float> outRight = std::vector<float>(kBlock);
    float* inputs[2] = {left.data(), right.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};

    void fill(Signal signal) {
        fillSignal(signal, 1, left.data(), kBlock);
        fillSignal(signal, 2, right.data(), kBlock);
    }
};

UnitPointer makeUnit() {
    UnitPointer unit(makeChorusUnit(), destroyChorusUnit);
    unit->setFeedback(0.9f);
    return unit;
}

void countFrames(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * kBlock);
}

void chorusUnit(benchmark::State& state) {
    const UnitPointer unit = makeUnit();
    Block block;
    block.fill(Signal::kNoise);
    for (auto _ : state) {
        process(unit.get(), block.inputs, block.outputs, kBlock);
        benchmark::ClobberMemory();
    }
    countFrames(state);
}

void chorusReference(benchmark::State& state) {
    ReferenceChorus chorus;
    chorus.delaySmoother.design(kDelaySmootherFrequency);
    chorus.wetSmoother.design(kWetSmootherFrequency);
    chorus.setMode();
    chorus.setRate(0.3f);
    chorus.setDepth(0.25f);
    chorus.setFeedback(0.9f);
    chorus.delayValue = 0.5f;
    chorus.wetValue = 0.5f;
    Block block;
    block.fill(Signal::kNoise);
    for (auto _ : state) {
        chorus.process(block.left.data(), block.right.data(), block.outLeft.data(),
                       block.outRight.data(), kBlock);
        benchmark::ClobberMemory();
    }
    countFrames(state);
}

// Feedback of a tail that has decayed to denormal numbers and never ends.
void chorusDecayed(benchmark::State& state, bool flushToZero) {
    const UnitPointer unit = makeUnit();
    Block block;
    block.fill(Signal::kNoise);
    process(unit.get(), block.inputs, block.outputs, kBlock);
    block.fill(Signal::kSilence);
    for (int i = 0; i < 10000; ++i) {
        process(unit.get(), block.inputs, block.outputs, kBlock);
    }
    const unsigned mode = _mm_getcsr();
    if (flushToZero) {
        _MM_SET_FLUSH_ZERO_MODE(_MM_FLUSH_ZERO_ON);
        _MM_SET_DENORMALS_ZERO_MODE(_MM_DENORMALS_ZERO_ON);
    }
    for (auto _ : state) {
        process(unit.get(), block.inputs, block.outputs, kBlock);
        benchmark::ClobberMemory();
    }
    _mm_setcsr(mode);
    countFrames(state);
}

} // namespace

BENCHMARK(chorusUnit)->Name("chorus/unit");
BENCHMARK(chorusReference)->Name("chorus/reference");
BENCHMARK_CAPTURE(chorusDecayed, flushing, true)->Name("chorus_decayed/flush_to_zero");
BENCHMARK_CAPTURE(chorusDecayed, denormal, false)->Name("chorus_decayed/reference");
