// What a block may not do, as the watch counts it, and how long it may take.
#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/RealTimeWatch.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <ctime>
#include <limits>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 64;
constexpr int kBlocks = 300;
constexpr int kSettledBlocks = 4; // the first may still make ready

using Subject = RealTimeWatch::Subject;

void fillWithNoise(CheckRun& run, CheckedEffect& effect, BlockBuffers& buffers) {
    for (int c = 0; c < effect.inputCount(); ++c) {
        std::generate_n(buffers.inputs()[c], kBlock,
                        [&] { return (2.0f * run.uniform() - 1.0f) * 0.25f; });
    }
}

using PickedCount = RealTimeWatch::Count RealTimeWatch::Counts::*;

// Watches blocks, and says what `pick` counts of them.
void watchBlocks(CheckRun& run, Subject subject, const char* what, PickedCount pick) {
    RealTimeWatch::require(subject);
    CheckedEffect effect(run);
    effect.requireSound();
    effect.start(kRate, kBlock);
    BlockBuffers buffers(effect.inputCount(), effect.outputCount(), kBlock);
    int settledBlocks = 0;
    std::string settledFirst;
    for (int i = 0; i < kBlocks; ++i) {
        fillWithNoise(run, effect, buffers);
        RealTimeWatch::begin(subject);
        effect.process(buffers, kBlock);
        const RealTimeWatch::Count count = RealTimeWatch::end().*pick;
        if (count.times == 0) {
            continue;
        }
        if (i < kSettledBlocks) {
            run.finding("first blocks", std::string("block ") + std::to_string(i) +
                                            " after the start " + what + ": " + count.first);
        } else {
            settledFirst = settledBlocks == 0 ? count.first : settledFirst;
            ++settledBlocks;
        }
    }
    if (settledBlocks > 0) {
        run.finding("blocks", std::to_string(settledBlocks) + " of " +
                                  std::to_string(kBlocks - kSettledBlocks) + " blocks " + what +
                                  ", the first by " + settledFirst);
    }
}

double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

void noAllocationInBlock(CheckRun& run) {
    watchBlocks(run, Subject::kCalls, "takes or gives back memory",
                &RealTimeWatch::Counts::allocations);
}

void noLockInBlock(CheckRun& run) {
    watchBlocks(run, Subject::kCalls, "takes a lock", &RealTimeWatch::Counts::locks);
}

void noSystemCallInBlock(CheckRun& run) {
    watchBlocks(run, Subject::kSystemCalls, "calls the system",
                &RealTimeWatch::Counts::systemCalls);
}

void meetsItsDeadline(CheckRun& run) {
    constexpr int kPasses = 3; // what disturbs one is unlikely to disturb all
    constexpr double kDeadline = kBlock / kRate;
    std::vector<double> least(kBlocks, std::numeric_limits<double>::infinity());
    for (int pass = 0; pass < kPasses; ++pass) {
        CheckedEffect effect(run);
        effect.requireSound();
        effect.start(kRate, kBlock);
        BlockBuffers buffers(effect.inputCount(), effect.outputCount(), kBlock);
        for (double& seconds : least) {
            fillWithNoise(run, effect, buffers);
            const double begin = threadSeconds();
            effect.process(buffers, kBlock);
            seconds = std::min(seconds, threadSeconds() - begin);
        }
    }
    const auto worst = std::max_element(least.begin() + kSettledBlocks, least.end());
    if (*worst > kDeadline) {
        run.finding("late", "block " + std::to_string(worst - least.begin()) + " takes " +
                                fixedNumber(*worst * 1e3, 2) +
                                " ms of the processor, and 64 "
                                "frames at 48000 Hz last " +
                                fixedNumber(kDeadline * 1e3, 2) + " ms");
    }
}

} // namespace tvhost::checks
