// Writes of another thread while a block runs. The audio thread is held at a chosen input sample
// until the write is done, so that each run is the same.
#include "effect/LiveField.h"
#include "effect/SubBlock.h"
#include "effect/VstXSynth.h"
#include "tests/effect/EffectState.h"
#include "tests/effect/TrappedInput.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kFrames = 9000;
constexpr std::size_t kSoon = 300; // where most wrong guesses show already

// How much later a change is heard than at the sample in hand: another look at the fields is at
// most 16 frames away, and the steps of the path are up to 20 apart.
constexpr std::size_t kHeardWithin = 40;

// What is written, to the effect and to the model alike.
struct LiveWrite {
    std::string name;
    std::function<void(VstXSynth&)> toEffect;
    std::function<void(ReferenceDelay&)> toModel;
    // How far from the sample in hand it may be heard. A clearing of the lines takes the whole
    // sub-block that it meets with it.
    std::size_t before = kMaxSubBlock;
    std::size_t within = kMaxSubBlock;
};

LiveWrite parameterWrite(VstInt32 index, float value) {
    return {"setParameter(" + std::to_string(index) + ", " + std::to_string(value) + ")",
            [=](VstXSynth& effect) { effect.setParameter(index, value); },
            [=](ReferenceDelay& model) { model.setParameter(index, value); },
            index == kDelay ? std::size_t{kMaxSubBlock} : std::size_t{kSubBlockStep},
            index == kDelay ? std::size_t{kMaxSubBlock} : kHeardWithin};
}

using Filter = FourPoleFilter* DelayFields::*;
using Gain = double FourPoleFilter::*;
using ModelFilter = ReferenceFilter ReferenceDelay::*;
using ModelGain = double ReferenceFilter::*;

LiveWrite gainWrite(Filter filter, Gain gain, ModelFilter modelFilter, ModelGain modelGain,
                    double value) {
    return {"a gain of " + std::to_string(value),
            [=](VstXSynth& effect) { writeLive(effect.*filter->*gain, value); },
            [=](ReferenceDelay& model) { model.*modelFilter.*modelGain = value; }, kSubBlockStep,
            kHeardWithin};
}

LiveWrite programWrite(VstInt32 program) {
    return {"setProgram(" + std::to_string(program) + ")",
            [=](VstXSynth& effect) { effect.setProgram(program); },
            [=](ReferenceDelay& model) { model.setProgram(program); }};
}

using Settings = std::vector<std::pair<VstInt32, float>>;

// Output of the model, from frame `begin` to `end`, appended to `out`.
void runModel(ReferenceDelay& model, const std::vector<float>& left,
              const std::vector<float>& right, std::size_t begin, std::size_t end,
              std::vector<float>& outLeft, std::vector<float>& outRight) {
    if (begin == end) {
        return;
    }
    std::vector<float> inLeft(left.begin() + static_cast<std::ptrdiff_t>(begin),
                              left.begin() + static_cast<std::ptrdiff_t>(end));
    std::vector<float> inRight(right.begin() + static_cast<std::ptrdiff_t>(begin),
                               right.begin() + static_cast<std::ptrdiff_t>(end));
    float* channels[2] = {inLeft.data(), inRight.data()};
    model.process(channels, channels, static_cast<std::int32_t>(end - begin));
    outLeft.insert(outLeft.end(), inLeft.begin(), inLeft.end());
    outRight.insert(outRight.end(), inRight.begin(), inRight.end());
}

// Empty when the block came out as if the write had been done before one of the samples around
// `trapFrame`, no further off than the write says.
std::string writeWhileRunning(const LiveWrite& write, const Settings& settings,
                              std::size_t trapFrame, std::uint64_t signalSeed) {
    VstXSynth effect(plainHost);
    ReferenceDelay model;
    for (const auto& [index, value] : settings) {
        effect.setParameter(index, value);
        model.setParameter(index, value);
    }
    std::vector<float> left(kFrames);
    std::vector<float> right(kFrames);
    fillSignal(Signal::kNoise, signalSeed, left.data(), kFrames);
    fillSignal(Signal::kNoise, signalSeed + 1, right.data(), kFrames);

    TrappedInput input(kFrames, trapFrame, [&] { write.toEffect(effect); });
    std::copy(left.begin(), left.end(), input.samples());
    std::vector<float> outLeft(kFrames);
    std::vector<float> outRight(kFrames);
    float* inputs[2] = {input.samples(), right.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    input.arm();
    effect.processReplacing(inputs, outputs, kFrames);
    if (!input.sprung()) {
        return "the block never reached the write";
    }

    const std::size_t first = trapFrame - write.before;
    std::vector<float> commonLeft;
    std::vector<float> commonRight;
    runModel(model, left, right, 0, first, commonLeft, commonRight);
    if (firstDifference(outLeft.data(), commonLeft.data(), first) >= 0 ||
        firstDifference(outRight.data(), commonRight.data(), first) >= 0) {
        return "samples far before the write differ";
    }
    for (std::size_t candidate = first; candidate <= trapFrame + write.within; ++candidate) {
        ReferenceDelay heard = model;
        std::vector<float> expectedLeft = commonLeft;
        std::vector<float> expectedRight = commonRight;
        runModel(heard, left, right, first, candidate, expectedLeft, expectedRight);
        write.toModel(heard);
        runModel(heard, left, right, candidate, trapFrame + kSoon, expectedLeft, expectedRight);
        if (firstDifference(outLeft.data(), expectedLeft.data(), trapFrame + kSoon) >= 0) {
            continue;
        }
        runModel(heard, left, right, trapFrame + kSoon, kFrames, expectedLeft, expectedRight);
        if (firstDifference(outLeft.data(), expectedLeft.data(), kFrames) < 0 &&
            firstDifference(outRight.data(), expectedRight.data(), kFrames) < 0 &&
            stateDifference(effect, heard).empty()) {
            return "";
        }
    }
    return "no sample near frame " + std::to_string(trapFrame) + " at which " + write.name +
           " gives this block";
}

const Settings kBusy = {{kDelay, 0.02f},    {kFeedBack, 0.6f},    {kLowPass, 0.4f},
                        {kHighPass, 0.3f},  {kLowPassType, 1.0f}, {kHighPassType, 0.0f},
                        {kLeftRight, 0.4f}, {kPanDepth, 0.7f},    {kMix, 0.8f}};

class LiveWrites : public testing::TestWithParam<VstInt32> {};

} // namespace

TEST_P(LiveWrites, ParameterOfAnotherThreadIsHeardWithinTheBlock) {
    const std::uint64_t seed = randomSeed(0x11FE);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed + static_cast<std::uint64_t>(GetParam()));
    static constexpr float kValues[] = {0.0f, 1.0f, 0.25f, 0.9f};
    static constexpr float kDelays[] = {0.02f, 0.0005f, 0.0f, 0.1f};
    for (int round = 0; round < 8; ++round) {
        Settings settings = kBusy;
        settings[kDelay].second = kDelays[round % 4];
        const float value = kValues[(round + round / 4) % 4];
        const auto trapFrame = static_cast<std::size_t>(dice.between(4000, 7000));
        ASSERT_EQ(
            writeWhileRunning(parameterWrite(GetParam(), value), settings, trapFrame, dice.bits()),
            "")
            << "with a delay of " << settings[kDelay].second;
    }
}

INSTANTIATE_TEST_SUITE_P(Index, LiveWrites, testing::Range(0, 9));

TEST(LiveWritesOnce, EachGainOfAnotherThreadIsHeardWithinTheBlock) {
    struct Row {
        Filter filter;
        ModelFilter model;
    };
    static constexpr Row kFilters[] = {
        {&DelayFields::lowPassLeft, &ReferenceDelay::lowPassLeft},
        {&DelayFields::lowPassRight, &ReferenceDelay::lowPassRight},
        {&DelayFields::highPassLeft, &ReferenceDelay::highPassLeft},
        {&DelayFields::highPassRight, &ReferenceDelay::highPassRight}};
    const std::uint64_t seed = randomSeed(0x1200);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (const Row& row : kFilters) {
        for (int round = 0; round < 3; ++round) {
            const std::pair<Gain, ModelGain> gains[] = {
                {&FourPoleFilter::lowGain, &ReferenceFilter::lowGain},
                {&FourPoleFilter::midGain, &ReferenceFilter::midGain},
                {&FourPoleFilter::highGain, &ReferenceFilter::highGain}};
            const auto trapFrame = static_cast<std::size_t>(dice.between(4000, 7000));
            ASSERT_EQ(writeWhileRunning(gainWrite(row.filter, gains[round].first, row.model,
                                                  gains[round].second, 0.125),
                                        kBusy, trapFrame, dice.bits()),
                      "");
        }
    }
}

TEST(LiveWritesOnce, ProgramOfAnotherThreadIsHeardWithinTheBlock) {
    const std::uint64_t seed = randomSeed(0x11FF);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (VstInt32 program = 0; program < 26; ++program) {
        const auto trapFrame = static_cast<std::size_t>(dice.between(4000, 7000));
        ASSERT_EQ(writeWhileRunning(programWrite(program), kBusy, trapFrame, dice.bits()), "");
    }
}

TEST(LiveWritesOnce, ResumeOfAnotherThreadIsHeardWithinTheBlock) {
    const LiveWrite resume = {"resume()", [](VstXSynth& effect) { effect.resume(); },
                              [](ReferenceDelay& model) { model.resume(); }};
    Dice dice(randomSeed(0x1200));
    for (int round = 0; round < 10; ++round) {
        const auto trapFrame = static_cast<std::size_t>(dice.between(4000, 7000));
        ASSERT_EQ(writeWhileRunning(resume, kBusy, trapFrame, dice.bits()), "");
    }
}

TEST(LiveWritesOnce, MixOfAnotherThreadIsHeardInTheMiddleOfAVeryLongBlock) {
    constexpr std::size_t kLong = std::size_t{8192} * 64;
    constexpr std::size_t kMiddle = kLong / 2;
    VstXSynth effect(plainHost);
    for (const auto& [index, value] : Settings{{kDelay, 0.0f},
                                               {kFeedBack, 0.0f},
                                               {kLowPass, 0.0f},
                                               {kHighPass, 0.0f},
                                               {kPanDepth, 0.0f},
                                               {kMix, 0.0f}}) {
        effect.setParameter(index, value);
    }
    TrappedInput input(kLong, kMiddle, [&] { effect.setParameter(kMix, 1.0f); });
    std::fill_n(input.samples(), kLong, 0.25f);
    std::vector<float> silence(kLong);
    std::vector<float> outLeft(kLong);
    std::vector<float> outRight(kLong);
    float* inputs[2] = {input.samples(), silence.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    input.arm();
    effect.processReplacing(inputs, outputs, kLong);
    ASSERT_TRUE(input.sprung());
    for (std::size_t i = 1; i < kMiddle - kMaxSubBlock; ++i) {
        ASSERT_EQ(outRight[i], 0.0f) << i;
    }
    for (std::size_t i = kMiddle + kMaxSubBlock; i < kLong; ++i) {
        ASSERT_EQ(outRight[i], 0.25f) << i;
    }
}
