// The kernels of each instruction set against the model, sample by sample. The machine at hand uses
// only one of them by itself.
#include "effect/SubBlock.h"

#include "effect/LiveField.h"
#include "effect/SweepPass.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace {

enum class Channels { kApart, kInPlace, kCrossed };

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
    static constexpr Signal kSignals[] = {Signal::kNoise,   Signal::kNoise,     Signal::kTone,
                                          Signal::kSilence, Signal::kDenormals, Signal::kHostile};
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
    model.delayLength = dice.between(frames + 2, dice.oneIn(2) ? 300 : ReferenceDelay::kCapacity);
    model.delayPosition = dice.between(1, model.delayLength - frames - 1);
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

// A sub-block of a shaken model, in memory of its own.
class SubBlockRun {
public:
    // `mix` replaces the shaken one.
    SubBlockRun(ReferenceDelay& model, Dice& dice, std::optional<double> mix = std::nullopt)
        : frames_(kSubBlockStep * static_cast<int>(dice.between(1, kMaxSubBlock / kSubBlockStep))),
          model_(shaken(model, dice)), filters_(model), lineLeft_(windowOf(model.delayBufferLeft)),
          lineRight_(windowOf(model.delayBufferRight)) {
        const auto count = static_cast<std::size_t>(frames_);
        static constexpr Channels kChannels[] = {Channels::kApart, Channels::kInPlace,
                                                 Channels::kCrossed};
        switch (dice.pick(kChannels)) {
        case Channels::kApart:
            outLeft_ = 2 * count;
            outRight_ = 3 * count;
            break;
        case Channels::kInPlace:
            outLeft_ = 0;
            outRight_ = count;
            break;
        case Channels::kCrossed:
            outLeft_ = count;
            outRight_ = 0;
            break;
        }
        own_.resize(4 * count);
        fillSignal(Signal::kNoise, dice.bits(), own_.data(), own_.size());
        expected_ = own_;

        fields.delayBufferLeft = wholeLine(lineLeft_);
        fields.delayBufferRight = wholeLine(lineRight_);
        fields.lowPassLeft = &filters_.lowPassLeft;
        fields.lowPassRight = &filters_.lowPassRight;
        fields.highPassLeft = &filters_.highPassLeft;
        fields.highPassRight = &filters_.highPassRight;
        fields.sineTable = const_cast<double*>(ReferenceDelay::sineTable().data());
        fields.delayLength = model.delayLength;
        fields.delayPosition = model.delayPosition;
        fields.feedBack = model.feedBack;
        fields.lowPass = model.lowPass;
        fields.highPass = model.highPass;
        fields.lowPassType = model.lowPassType;
        fields.highPassType = model.highPassType;
        fields.leftRight = model.leftRight;
        fields.mix = model.mix = mix.value_or(model.mix);
        fields.panDepth = model.panDepth;
        fields.panSide = model.panSide;
    }

    // How many frames went through, with `change` between the making of the sub-block and its run.
    int render(RenderSubBlock kernel, const std::function<void(SubBlockRun&)>& change) {
        const auto count = static_cast<std::size_t>(frames_);
        const StereoBlock block = {own_.data(), own_.data() + count, own_.data() + outLeft_,
                                   own_.data() + outRight_};
        if (!makeSubBlock(fields, clearing_, sweep_, block, frames_, subBlock_) ||
            subBlock_.frames != frames_) {
            return -1;
        }
        change(*this);
        kernel(subBlock_);
        return subBlock_.frames;
    }
    int render(RenderSubBlock kernel) {
        return render(kernel, [](SubBlockRun&) {});
    }
    // The same while another thread may write to `live`.
    int renderLive(RenderSubBlock kernel, const DelayFields& live) {
        return render(kernel, [&](SubBlockRun& run) { run.subBlock_.live = &live; });
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
        return difference.empty() ? "" : difference + std::to_string(frames) + " frames";
    }

    int frames() const { return frames_; }

    DelayFields fields{};

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

    // A line of which only the window may be touched.
    float* wholeLine(std::vector<float>& window) const { return window.data() + kMargin - start_; }

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
    LineClearing clearing_;
    SweepPass sweep_;
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
            ASSERT_EQ(run.render(GetParam().render, change), 0) << name << ", round " << round;
            ASSERT_EQ(run.differenceAfter(0), "") << name << ", round " << round;
        }
    };
    expectNone("delayLength", [](SubBlockRun& run) { ++run.fields.delayLength; });
    expectNone("delayPosition", [](SubBlockRun& run) { ++run.fields.delayPosition; });
    expectNone("lowPass", [](SubBlockRun& run) { run.fields.lowPass += 0.25; });
    expectNone("highPass", [](SubBlockRun& run) { run.fields.highPass += 0.25; });
    expectNone("lowPassType", [](SubBlockRun& run) { run.fields.lowPassType ^= true; });
    expectNone("highPassType", [](SubBlockRun& run) { run.fields.highPassType ^= true; });
    expectNone("leftRight", [](SubBlockRun& run) { run.fields.leftRight += 0.25; });
    expectNone("mix", [](SubBlockRun& run) { run.fields.mix += 0.25; });
    expectNone("panDepth", [](SubBlockRun& run) { run.fields.panDepth += 0.25; });
    expectNone("feedBack", [](SubBlockRun& run) { run.fields.feedBack += 0.25f; });
}

TEST_P(SubBlockKernelsTest, FirstSampleThatFindsAnotherGainIsLeftAlone) {
    using Gain = double FourPoleFilter::*;
    using Filter = FourPoleFilter* DelayFields::*;
    static constexpr Gain kGains[] = {&FourPoleFilter::lowGain, &FourPoleFilter::midGain,
                                      &FourPoleFilter::highGain};
    static constexpr Filter kFilters[] = {&DelayFields::lowPassLeft, &DelayFields::lowPassRight,
                                          &DelayFields::highPassLeft, &DelayFields::highPassRight};
    const std::uint64_t seed = randomSeed(0x5A);
    Dice dice(seed);
    ReferenceDelay model;
    int seen = 0;
    for (int round = 0; round < 400; ++round) {
        SubBlockRun run(model, dice);
        const Filter which = dice.pick(kFilters);
        FourPoleFilter& filter = *(run.fields.*which);
        const bool lowPass =
            which == &DelayFields::lowPassLeft || which == &DelayFields::lowPassRight;
        const bool runs = (lowPass ? run.fields.lowPass : run.fields.highPass) > 0.0;
        double& gain = filter.*dice.pick(kGains);
        const double before = gain;
        const int frames = run.render(GetParam().render, [&](SubBlockRun&) { gain += 0.25; });
        gain = before;
        ASSERT_EQ(frames, runs ? 0 : run.frames())
            << "round " << round << ", TVDELAY_TEST_SEED=" << seed;
        ASSERT_EQ(run.differenceAfter(frames), "") << "TVDELAY_TEST_SEED=" << seed;
        seen += runs ? 1 : 0;
    }
    EXPECT_GT(seen, 100);
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
        live.delayLength = run.fields.delayLength;
        live.delayPosition = run.fields.delayPosition;
        live.lowPass = run.fields.lowPass;
        live.highPass = run.fields.highPass;
        live.lowPassType = run.fields.lowPassType;
        live.highPassType = run.fields.highPassType;
        live.leftRight = run.fields.leftRight;
        live.panDepth = run.fields.panDepth;
        live.feedBack = run.fields.feedBack;
        const int frames = run.renderLive(GetParam().render, live);
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
