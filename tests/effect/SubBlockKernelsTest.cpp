// The kernels of each instruction set against the model, sample by sample. The machine at hand uses
// only one of them by itself.
#include "effect/SubBlock.h"

#include "effect/LiveField.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace {

enum class Channels { Apart, InPlace, Crossed };

FourPoleFilter copyOf(const ReferenceFilter& model) {
    FourPoleFilter filter;
    static_assert(sizeof(filter) == sizeof(model));
    std::memcpy(&filter, &model, sizeof(filter));
    return filter;
}

bool same(const FourPoleFilter& filter, const ReferenceFilter& model) {
    double own[16];
    double expected[16];
    std::memcpy(own, &filter, sizeof(own));
    std::memcpy(expected, &model, sizeof(expected));
    return firstDifference(own, expected, 16) < 0;
}

// A model somewhere in a pass, with everything random that a sub-block depends on.
void shake(ReferenceDelay& model, Dice& dice, int frames) {
    static constexpr double kDepths[] = {0.0, 1.0, 0.5, -0.0, -1.0, 0.374};
    static constexpr Signal kSignals[] = {Signal::Noise,   Signal::Noise,     Signal::Tone,
                                          Signal::Silence, Signal::Denormals, Signal::Hostile};
    const auto depth = [&] { return dice.oneIn(3) ? dice.pick(kDepths) : dice.unit(); };
    model.lowPass = depth();
    model.highPass = depth();
    model.lowPassType = dice.oneIn(2);
    model.highPassType = dice.oneIn(2);
    model.leftRight = depth();
    model.panDepth = depth();
    model.mix = depth();
    model.feedBack = static_cast<float>(depth());
    model.panSide = dice.oneIn(2);
    model.delayLength = dice.between(frames + 1, dice.oneIn(2) ? 300 : ReferenceDelay::kCapacity);
    model.delayPosition = dice.between(0, model.delayLength - frames - 1);
    const auto start = static_cast<std::size_t>(model.delayPosition);
    const Signal signal = dice.pick(kSignals);
    fillSignal(signal, dice.bits(), &model.delayBufferLeft[start],
               static_cast<std::size_t>(frames));
    fillSignal(signal, dice.bits(), &model.delayBufferRight[start],
               static_cast<std::size_t>(frames));
    for (ReferenceFilter* filter :
         {&model.lowPassLeft, &model.lowPassRight, &model.highPassLeft, &model.highPassRight}) {
        for (double& stage : filter->lowStages) {
            stage = dice.unit() - 0.5;
        }
        for (double& stage : filter->highStages) {
            stage = dice.unit() - 0.5;
        }
        for (double& sample : filter->inputHistory) {
            sample = static_cast<double>(dice.within(-1.0f, 1.0f));
        }
        filter->lowGain = depth();
        filter->midGain = depth();
        filter->highGain = depth();
    }
}

struct Filters {
    explicit Filters(const ReferenceDelay& model)
        : lowPassLeft(copyOf(model.lowPassLeft)), lowPassRight(copyOf(model.lowPassRight)),
          highPassLeft(copyOf(model.highPassLeft)), highPassRight(copyOf(model.highPassRight)) {}

    bool sameAs(const ReferenceDelay& model) const {
        return same(lowPassLeft, model.lowPassLeft) && same(lowPassRight, model.lowPassRight) &&
               same(highPassLeft, model.highPassLeft) && same(highPassRight, model.highPassRight);
    }

    FourPoleFilter lowPassLeft;
    FourPoleFilter lowPassRight;
    FourPoleFilter highPassLeft;
    FourPoleFilter highPassRight;
};

void addPairs(SubBlock& subBlock, const ReferenceDelay& model, Filters& filters, bool inside) {
    if (model.lowPass > 0.0 && model.lowPassType == inside) {
        subBlock.pairs[subBlock.pairsRunning++] = {&filters.lowPassLeft, &filters.lowPassRight};
    }
    if (model.highPass > 0.0 && model.highPassType == inside) {
        subBlock.pairs[subBlock.pairsRunning++] = {&filters.highPassLeft, &filters.highPassRight};
    }
    if (inside) {
        subBlock.pairsInside = subBlock.pairsRunning;
    }
}

// A sub-block of a shaken model, in memory of its own.
class SubBlockRun {
public:
    // `mix` replaces the shaken one.
    SubBlockRun(ReferenceDelay& model, Dice& dice, std::optional<double> mix = std::nullopt)
        : frames_(static_cast<int>(dice.between(1, kMaxSubBlock))), model_(shaken(model, dice)),
          filters_(model), lineLeft_(windowOf(model.delayBufferLeft)),
          lineRight_(windowOf(model.delayBufferRight)) {
        const auto count = static_cast<std::size_t>(frames_);
        static constexpr Channels kChannels[] = {Channels::Apart, Channels::InPlace,
                                                 Channels::Crossed};
        switch (dice.pick(kChannels)) {
        case Channels::Apart:
            outLeft_ = 2 * count;
            outRight_ = 3 * count;
            break;
        case Channels::InPlace:
            outLeft_ = 0;
            outRight_ = count;
            break;
        case Channels::Crossed:
            outLeft_ = count;
            outRight_ = 0;
            break;
        }
        own_.resize(4 * count);
        fillSignal(Signal::Noise, dice.bits(), own_.data(), own_.size());
        expected_ = own_;

        held = DelayFields();
        held.feedBack = model.feedBack;
        held.delayLength = model.delayLength;
        held.delayPosition = model.delayPosition;
        held.lowPass = model.lowPass;
        held.highPass = model.highPass;
        held.lowPassType = model.lowPassType;
        held.highPassType = model.highPassType;
        held.leftRight = model.leftRight;
        held.mix = model.mix = mix.value_or(model.mix);
        held.panDepth = model.panDepth;
        live = held;
    }

    // How many frames went through.
    int render(RenderSubBlock kernel) { return render(kernel, live); }
    int render(RenderSubBlock kernel, const DelayFields& fields) {
        const auto count = static_cast<std::size_t>(frames_);
        subBlock_.frames = frames_;
        subBlock_.inLeft = own_.data();
        subBlock_.inRight = own_.data() + count;
        subBlock_.outLeft = own_.data() + outLeft_;
        subBlock_.outRight = own_.data() + outRight_;
        subBlock_.lineLeft = lineLeft_.data() + kMargin;
        subBlock_.lineRight = lineRight_.data() + kMargin;
        addPairs(subBlock_, model_, filters_, true);
        addPairs(subBlock_, model_, filters_, false);
        subBlock_.feedBack = model_.feedBack;
        const double twice = model_.leftRight + model_.leftRight;
        subBlock_.gainToLeft = model_.leftRight > 0.5 ? static_cast<float>(2.0 - twice) : 1.0f;
        subBlock_.gainToRight = model_.leftRight < 0.5 ? static_cast<float>(twice) : 1.0f;
        subBlock_.mix = model_.mix;
        subBlock_.sineTable = ReferenceDelay::sineTable().data();
        subBlock_.sineTableSize = 179692.0;
        subBlock_.panDepth = model_.panDepth;
        subBlock_.panSide = model_.panSide;
        subBlock_.start = static_cast<VstInt32>(model_.delayPosition);
        subBlock_.length = static_cast<VstInt32>(model_.delayLength);
        kernel(subBlock_, fields, held);
        return subBlock_.frames;
    }

    // Empty when memory and filters are those of the model after so many frames.
    std::string differenceAfter(int frames) {
        if (frames > 0) {
            const auto count = static_cast<std::size_t>(frames_);
            float* inputs[2] = {expected_.data(), expected_.data() + count};
            float* outputs[2] = {expected_.data() + outLeft_, expected_.data() + outRight_};
            model_.process(inputs, outputs, frames);
        }
        std::string difference;
        if (firstDifference(own_.data(), expected_.data(), own_.size()) >= 0) {
            difference += "the samples differ; ";
        }
        const std::vector<float> modelLeft = windowOf(model_.delayBufferLeft);
        const std::vector<float> modelRight = windowOf(model_.delayBufferRight);
        if (firstDifference(lineLeft_.data(), modelLeft.data(), modelLeft.size()) >= 0 ||
            firstDifference(lineRight_.data(), modelRight.data(), modelRight.size()) >= 0) {
            difference += "the lines differ; ";
        }
        if (!filters_.sameAs(model_)) {
            difference += "the filters differ; ";
        }
        if (frames > 0 && (!sameNumber(subBlock_.sweepPhase, model_.sweepPhase) ||
                           subBlock_.sineIndex != model_.sineIndex)) {
            difference += "the place of the sweep differs; ";
        }
        return difference.empty() ? "" : difference + std::to_string(frames) + " frames";
    }

    int frames() const { return frames_; }

    DelayFields live;
    DelayFields held;

private:
    ReferenceDelay& shaken(ReferenceDelay& model, Dice& dice) const {
        shake(model, dice, frames_);
        return model;
    }

    // A line's samples of the sub-block, with those around them.
    std::vector<float> windowOf(const std::vector<float>& line) const {
        std::vector<float> window;
        for (std::ptrdiff_t i = -kMargin; i < frames_ + kMargin; ++i) {
            const std::ptrdiff_t at = start_ + i;
            const bool inside = at >= 0 && at < static_cast<std::ptrdiff_t>(line.size());
            window.push_back(inside ? line[static_cast<std::size_t>(at)] : 0.0f);
        }
        return window;
    }

    static constexpr std::ptrdiff_t kMargin = 8;

    int frames_;
    ReferenceDelay& model_;
    std::ptrdiff_t start_ = model_.delayPosition;
    Filters filters_;
    std::vector<float> lineLeft_;
    std::vector<float> lineRight_;
    std::size_t outLeft_ = 0;
    std::size_t outRight_ = 0;
    std::vector<float> own_;
    std::vector<float> expected_;
    SubBlock subBlock_{};
};

struct KernelRow {
    const char* name;
    RenderSubBlock render;
    bool (*runsHere)();
};

bool always() {
    return true;
}

class SubBlockKernelsTest : public testing::TestWithParam<KernelRow> {
protected:
    void SetUp() override {
        if (!GetParam().runsHere()) {
            GTEST_SKIP() << "this machine has no such instructions";
        }
    }
};

} // namespace

TEST_P(SubBlockKernelsTest, RenderGivesTheModelsBits) {
    const std::uint64_t seed = randomSeed(0x57);
    Dice dice(seed);
    ReferenceDelay model;
    for (int round = 0; round < 4000; ++round) {
        SubBlockRun run(model, dice);
        ASSERT_EQ(run.render(GetParam().render), run.frames()) << "nothing changes meanwhile";
        ASSERT_EQ(run.differenceAfter(run.frames()), "")
            << "round " << round << ", TVDELAY_TEST_SEED=" << seed;
    }
}

TEST_P(SubBlockKernelsTest, FirstSampleThatFindsAnotherValueIsLeftAlone) {
    const std::uint64_t seed = randomSeed(0x58);
    const auto expectNone = [&](const char* name, auto change) {
        Dice dice(seed);
        ReferenceDelay model;
        for (int round = 0; round < 40; ++round) {
            SubBlockRun run(model, dice);
            change(run);
            ASSERT_EQ(run.render(GetParam().render), 0) << name << ", round " << round;
            ASSERT_EQ(run.differenceAfter(0), "") << name << ", round " << round;
        }
    };
    expectNone("delayLength", [](SubBlockRun& run) { ++run.live.delayLength; });
    expectNone("delayPosition", [](SubBlockRun& run) { ++run.live.delayPosition; });
    expectNone("lowPass", [](SubBlockRun& run) { run.live.lowPass += 0.25; });
    expectNone("highPass", [](SubBlockRun& run) { run.live.highPass += 0.25; });
    expectNone("lowPassType", [](SubBlockRun& run) { run.live.lowPassType ^= true; });
    expectNone("highPassType", [](SubBlockRun& run) { run.live.highPassType ^= true; });
    expectNone("leftRight", [](SubBlockRun& run) { run.live.leftRight += 0.25; });
    expectNone("mix", [](SubBlockRun& run) { run.live.mix += 0.25; });
    expectNone("panDepth", [](SubBlockRun& run) { run.live.panDepth += 0.25; });
    expectNone("feedBack", [](SubBlockRun& run) { run.live.feedBack += 0.25f; });
}

// Another thread flips a field to and fro: wherever a sub-block then ends, all before is as if
// nothing had happened, and all behind is untouched.
TEST_P(SubBlockKernelsTest, ChangeMeanwhileEndsTheSubBlockCleanly) {
    constexpr double kHeldMix = 0.5;
    const std::uint64_t seed = randomSeed(0x59);
    Dice dice(seed);
    ReferenceDelay model;
    DelayFields live{};
    std::atomic<int> flips{0};
    std::atomic<bool> done{false};
    std::thread flipping([&] {
        while (!done) {
            writeLive(live.mix, 0.75);
            writeLive(live.mix, kHeldMix);
            ++flips;
        }
    });
    while (flips == 0) {
        std::this_thread::yield();
    }
    std::string difference;
    for (int round = 0; round < 3000 && difference.empty(); ++round) {
        SubBlockRun run(model, dice, kHeldMix);
        live.delayLength = run.held.delayLength;
        live.delayPosition = run.held.delayPosition;
        live.lowPass = run.held.lowPass;
        live.highPass = run.held.highPass;
        live.lowPassType = run.held.lowPassType;
        live.highPassType = run.held.highPassType;
        live.leftRight = run.held.leftRight;
        live.panDepth = run.held.panDepth;
        live.feedBack = run.held.feedBack;
        const int frames = run.render(GetParam().render, live);
        difference = frames <= run.frames() ? run.differenceAfter(frames) : "too many frames";
    }
    done = true;
    flipping.join();
    EXPECT_EQ(difference, "") << "TVDELAY_TEST_SEED=" << seed;
}

INSTANTIATE_TEST_SUITE_P(Sets, SubBlockKernelsTest,
                         testing::Values(KernelRow{"Sse2", renderSubBlockSse2, always},
                                         KernelRow{"Avx", renderSubBlockAvx, machineHasAvx}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(SubBlockKernels, FastestSetOfTheMachineIsChosen) {
    EXPECT_EQ(kRenderSubBlock, machineHasAvx() ? renderSubBlockAvx : renderSubBlockSse2);
    EXPECT_EQ(machineHasAvx(), static_cast<bool>(__builtin_cpu_supports("avx")));
}
