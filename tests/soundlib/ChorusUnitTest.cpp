#include "soundlib/ChorusUnit.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <thread>
#include <utility>

#include "tests/soundlib/ChorusFixture.h"

namespace {

// Padding as well: for records that nothing may have touched.
template <class Record>
std::string bytesOf(const Record& record) {
    return {reinterpret_cast<const char*>(&record), sizeof(record)};
}

constexpr double kTwoOverRate = 4.5351473922902495e-05;

} // namespace

TEST(ChorusUnit, HasItsFieldsInOrder) {
    const std::size_t offsets[] = {
        offsetof(ChorusUnit, rateValue),      offsetof(ChorusUnit, depthValue),
        offsetof(ChorusUnit, feedbackValue),  offsetof(ChorusUnit, delayValue),
        offsetof(ChorusUnit, wetValue),       offsetof(ChorusUnit, modeValue),
        offsetof(ChorusUnit, lfoRate),        offsetof(ChorusUnit, feedback),
        offsetof(ChorusUnit, feedbackScale),  offsetof(ChorusUnit, lfoDepth),
        offsetof(ChorusUnit, lfoLimit),       offsetof(ChorusUnit, delayLineLeft),
        offsetof(ChorusUnit, delayLineRight), offsetof(ChorusUnit, writeIndex),
        offsetof(ChorusUnit, lfoStep),        offsetof(ChorusUnit, lfoValue),
        offsetof(ChorusUnit, lastLeft),       offsetof(ChorusUnit, lastRight),
        offsetof(ChorusUnit, wetGainLeft),    offsetof(ChorusUnit, dryGainLeft),
        offsetof(ChorusUnit, wetGainRight),   offsetof(ChorusUnit, dryGainRight),
        offsetof(ChorusUnit, monoInput),      offsetof(ChorusUnit, delaySmoother),
        offsetof(ChorusUnit, wetSmoother)};
    EXPECT_EQ(offsets[0], 0u);
    for (std::size_t i = 1; i < std::size(offsets); ++i) {
        EXPECT_LT(offsets[i - 1], offsets[i]) << i;
    }
    EXPECT_TRUE(std::is_standard_layout_v<ChorusUnit>);
    EXPECT_TRUE(std::is_trivial_v<ChorusUnit>);
}

TEST(ChorusUnit, RateRunsFromATwentiethHertzToNineAndAHalf) {
    ChorusUnit unit{};
    unit.setRate(0.0f);
    EXPECT_EQ(unit.rateValue, 0.0f);
    EXPECT_EQ(unit.lfoRate, 1.0555599927902222 + -1.005559992045164);
    EXPECT_NEAR(unit.lfoRate, 0.05, 1e-8);
    unit.setRate(1.0f);
    EXPECT_EQ(unit.rateValue, 1.0f);
    EXPECT_EQ(unit.lfoRate, 10.0 * 1.0555599927902222 + -1.005559992045164);
    EXPECT_NEAR(unit.lfoRate, 9.55, 1e-4);
    unit.setRate(0.3f);
    EXPECT_EQ(unit.lfoRate,
              std::pow(10.0, static_cast<double>(0.3f)) * 1.0555599927902222 + -1.005559992045164);
}

TEST(ChorusUnit, RateRestartsTheLfo) {
    ChorusUnit unit{};
    unit.lfoDepth = 100.3;
    unit.lfoValue = 55.0;
    unit.lfoStep = -1.0;
    unit.setRate(0.7f);
    EXPECT_EQ(unit.lfoStep, (unit.lfoRate * kTwoOverRate) * 100.3);
    EXPECT_GT(unit.lfoStep, 0.0);
    EXPECT_EQ(unit.lfoValue, 0.0);
    EXPECT_EQ(unit.lfoLimit, 100.3);
}

TEST(ChorusUnit, DepthIsWidenedBeforeItIsScaledAndRestartsTheLfo) {
    ChorusUnit unit{};
    unit.lfoRate = 3.3;
    unit.lfoValue = 55.0;
    unit.lfoStep = -1.0;
    unit.setDepth(0.7f);
    EXPECT_EQ(unit.depthValue, 0.7f);
    EXPECT_EQ(unit.lfoDepth, static_cast<double>(0.7f) * 441.0);
    EXPECT_EQ(unit.lfoStep, (unit.lfoDepth * kTwoOverRate) * 3.3);
    EXPECT_EQ(unit.lfoValue, 0.0);
    EXPECT_EQ(unit.lfoLimit, unit.lfoDepth);
    unit.setDepth(1.0f);
    EXPECT_EQ(unit.lfoDepth, 441.0);
}

TEST(ChorusUnit, DepthAtTheBottomSwitchesTheModulationOff) {
    for (const float depth : {std::nextafterf(0.05f, 0.0f), 0.03f, 0.0f, -1.0f}) {
        ChorusFixture chorus(10.0f, 20.0f);
        chorus.unit.setRate(1.0f);
        chorus.unit.setDepth(depth);
        EXPECT_EQ(chorus.unit.lfoDepth, 0.0);
        EXPECT_EQ(chorus.unit.lfoStep, 0.0);
        for (int i = 0; i < 1000; ++i) {
            chorus.frame(0.5f, -0.5f);
            ASSERT_EQ(chorus.unit.lfoValue, 0.0);
        }
    }
}

TEST(ChorusUnit, DepthOfSinglePrecisionOneTwentiethSwitchesTheModulationOn) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setRate(1.0f);
    chorus.unit.setDepth(0.05f);
    EXPECT_NEAR(chorus.unit.lfoDepth, 22.05, 1e-5);
    EXPECT_GT(chorus.unit.lfoDepth, 22.05);
    EXPECT_GT(chorus.unit.lfoStep, 0.0);
    chorus.frame(0.0f, 0.0f);
    EXPECT_EQ(chorus.unit.lfoValue, chorus.unit.lfoStep);
}

TEST(ChorusUnit, RateAndDepthGroupTheStepDifferently) {
    // For most pairs the two groupings agree; this searches one where they don't.
    ChorusUnit byRate{};
    ChorusUnit byDepth{};
    int different = 0;
    for (int i = 1; i <= 1000; ++i) {
        const float value = static_cast<float>(i) * 0.001f;
        byRate = byDepth = ChorusUnit{};
        byRate.setDepth(value);
        byRate.setRate(value);
        byDepth.setRate(value);
        byDepth.setDepth(value);
        EXPECT_EQ(byRate.lfoStep, (byRate.lfoRate * kTwoOverRate) * byRate.lfoDepth);
        EXPECT_EQ(byDepth.lfoStep, (byDepth.lfoDepth * kTwoOverRate) * byDepth.lfoRate);
        different += byRate.lfoStep != byDepth.lfoStep ? 1 : 0;
    }
    EXPECT_GT(different, 0);
}

TEST(ChorusUnit, RestartTakesOverRateAndDepthAndRises) {
    ChorusUnit unit{};
    unit.lfoRate = 2.7;
    unit.lfoDepth = 123.4;
    unit.lfoLimit = 1.0;
    unit.lfoValue = 50.0;
    unit.lfoStep = -3.0;
    restartLfo(&unit);
    EXPECT_EQ(unit.lfoStep, (kTwoOverRate * 123.4) * 2.7);
    EXPECT_EQ(unit.lfoValue, 0.0);
    EXPECT_EQ(unit.lfoLimit, 123.4);
}

TEST(ChorusUnit, PlainSettersStoreTheirValueAndLeaveTheLfo) {
    ChorusUnit unit{};
    unit.lfoValue = 12.0;
    unit.lfoStep = -0.5;
    unit.setDelay(0.25f);
    unit.setFeedback(0.1f);
    unit.setWet(0.75f);
    EXPECT_EQ(unit.delayValue, 0.25f);
    EXPECT_EQ(unit.feedbackValue, 0.1f);
    EXPECT_EQ(unit.feedback, static_cast<double>(0.1f));
    EXPECT_EQ(unit.wetValue, 0.75f);
    EXPECT_EQ(unit.lfoValue, 12.0);
    EXPECT_EQ(unit.lfoStep, -0.5);
}

TEST(ChorusUnit, AnyModeIsTheOneMode) {
    for (const float mode : {0.0f, 1.0f, -7.5f}) {
        ChorusUnit unit{};
        unit.monoInput = true;
        unit.feedback = 0.3;
        unit.setMode(mode);
        EXPECT_EQ(unit.modeValue, mode);
        EXPECT_FALSE(unit.monoInput);
        EXPECT_EQ(unit.wetGainLeft, 1.0);
        EXPECT_EQ(unit.dryGainLeft, 1.0);
        EXPECT_EQ(unit.wetGainRight, 1.0);
        EXPECT_EQ(unit.dryGainRight, 1.0);
        EXPECT_EQ(unit.feedbackScale, 1.0);
        EXPECT_EQ(unit.feedback, 0.3);
    }
}

TEST(ChorusUnit, SettersKeepLinesAndSmoothers) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setWet(1.0f);
    chorus.unit.setDelay(0.5f);
    for (int i = 0; i < 300; ++i) {
        chorus.frame(0.5f, 0.25f);
    }
    const std::vector<double> lineLeft = chorus.lineLeft;
    const std::vector<double> lineRight = chorus.lineRight;
    const std::string delaySmoother = bytesOf(chorus.delaySmoother);
    const std::string wetSmoother = bytesOf(chorus.wetSmoother);
    chorus.unit.setRate(0.1f);
    chorus.unit.setDepth(0.2f);
    chorus.unit.setDelay(0.3f);
    chorus.unit.setFeedback(0.4f);
    chorus.unit.setWet(0.5f);
    chorus.unit.setMode(0.6f);
    restartLfo(&chorus.unit);
    EXPECT_EQ(lineLeft, chorus.lineLeft);
    EXPECT_EQ(lineRight, chorus.lineRight);
    EXPECT_EQ(delaySmoother, bytesOf(chorus.delaySmoother));
    EXPECT_EQ(wetSmoother, bytesOf(chorus.wetSmoother));
}

TEST(ChorusUnit, EmptyBlockLeavesRecordAndSmoothers) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setRate(0.5f);
    chorus.unit.setDepth(0.5f);
    chorus.unit.setWet(0.7f);
    chorus.unit.setDelay(0.7f);
    for (int i = 0; i < 100; ++i) {
        chorus.frame(0.5f, -0.5f);
    }
    const std::string unit = bytesOf(chorus.unit);
    const std::string delaySmoother = bytesOf(chorus.delaySmoother);
    const std::string wetSmoother = bytesOf(chorus.wetSmoother);
    for (const std::int32_t frames : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
        process(&chorus.unit, nullptr, nullptr, frames);
        EXPECT_EQ(unit, bytesOf(chorus.unit));
        EXPECT_EQ(delaySmoother, bytesOf(chorus.delaySmoother));
        EXPECT_EQ(wetSmoother, bytesOf(chorus.wetSmoother));
    }
}

TEST(ChorusUnit, NoDelayReadsTheSampleJustWritten) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setWet(0.5f);
    chorus.settle();
    for (int i = 0; i < 10000; ++i) {
        const float input = i % 7 == 0 ? 0.25f : 0.125f;
        chorus.frame(input, -input);
        ASSERT_EQ(chorus.unit.lastLeft, static_cast<double>(input)) << i;
        ASSERT_EQ(chorus.unit.lastRight, static_cast<double>(-input)) << i;
    }
}

TEST(ChorusUnit, LongestDelayIs882SamplesAtEveryPlaceOfTheRing) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setDelay(1.0f);
    chorus.unit.setWet(1.0f);
    chorus.settle();
    chorus.unit.lfoValue = 441.0; // held: the step is 0
    std::vector<float> history;
    for (int i = 0; i < 3 * 8192; ++i) {
        const float input = static_cast<float>((i * 37) % 101) * 0.001f;
        history.push_back(input);
        chorus.frame(input, 0.0f);
        // The smoother is settled but for rounding, so the read lies next to a whole position.
        const double expected = i >= 882 ? static_cast<double>(history[i - 882]) : 0.0;
        ASSERT_NEAR(chorus.unit.lastLeft, expected, 1e-6) << i;
    }
}

TEST(ChorusUnit, ReadPositionBelowZeroWrapsOnce) {
    ChorusFixture chorus(10.0f, 20.0f);
    for (std::size_t i = 0; i < 8192; ++i) {
        chorus.lineLeft[i] = static_cast<double>(i);
    }
    chorus.unit.lfoValue = 2.25; // held: the step is 0
    chorus.unit.writeIndex = 1;  // 2 after the write, so the position is 1 - 2.25 + 8192
    chorus.frame(0.0f, 0.0f);
    EXPECT_EQ(chorus.unit.lastLeft, 8191.0 * 0.75 + 8190.0 * 0.25);
    chorus.lineLeft[1] = 1.0;
    chorus.unit.writeIndex = 8191; // 0 after the write, so the position is -1 - 2.25 + 8192
    chorus.frame(0.0f, 0.0f);
    EXPECT_EQ(chorus.unit.writeIndex, 0);
    EXPECT_EQ(chorus.unit.lastLeft, 8189.0 * 0.75 + 8188.0 * 0.25);
}

TEST(ChorusUnit, OutputStaysWithin99Hundredths) {
    ChorusFixture chorus(10.0f, 20.0f);
    for (const float wet : {0.0f, 1.0f}) {
        chorus.unit.setWet(wet);
        chorus.settle();
        for (const float input : {1.0f, 0.99f, 0.995f, 1e30f, 100.0f}) {
            const auto [left, right] = chorus.frame(input, -input);
            EXPECT_EQ(left, static_cast<float>(0.99)) << input;
            EXPECT_EQ(right, static_cast<float>(-0.99)) << input;
            chorus.lineLeft.assign(8192, 0.0);
            chorus.lineRight.assign(8192, 0.0);
            chorus.unit.lastLeft = chorus.unit.lastRight = 0.0;
        }
    }
    chorus.unit.setWet(0.0f);
    chorus.settle();
    EXPECT_EQ(chorus.frame(0.75f, -0.75f), std::make_pair(0.75f, -0.75f));
}

TEST(ChorusUnit, NotANumberComesOutAsTheUpperLimit) {
    ChorusFixture chorus(10.0f, 20.0f);
    const auto [left, right] = chorus.frame(std::numeric_limits<float>::quiet_NaN(), 0.5f);
    EXPECT_EQ(left, static_cast<float>(0.99));
    EXPECT_EQ(right, 0.5f);
}

TEST(ChorusUnit, EachLineFeedsItselfOnly) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setWet(1.0f);
    chorus.unit.setDelay(0.1f);
    chorus.unit.setFeedback(0.9f);
    chorus.settle();
    chorus.frame(0.8f, 0.0f);
    double loudestLeft = 0.0;
    for (int i = 0; i < 5000; ++i) {
        const auto [left, right] = chorus.frame(0.0f, 0.0f);
        loudestLeft = std::max(loudestLeft, std::fabs(static_cast<double>(left)));
        ASSERT_EQ(right, 0.0f);
    }
    EXPECT_GT(loudestLeft, 0.1);
}

TEST(ChorusUnit, FeedbackUsesTheReadOfTheSampleBefore) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setFeedback(0.5f);
    chorus.unit.feedbackScale = 0.5;
    chorus.unit.lastLeft = 0.4;
    chorus.unit.lastRight = -0.8;
    chorus.frame(0.125f, 0.25f);
    EXPECT_EQ(chorus.lineLeft[0], 0.4 * 0.25 + 0.125);
    EXPECT_EQ(chorus.lineRight[0], -0.8 * 0.25 + 0.25);
}

TEST(ChorusUnit, MonoInputFoldsTheDrySignalToo) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.monoInput = true;
    EXPECT_EQ(chorus.frame(0.5f, 0.25f), std::make_pair(0.375f, 0.375f));
    EXPECT_EQ(chorus.lineLeft[0], 0.375);
    EXPECT_EQ(chorus.lineRight[0], 0.375);
}

TEST(ChorusUnit, MonoInputIsFoldedInSinglePrecision) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.monoInput = true;
    const float left = 0.3f;
    const float right = 1e-9f; // lost in the single-precision sum
    chorus.frame(left, right);
    EXPECT_EQ(chorus.lineLeft[0], static_cast<double>(0.3f * 0.5f));
}

TEST(ChorusUnit, LfoCycleLasts44100OverItsRate) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.setDepth(0.4f);
    chorus.unit.setRate(0.6f);
    std::vector<int> zeros;
    for (int i = 0; zeros.size() < 6; ++i) {
        ASSERT_LT(i, 200000);
        chorus.frame(0.0f, 0.0f);
        if (chorus.unit.lfoValue == 0.0) {
            zeros.push_back(i);
        }
    }
    const double cycle = 44100.0 / chorus.unit.lfoRate;
    for (std::size_t i = 1; i < zeros.size(); ++i) {
        EXPECT_NEAR(zeros[i] - zeros[i - 1], cycle, 2.0); // turns at whole samples
    }
}

TEST(ChorusUnit, LfoTurnsAtTheTopWithoutBeingPutBack) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.lfoStep = 3.0;
    chorus.unit.lfoLimit = 10.0;
    chorus.unit.lfoValue = 8.0;
    chorus.frame(0.0f, 0.0f);
    EXPECT_EQ(chorus.unit.lfoValue, 11.0);
    EXPECT_EQ(chorus.unit.lfoStep, -3.0);
    chorus.unit.lfoValue = 7.0;
    chorus.unit.lfoStep = 3.0;
    chorus.frame(0.0f, 0.0f);
    EXPECT_EQ(chorus.unit.lfoValue, 10.0); // at the limit is enough
    EXPECT_EQ(chorus.unit.lfoStep, -3.0);
}

TEST(ChorusUnit, LfoIsPutBackToZeroAtTheBottom) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.lfoStep = -3.0;
    chorus.unit.lfoLimit = 10.0;
    for (const double value : {2.0, 3.0}) {
        chorus.unit.lfoStep = -3.0;
        chorus.unit.lfoValue = value;
        chorus.frame(0.0f, 0.0f);
        EXPECT_EQ(chorus.unit.lfoValue, 0.0);
        EXPECT_EQ(chorus.unit.lfoStep, 3.0);
    }
}

TEST(ChorusUnit, LfoWithoutStepHoldsItsValue) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.unit.lfoValue = 7.5;
    chorus.unit.lfoLimit = 1.0;
    chorus.frame(0.0f, 0.0f);
    EXPECT_EQ(chorus.unit.lfoValue, 7.5);
    EXPECT_EQ(chorus.unit.lfoStep, 0.0);
}

TEST(ChorusUnit, LfoMovesAfterTheReadOfItsSample) {
    ChorusFixture chorus(10.0f, 20.0f);
    chorus.lineLeft[8191] = 1.0;
    chorus.unit.lfoStep = 1.0;
    chorus.unit.lfoLimit = 10.0;
    chorus.unit.writeIndex = 0;
    chorus.frame(0.5f, 0.0f);
    EXPECT_EQ(chorus.unit.lastLeft, 0.5); // read without the sweep
    EXPECT_EQ(chorus.unit.lfoValue, 1.0);
}

TEST(ChorusUnit, SettingsAreReadAtEachSample) {
    ChorusFixture chorus(1000.0f, 2000.0f);
    // The outputs of the left channel land in delayValue, wetValue and modeValue.
    float left[] = {0.5f, 0.25f, 0.125f};
    float right[] = {0.0f, 0.0f, 0.0f};
    float* inputs[] = {left, right};
    float rightOutput[3];
    float* outputs[] = {&chorus.unit.delayValue, rightOutput};
    process(&chorus.unit, inputs, outputs, 3);
    EXPECT_EQ(chorus.delaySmoother.input1, 0.5);
    EXPECT_EQ(chorus.delaySmoother.input2, 0.5);
    EXPECT_EQ(chorus.wetSmoother.input1, static_cast<double>(chorus.unit.wetValue));
    EXPECT_EQ(chorus.wetSmoother.input2, 0.0);
}

TEST(ChorusUnit, SettersMayRunOnAnotherThread) {
    ChorusFixture chorus(10.0f, 20.0f);
    std::atomic<bool> done{false};
    std::thread setter([&] {
        for (int i = 0; !done; ++i) {
            const float value = static_cast<float>(i % 100) * 0.01f;
            chorus.unit.setRate(value);
            chorus.unit.setDepth(1.0f - value);
            chorus.unit.setDelay(value);
            chorus.unit.setFeedback(value * 0.5f);
            chorus.unit.setWet(value);
            chorus.unit.setMode(value);
            restartLfo(&chorus.unit);
        }
    });
    std::vector<float> left(512, 0.5f);
    std::vector<float> right(512, -0.5f);
    for (int block = 0; block < 200; ++block) {
        std::vector<float> outLeft(512);
        std::vector<float> outRight(512);
        float* inputs[] = {left.data(), right.data()};
        float* outputs[] = {outLeft.data(), outRight.data()};
        process(&chorus.unit, inputs, outputs, 512);
        for (const std::vector<float>& output : {outLeft, outRight}) {
            for (const float sample : output) {
                EXPECT_LE(std::fabs(sample), static_cast<float>(0.99));
            }
        }
    }
    done = true;
    setter.join();
}

TEST(ChorusUnit, OneFilterMayServeAsBothSmoothers) {
    ChorusFixture chorus(500.0f, 20.0f);
    chorus.unit.wetSmoother = &chorus.delaySmoother;
    chorus.reference.oneSmoother = true;
    chorus.unit.setDelay(0.3f);
    chorus.unit.setWet(0.9f);
    chorus.reference.delayValue = 0.3f;
    chorus.reference.wetValue = 0.9f;
    for (int i = 0; i < 2000; ++i) {
        const float input = static_cast<float>(i % 50) * 0.01f;
        float left;
        float right;
        chorus.reference.process(&input, &input, &left, &right, 1);
        ASSERT_EQ(chorus.frame(input, input), std::make_pair(left, right)) << i;
        ASSERT_EQ(chorus.delaySmoother.output1, chorus.reference.delaySmoother.out1) << i;
    }
}

TEST(ChorusUnit, ClampSampleLimitsTo999Thousandths) {
    EXPECT_EQ(clampSample(0.5), 0.5);
    EXPECT_EQ(clampSample(-0.5), -0.5);
    EXPECT_EQ(clampSample(0.999), 0.999);
    EXPECT_EQ(clampSample(1.0), 0.999);
    EXPECT_EQ(clampSample(-0.999), -0.999);
    EXPECT_EQ(clampSample(-1.0), -0.999);
    EXPECT_EQ(clampSample(HUGE_VAL), 0.999);
    EXPECT_EQ(clampSample(-HUGE_VAL), -0.999);
    EXPECT_EQ(clampSample(0.995), 0.995); // beyond what a block may put out
}
