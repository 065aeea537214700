// TvDelay beside the delays that a user would pick instead: time a frame with 1 to 256 instances,
// time and memory of an instance.
#include "bench/others/Contender.h"
#include "tests/support/ProcessMemory.h"
#include "tests/support/Signal.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

// Two seconds, after which every line has been written all over.
constexpr int kWarmUpFrames = 96000;

class StereoBlock {
public:
    StereoBlock() {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            fillSignal(Signal::kNoise, channel + 1, in_[channel].data(), kLongestBlock);
            inputs_[channel] = in_[channel].data();
            outputs_[channel] = out_[channel].data();
        }
    }

    void runThrough(Contender& contender, int frames) {
        contender.run(inputs_.data(), outputs_.data(), frames);
    }

private:
    using Channel = std::array<float, kLongestBlock>;

    std::array<Channel, 2> in_;
    std::array<Channel, 2> out_;
    std::array<const float*, 2> inputs_;
    std::array<float*, 2> outputs_;
};

std::vector<std::unique_ptr<Contender>> makeWarm(const ContenderKind& kind, std::size_t count,
                                                 StereoBlock& block) {
    std::vector<std::unique_ptr<Contender>> made;
    for (std::size_t i = 0; i < count; ++i) {
        made.push_back(kind.make());
        for (int frames = 0; frames < kWarmUpFrames; frames += kLongestBlock) {
            block.runThrough(*made.back(), kLongestBlock);
        }
    }
    return made;
}

// At least `count` instances, kept from one benchmark to the next of the same kind: making and
// warming them takes longer than measuring them.
std::vector<std::unique_ptr<Contender>>& pool(const ContenderKind& kind, std::size_t count) {
    static std::vector<std::unique_ptr<Contender>> kept;
    static const ContenderKind* keptKind = nullptr;
    if (keptKind != &kind) {
        kept.clear();
        keptKind = &kind;
    }
    if (kept.size() < count) {
        StereoBlock block;
        auto more = makeWarm(kind, count - kept.size(), block);
        std::move(more.begin(), more.end(), std::back_inserter(kept));
    }
    return kept;
}

// `instances` in turn, a block of each.
void blocksInTurn(benchmark::State& state, const ContenderKind& kind, std::size_t instances,
                  int frames) {
    StereoBlock block;
    const auto& made = pool(kind, instances);
    for (auto _ : state) {
        for (std::size_t i = 0; i < instances; ++i) {
            block.runThrough(*made[i], frames);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(instances) * frames);
}

// What is removed again is not measured: hosts do that when nothing sounds.
void makeInstances(benchmark::State& state, const ContenderKind& kind) {
    constexpr std::size_t kKept = 8;
    StereoBlock block;
    const auto first = makeWarm(kind, 1, block);
    const std::int64_t allocated = allocatedBytes();
    const std::int64_t resident = residentBytes(); // also what is not from the allocator
    const auto kept = makeWarm(kind, kKept, block);
    state.counters["bytes"] =
        static_cast<double>(std::max(allocatedBytes() - allocated, residentBytes() - resident)) /
        kKept;
    for (auto _ : state) {
        auto made = kind.make();
        state.PauseTiming();
        made = nullptr;
        state.ResumeTiming();
    }
}

bool canBeMade(const ContenderKind& kind) {
    try {
        kind.make();
        return true;
    } catch (const std::exception& error) {
        benchmark::RegisterBenchmark((kind.name + "/missing").c_str(),
                                     [why = std::string(error.what())](benchmark::State& state) {
                                         state.SkipWithError(why.c_str());
                                     });
        return false;
    }
}

void registerAll() {
    for (const ContenderKind& kind : contenders()) {
        if (!canBeMade(kind)) {
            continue;
        }
        for (const std::size_t instances : {1u, 16u, 64u, 256u}) {
            benchmark::RegisterBenchmark(
                (kind.name + "/frame/" + std::to_string(instances)).c_str(),
                [&kind, instances](benchmark::State& state) {
                    blocksInTurn(state, kind, instances, 64);
                });
        }
        benchmark::RegisterBenchmark(
            (kind.name + "/instance").c_str(),
            [&kind](benchmark::State& state) { makeInstances(state, kind); })
            ->Iterations(20);
    }
    static const std::vector<ContenderKind> programs = tvDelayPrograms();
    for (const ContenderKind& kind : programs) {
        benchmark::RegisterBenchmark(
            (kind.name + "/frame/1").c_str(),
            [&kind](benchmark::State& state) { blocksInTurn(state, kind, 1, 64); });
    }
}

} // namespace

int main(int argc, char** argv) {
    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    std::string order;
    for (const ContenderKind& kind : contenders()) {
        benchmark::AddCustomContext("work of " + kind.name, kind.work);
        order += (order.empty() ? "" : ";") + kind.name;
    }
    benchmark::AddCustomContext("order", order);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
