// Random scripts: whatever is set and processed, every bit is the one of the reference.
#include <gtest/gtest.h>

#include <string>

#include "tests/soundlib/ChorusFixture.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/Signal.h"

namespace {

constexpr std::size_t kLongestBlock = 700;

// Most values are ordinary ones, some lie far outside.
float settingValue(Dice& dice) {
    if (dice.oneIn(40)) {
        return dice.within(-3.0f, 3.0f);
    }
    if (dice.oneIn(400)) {
        return dice.anyFloat();
    }
    return dice.within(0.0f, 1.0f);
}

void turnAKnob(ChorusFixture& chorus, Dice& dice) {
    const float value = settingValue(dice);
    switch (dice.between(0, 9)) {
    case 0:
        chorus.unit.setRate(value);
        chorus.reference.setRate(value);
        break;
    case 1:
        chorus.unit.setDepth(value);
        chorus.reference.setDepth(value);
        break;
    case 2:
        chorus.unit.setDelay(value);
        chorus.reference.delayValue = value;
        break;
    case 3:
        chorus.unit.setFeedback(value);
        chorus.reference.setFeedback(value);
        break;
    case 4:
        chorus.unit.setWet(value);
        chorus.reference.wetValue = value;
        break;
    case 5:
        chorus.unit.setMode(value);
        chorus.reference.setMode();
        break;
    case 6:
        restartLfo(&chorus.unit);
        chorus.reference.restartLfo();
        break;
    case 7:
        chorus.unit.monoInput = chorus.reference.monoInput = dice.oneIn(2);
        break;
    case 8: {
        const float frequency = dice.within(1.0f, 5000.0f);
        designSmoother(&chorus.delaySmoother, frequency);
        chorus.reference.delaySmoother.design(frequency);
        break;
    }
    default:
        chorus.unit.wetGainLeft = chorus.reference.wetGainLeft = dice.unit();
        chorus.unit.dryGainLeft = chorus.reference.dryGainLeft = dice.unit();
        chorus.unit.wetGainRight = chorus.reference.wetGainRight = -dice.unit();
        chorus.unit.dryGainRight = chorus.reference.dryGainRight = dice.unit();
        chorus.unit.feedbackScale = chorus.reference.feedbackScale = dice.unit();
        break;
    }
}

void expectSameSmoother(const SmoothingFilter& filter, const ReferenceSmoother& reference) {
    EXPECT_TRUE(sameNumber(filter.input1, reference.in1));
    EXPECT_TRUE(sameNumber(filter.input2, reference.in2));
    EXPECT_TRUE(sameNumber(filter.output1, reference.out1));
    EXPECT_TRUE(sameNumber(filter.output2, reference.out2));
}

void expectSameState(const ChorusFixture& chorus) {
    const ChorusUnit& unit = chorus.unit;
    const ReferenceChorus& reference = chorus.reference;
    EXPECT_TRUE(sameNumber(unit.lfoRate, reference.lfoRate));
    EXPECT_TRUE(sameNumber(unit.lfoDepth, reference.lfoDepth));
    EXPECT_TRUE(sameNumber(unit.lfoLimit, reference.lfoLimit));
    EXPECT_TRUE(sameNumber(unit.lfoStep, reference.lfoStep));
    EXPECT_TRUE(sameNumber(unit.lfoValue, reference.lfoValue));
    EXPECT_TRUE(sameNumber(unit.lastLeft, reference.lastLeft));
    EXPECT_TRUE(sameNumber(unit.lastRight, reference.lastRight));
    EXPECT_EQ(unit.writeIndex, reference.writeIndex);
    expectSameSmoother(chorus.delaySmoother, reference.delaySmoother);
    expectSameSmoother(chorus.wetSmoother, reference.wetSmoother);
    EXPECT_EQ(-1, firstDifference(chorus.lineLeft.data(), reference.lineLeft.data(), 8192));
    EXPECT_EQ(-1, firstDifference(chorus.lineRight.data(), reference.lineRight.data(), 8192));
}

enum class Buffers { kApart, kInPlace, kCrossed };

// Runs one block through both and expects the same output.
void runBlock(ChorusFixture& chorus, Dice& dice, Signal signal) {
    const auto frames = static_cast<std::size_t>(dice.between(0, kLongestBlock));
    std::vector<float> left(kLongestBlock);
    std::vector<float> right(kLongestBlock);
    fillSignal(signal, dice.bits(), left.data(), frames);
    fillSignal(signal, dice.bits(), right.data(), frames);
    std::vector<float> expectedLeft(kLongestBlock);
    std::vector<float> expectedRight(kLongestBlock);
    chorus.reference.process(left.data(), right.data(), expectedLeft.data(), expectedRight.data(),
                             static_cast<std::ptrdiff_t>(frames));

    std::vector<float> apartLeft(kLongestBlock);
    std::vector<float> apartRight(kLongestBlock);
    float* inputs[] = {left.data(), right.data()};
    float* outputs[] = {apartLeft.data(), apartRight.data()};
    const Buffers choices[] = {Buffers::kApart, Buffers::kInPlace, Buffers::kCrossed};
    const Buffers buffers = dice.pick(choices);
    if (buffers == Buffers::kInPlace) {
        outputs[0] = left.data();
        outputs[1] = right.data();
    } else if (buffers == Buffers::kCrossed) {
        outputs[0] = right.data();
        outputs[1] = left.data();
    }
    process(&chorus.unit, inputs, outputs, static_cast<std::int32_t>(frames));
    ASSERT_EQ(-1, firstDifference(outputs[0], expectedLeft.data(), frames));
    ASSERT_EQ(-1, firstDifference(outputs[1], expectedRight.data(), frames));
}

void runScript(std::uint64_t seed, int blocks) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    ChorusFixture chorus(dice.within(1.0f, 100.0f), dice.within(1.0f, 100.0f));
    const Signal signals[] = {Signal::kNoise, Signal::kImpulses,  Signal::kTone, Signal::kSilence,
                              Signal::kLoud,  Signal::kDenormals, Signal::kNoise};
    const Signal signal = dice.pick(signals);
    for (int block = 0; block < blocks; ++block) {
        SCOPED_TRACE("block " + std::to_string(block));
        for (auto turns = dice.between(0, 3); turns > 0; --turns) {
            turnAKnob(chorus, dice);
        }
        ASSERT_NO_FATAL_FAILURE(runBlock(chorus, dice, signal));
        if (block % 16 == 0) {
            expectSameState(chorus);
            ASSERT_FALSE(testing::Test::HasFailure());
        }
    }
    expectSameState(chorus);
}

} // namespace

TEST(ChorusScripts, AreBitForBitThoseOfTheReference) {
    const std::uint64_t first = randomSeed(4100);
    for (std::uint64_t seed = first; seed < first + 60; ++seed) {
        runScript(seed, 120);
        ASSERT_FALSE(HasFailure());
    }
}

TEST(ChorusScripts, HostileSignalsToo) {
    const std::uint64_t seed = randomSeed(4101);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    ChorusFixture chorus(10.0f, 20.0f);
    for (int block = 0; block < 200; ++block) {
        turnAKnob(chorus, dice);
        ASSERT_NO_FATAL_FAILURE(runBlock(chorus, dice, Signal::kHostile));
    }
    expectSameState(chorus);
}
