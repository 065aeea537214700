// What a sample through a biquad costs: a block of one channel, and two channels side by side,
// beside the same sample by sample.
#include "soundlib/BiquadRunner.h"
#include "tests/support/Signal.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr std::int32_t kBlock = 256;

const BiquadDesigner kFilter(4, 0.1, 2.0, 6.0);

struct Block {
    std::vector<float> left = std::vector<float>(kBlock);
    std::vector<float> right = std::vector<float>(kBlock);
    std::vector<float> outLeft = std::vector<float>(kBlock);
    std::vector<float> outRight = std::vector<float>(kBlock);

    explicit Block(Signal signal) {
        fillSignal(signal, 1, left.data(), kBlock);
        fillSignal(signal, 2, right.data(), kBlock);
    }
};

void tickAll(BiquadDesigner& filter, const std::vector<float>& input, std::vector<float>& output) {
    for (std::size_t i = 0; i < input.size(); ++i) {
        output[i] = static_cast<float>(tickBiquad(&filter, static_cast<double>(input[i])));
    }
}

// One filter rings out in silence for long before the measurement.
BiquadDesigner decayedFilter() {
    BiquadDesigner filter = kFilter;
    tickBiquad(&filter, 1.0);
    for (int i = 0; i < 100000; ++i) {
        tickBiquad(&filter, 0.0);
    }
    return filter;
}

void monoBlock(benchmark::State& state, BiquadDesigner filter, Signal signal) {
    Block block(signal);
    for (auto _ : state) {
        runBiquad(&filter, block.left.data(), block.outLeft.data(), kBlock);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kBlock);
}

void monoTicks(benchmark::State& state, BiquadDesigner filter, Signal signal) {
    Block block(signal);
    for (auto _ : state) {
        tickAll(filter, block.left, block.outLeft);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kBlock);
}

void stereoPair(benchmark::State& state) {
    BiquadDesigner left = kFilter;
    BiquadDesigner right = kFilter;
    Block block(Signal::kNoise);
    const float* inputs[] = {block.left.data(), block.right.data()};
    float* outputs[] = {block.outLeft.data(), block.outRight.data()};
    for (auto _ : state) {
        runBiquadPair(&left, &right, inputs, outputs, kBlock);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kBlock);
}

void stereoBlocks(benchmark::State& state) {
    BiquadDesigner left = kFilter;
    BiquadDesigner right = kFilter;
    Block block(Signal::kNoise);
    for (auto _ : state) {
        runBiquad(&left, block.left.data(), block.outLeft.data(), kBlock);
        runBiquad(&right, block.right.data(), block.outRight.data(), kBlock);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kBlock);
}

void stereoTicks(benchmark::State& state) {
    BiquadDesigner left = kFilter;
    BiquadDesigner right = kFilter;
    Block block(Signal::kNoise);
    for (auto _ : state) {
        tickAll(left, block.left, block.outLeft);
        tickAll(right, block.right, block.outRight);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kBlock);
}

} // namespace

BENCHMARK_CAPTURE(monoBlock, noise, kFilter, Signal::kNoise)->Name("biquad_mono/block");
BENCHMARK_CAPTURE(monoTicks, noise, kFilter, Signal::kNoise)->Name("biquad_mono/reference");
BENCHMARK(stereoPair)->Name("biquad_stereo/pair");
BENCHMARK(stereoBlocks)->Name("biquad_stereo/blocks");
BENCHMARK(stereoTicks)->Name("biquad_stereo/reference");
BENCHMARK_CAPTURE(monoBlock, decayed, decayedFilter(), Signal::kSilence)
    ->Name("biquad_decayed/block");
BENCHMARK_CAPTURE(monoTicks, decayed, decayedFilter(), Signal::kSilence)
    ->Name("biquad_decayed/reference");
