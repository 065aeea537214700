// What the signal path does, case by case. SignalPathScriptTest.cpp holds it against the model.
#include "effect/VstXSynth.h"

#include "tests/effect/EffectState.h"
#include "tests/effect/SynthRun.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace {

Stereo noise(std::size_t frames, std::uint64_t seed = 1) {
    Stereo result(frames);
    Dice dice(seed);
    for (std::size_t i = 0; i < frames; ++i) {
        result.left[i] = dice.within(-1.0f, 1.0f);
        result.right[i] = dice.within(-1.0f, 1.0f);
    }
    return result;
}

Stereo impulse(std::size_t frames, float left, float right) {
    Stereo result(frames);
    result.left[0] = left;
    result.right[0] = right;
    return result;
}

class SignalPath : public testing::Test {
protected:
    VstXSynth effect{plainHost};
};

} // namespace

TEST_F(SignalPath, EchoComesOutOnTheOppositeSide) {
    setPlainEchoes(effect, 100, 0.0f);
    ASSERT_EQ(effect.delayLength, 100);
    const Stereo out = runThrough(effect, impulse(300, 1.0f, 0.0f));
    for (std::size_t i = 0; i < 300; ++i) {
        EXPECT_EQ(out.left[i], i == 0 ? 1.0f : 0.0f) << i;
        EXPECT_EQ(out.right[i], i == 100 ? 1.0f : 0.0f) << i;
    }
}

TEST_F(SignalPath, RightEchoComesOutOnTheLeft) {
    setPlainEchoes(effect, 100, 0.0f);
    const Stereo out = runThrough(effect, impulse(300, 0.0f, -0.5f));
    for (std::size_t i = 0; i < 300; ++i) {
        EXPECT_EQ(out.right[i], i == 0 ? -0.5f : 0.0f) << i;
        EXPECT_EQ(out.left[i], i == 100 ? -0.5f : 0.0f) << i;
    }
}

TEST_F(SignalPath, RepeatsFollowScaledByTheFeedback) {
    setPlainEchoes(effect, 50, 0.5f);
    const Stereo out = runThrough(effect, impulse(260, 1.0f, 0.0f));
    for (std::size_t i = 1; i < 260; ++i) {
        const float expected = i % 50 == 0 ? std::ldexp(1.0f, 1 - static_cast<int>(i / 50)) : 0.0f;
        EXPECT_EQ(out.right[i], expected) << i;
        EXPECT_EQ(out.left[i], 0.0f) << i;
    }
}

TEST_F(SignalPath, FullFeedbackNeverDecaysAndPilesUp) {
    setPlainEchoes(effect, 10, 1.0f);
    Stereo in(10010);
    std::fill(in.left.begin(), in.left.end(), 1.0f);
    const Stereo out = runThrough(effect, in);
    EXPECT_EQ(out.right[9], 0.0f);
    EXPECT_EQ(out.right[19], 1.0f);
    EXPECT_EQ(out.right[10009], 1000.0f);

    setPlainEchoes(effect, 10, 1.0f);
    const Stereo ringing = runThrough(effect, impulse(50001, 0.25f, 0.0f));
    EXPECT_EQ(ringing.right[50000], 0.25f);
}

TEST_F(SignalPath, MixOfZeroGivesTheInputExactly) {
    Dice dice(7);
    for (VstInt32 program = 0; program < 26; ++program) {
        effect.setProgram(program);
        effect.setParameter(kMix, 0.0f);
        const Stereo in = noise(9000, dice.bits());
        const Stereo out = runThrough(effect, in, 700);
        ASSERT_EQ(firstDifference(out.left.data(), in.left.data(), 9000), -1) << program;
        ASSERT_EQ(firstDifference(out.right.data(), in.right.data(), 9000), -1) << program;
    }
}

TEST_F(SignalPath, MixScalesTheEchoAndNotTheInput) {
    setPlainEchoes(effect, 20, 0.0f);
    effect.setParameter(kMix, 0.25f);
    const Stereo out = runThrough(effect, impulse(30, 1.0f, 1.0f));
    EXPECT_EQ(out.left[0], 1.0f);
    EXPECT_EQ(out.left[20], 0.25f);
    EXPECT_EQ(out.right[20], 0.25f);
}

TEST_F(SignalPath, BalanceFadesOneSideOfTheEchoes) {
    struct Row {
        float leftRight, left, right;
    };
    for (const Row& row : {Row{0.0f, 1.0f, 0.0f}, Row{0.25f, 1.0f, 0.5f}, Row{0.5f, 1.0f, 1.0f},
                           Row{0.75f, 0.5f, 1.0f}, Row{1.0f, 0.0f, 1.0f}}) {
        setPlainEchoes(effect, 20, 0.0f);
        effect.setParameter(kLeftRight, row.leftRight);
        const Stereo out = runThrough(effect, impulse(30, 1.0f, 1.0f));
        EXPECT_EQ(out.left[20], row.left) << row.leftRight;
        EXPECT_EQ(out.right[20], row.right) << row.leftRight;
        EXPECT_EQ(out.left[0], 1.0f);
        EXPECT_EQ(out.right[0], 1.0f);
    }
}

TEST_F(SignalPath, ShortestDelaysAreOneSampleLong) {
    for (const float value : {0.0f, delayOf(1), -0.25f}) {
        setPlainEchoes(effect, 100, 0.5f);
        effect.setParameter(kPanDepth, 1.0f);
        effect.setParameter(kDelay, value);
        const bool side = effect.panSide;
        Stereo in = impulse(6, 1.0f, 0.0f);
        const float expected[] = {0.0f, 1.0f, 0.5f, 0.25f, 0.125f, 0.0625f};
        for (std::size_t i = 0; i < 6; ++i) {
            float* inputs[2] = {&in.left[i], &in.right[i]};
            float left = 9.0f;
            float right = 9.0f;
            float* outputs[2] = {&left, &right};
            effect.processReplacing(inputs, outputs, 1);
            EXPECT_EQ(right, expected[i]) << value << ", " << i;
            EXPECT_EQ(effect.delayPosition, 0);
            EXPECT_EQ(effect.sweepPhase, 0.0);
            EXPECT_EQ(effect.sineIndex, 0);
            EXPECT_EQ(effect.panSide, side != (i % 2 == 0)) << "it flips on every sample";
        }
    }
}

TEST_F(SignalPath, EmptyBlockTouchesNoSampleAndStillLooksAtTheRate) {
    for (const VstInt32 frames : {0, -1, -1000}) {
        VstXSynth fresh(plainHost);
        fresh.delayPosition = 1763;
        float inLeft = 1.0f;
        float inRight = 2.0f;
        float outLeft = 3.0f;
        float outRight = 4.0f;
        float* inputs[2] = {&inLeft, &inRight};
        float* outputs[2] = {&outLeft, &outRight};
        fresh.processReplacing(inputs, outputs, frames);
        EXPECT_EQ(fresh.delayPosition, 1763);
        EXPECT_EQ(fresh.sweepPhase, 1763.0 / 3526.0);
        EXPECT_EQ(fresh.sineIndex, 89846);
        EXPECT_EQ(fresh.lastSampleRate, 44100);

        fresh.setSampleRate(96000.0f);
        const FourPoleFilter* const filter = fresh.highPassRight;
        fresh.processReplacing(inputs, outputs, frames);
        EXPECT_NE(fresh.highPassRight, filter);
        EXPECT_EQ(fresh.delayPosition, 0);
        EXPECT_EQ(fresh.sweepPhase, 0.0);
        EXPECT_EQ(fresh.sineIndex, 0);
        EXPECT_EQ(fresh.lastSampleRate, 96000);
        EXPECT_EQ(outLeft, 3.0f);
        EXPECT_EQ(outRight, 4.0f);
    }
}

TEST_F(SignalPath, SweepDipsOneSideAtATimeAndChangesSidesAtEachWrap) {
    constexpr std::size_t kLength = 1000;
    setPlainEchoes(effect, kLength, 0.0f);
    effect.setParameter(kPanDepth, 1.0f);
    Stereo in(5 * kLength);
    std::fill(in.left.begin(), in.left.end(), 1.0f);
    std::fill(in.right.begin(), in.right.end(), 1.0f);
    const Stereo out = runThrough(effect, in);
    // The first pass dips nothing that can be heard; later ones dip the left, the right, the left.
    for (std::size_t pass = 1; pass < 5; ++pass) {
        const Stereo& o = out;
        const bool leftDips = pass % 2 == 1;
        const auto& dipped = leftDips ? o.left : o.right;
        const auto& full = leftDips ? o.right : o.left;
        for (std::size_t i = 0; i + 1 < kLength; ++i) {
            const std::size_t at = pass * kLength + i;
            const double dip = std::sin(3.14159265358979 * static_cast<double>(i) / kLength);
            ASSERT_EQ(full[at], 2.0f) << pass << ", " << i;
            ASSERT_NEAR(dipped[at], 2.0 - dip, 0.01) << pass << ", " << i;
        }
        EXPECT_NEAR(dipped[pass * kLength + kLength / 2], 1.0, 1e-4);
    }
}

TEST_F(SignalPath, LastSampleOfAPassGoesToTheNewSideWithTheOldIndex) {
    constexpr std::size_t kLength = 8; // coarse enough for the last index to matter
    setPlainEchoes(effect, kLength, 0.0f);
    effect.setParameter(kPanDepth, 1.0f);
    Stereo in(4 * kLength);
    std::fill(in.left.begin(), in.left.end(), 1.0f);
    std::fill(in.right.begin(), in.right.end(), 1.0f);
    const Stereo out = runThrough(effect, in);
    const std::size_t last = 2 * kLength - 1; // of the pass that dips the left side
    const double dip = effect.sineTable[179692 * 7 / 8];
    EXPECT_EQ(out.left[last], 2.0f);
    EXPECT_EQ(out.right[last], static_cast<float>(1.0 - dip + 1.0));
    EXPECT_EQ(out.right[last - 1], 2.0f);
    EXPECT_EQ(out.left[last - 1], static_cast<float>(1.0 - effect.sineTable[179692 * 6 / 8] + 1.0));
}

TEST_F(SignalPath, IndexIntoTheSweepIsClamped) {
    float sample = 0.0f;
    float* channels[2] = {&sample, &sample};
    effect.delayPosition = 5000; // beyond the length, as after a shortening on another thread
    effect.processReplacing(channels, channels, 0);
    EXPECT_GT(effect.sweepPhase, 1.0);
    EXPECT_EQ(effect.sineIndex, 179691);
    effect.processReplacing(channels, channels, 1);
    EXPECT_EQ(effect.delayPosition, 0);
    EXPECT_EQ(effect.sineIndex, 179691);
}

TEST_F(SignalPath, StageInsideTheLoopColoursEveryRepeat) {
    // Behind the loop, what is fed back stays as it came.
    for (const bool inside : {true, false}) {
        setPlainEchoes(effect, 64, 1.0f);
        effect.setParameter(kLowPass, 1.0f);
        effect.setParameter(kLowPassType, inside ? 1.0f : 0.0f);
        runThrough(effect, impulse(64 * 3, 1.0f, 0.0f), 64);
        EXPECT_EQ(effect.delayBufferLeft[0] == 1.0f, !inside);
        EXPECT_EQ(effect.delayBufferLeft[10] == 0.0f, !inside);
    }
    for (const bool inside : {true, false}) {
        setPlainEchoes(effect, 64, 1.0f);
        effect.setParameter(kHighPass, 1.0f);
        effect.setParameter(kHighPassType, inside ? 1.0f : 0.0f);
        runThrough(effect, impulse(64 * 3, 1.0f, 0.0f), 64);
        EXPECT_EQ(effect.delayBufferLeft[0] == 1.0f, !inside);
    }
}

TEST_F(SignalPath, PairTicksOncePerSampleWhereverItStands) {
    for (const float lowInside : {0.0f, 1.0f}) {
        for (const float highInside : {0.0f, 1.0f}) {
            VstXSynth fresh(plainHost);
            ReferenceDelay model;
            const std::pair<VstInt32, float> writes[] = {{kLowPass, 0.5f},
                                                         {kHighPass, 0.5f},
                                                         {kLowPassType, lowInside},
                                                         {kHighPassType, highInside}};
            for (const auto& [index, value] : writes) {
                fresh.setParameter(index, value);
                model.setParameter(index, value);
            }
            Stereo in = noise(8000);
            Stereo expected = in;
            runThrough(fresh, in, 8000);
            float* channels[2] = {expected.left.data(), expected.right.data()};
            model.process(channels, channels, 8000);
            EXPECT_EQ(stateDifference(fresh, model), "") << lowInside << highInside;
        }
    }
}

TEST_F(SignalPath, PairThatIsOffStandsStill) {
    runThrough(effect, noise(8000));
    const FourPoleFilter low = *effect.lowPassLeft;
    const FourPoleFilter high = *effect.highPassRight;
    effect.setParameter(kLowPass, 0.0f);
    effect.setParameter(kHighPass, -0.5f);
    runThrough(effect, noise(8000));
    EXPECT_EQ(firstDifference(&low.lowCoefficient, &effect.lowPassLeft->lowCoefficient, 13), -1);
    EXPECT_EQ(firstDifference(&high.lowCoefficient, &effect.highPassRight->lowCoefficient, 13), -1);
}

TEST_F(SignalPath, MovingAPairKeepsItsState) {
    runThrough(effect, noise(8000));
    const FourPoleFilter before = *effect.lowPassLeft;
    effect.setParameter(kLowPassType, 0.0f);
    effect.setParameter(kHighPassType, 1.0f);
    EXPECT_EQ(firstDifference(&before.lowCoefficient, &effect.lowPassLeft->lowCoefficient, 16), -1);
}

TEST_F(SignalPath, BlocksOfAnySizeGiveTheSameSamples) {
    for (const VstInt32 program : {1, 9, 14, 25}) {
        const Stereo in = noise(30000, static_cast<std::uint64_t>(program));
        VstXSynth whole(plainHost);
        whole.setProgram(program);
        const Stereo expected = runThrough(whole, in, 30000);
        for (const std::size_t block : {std::size_t{1}, std::size_t{3}, std::size_t{64},
                                        std::size_t{441}, std::size_t{8192}}) {
            VstXSynth cut(plainHost);
            cut.setProgram(program);
            const Stereo out = runThrough(cut, in, block);
            ASSERT_EQ(firstDifference(out.left.data(), expected.left.data(), 30000), -1) << block;
            ASSERT_EQ(firstDifference(out.right.data(), expected.right.data(), 30000), -1) << block;
        }
    }
}

TEST_F(SignalPath, FullLengthDelayAtTheHighestRateUsesTheWholeLine) {
    ReferenceDelay model;
    effect.setSampleRate(192000.0f);
    model.setSampleRate(192000.0f);
    const std::pair<VstInt32, float> writes[] = {
        {kDelay, 1.0f}, {kFeedBack, 0.5f}, {kPanDepth, 0.75f}, {kHighPassType, 1.0f}};
    for (const auto& [index, value] : writes) {
        effect.setParameter(index, value);
        model.setParameter(index, value);
    }
    constexpr VstInt32 kFrames = 8192;
    for (std::uint64_t block = 0; block < 75; ++block) { // three times over the line
        const Stereo in = noise(kFrames, block);
        const Stereo out = runThrough(effect, in, kFrames);
        Stereo expected = in;
        float* channels[2] = {expected.left.data(), expected.right.data()};
        model.process(channels, channels, kFrames);
        ASSERT_EQ(firstDifference(out.left.data(), expected.left.data(), kFrames), -1) << block;
        ASSERT_EQ(firstDifference(out.right.data(), expected.right.data(), kFrames), -1) << block;
    }
    EXPECT_EQ(effect.delayLength, 191999);
    EXPECT_EQ(stateDifference(effect, model), "");
}

TEST_F(SignalPath, DelayAboveOneSecondWorksAsFarAsTheLinesReach) {
    setPlainEchoes(effect, 100, 0.0f);
    effect.setParameter(kDelay, 4.0f);
    ASSERT_EQ(effect.delayLength, 176396);
    const Stereo out = runThrough(effect, impulse(180000, 1.0f, 0.0f), 8192);
    EXPECT_EQ(out.right[176396], 1.0f);
    EXPECT_EQ(out.right[176395], 0.0f);
    EXPECT_EQ(effect.delayPosition, 180000 - 176396);
}

TEST_F(SignalPath, InfiniteAndHugeInputStaysInItsOwnLine) {
    setPlainEchoes(effect, 10, 0.5f);
    Stereo in(40);
    in.left[0] = std::numeric_limits<float>::infinity();
    in.left[3] = std::nanf("");
    const Stereo out = runThrough(effect, in);
    EXPECT_TRUE(std::isinf(out.right[10]));
    EXPECT_TRUE(std::isnan(out.right[13]));
    EXPECT_TRUE(std::isinf(out.right[20]));
    for (std::size_t i = 4; i < 40; ++i) {
        EXPECT_EQ(out.left[i], 0.0f) << "the lines never exchange signal";
    }
}

TEST_F(SignalPath, DenormalSamplesPassUnchanged) {
    setPlainEchoes(effect, 10, 0.0f);
    const float tiny = floatOf(1u);
    const Stereo out = runThrough(effect, impulse(20, tiny, 0.0f));
    EXPECT_EQ(bitsOf(out.left[0]), 1u);
    EXPECT_EQ(bitsOf(out.right[10]), 1u);
}

// Far beyond the lines' capacity, but within reach of no block here.
TEST_F(SignalPath, DelaysBeyondTheLinesSweepAsTheModelDoes) {
    for (const float delay : {4.4f, 1e5f, 1e6f, 1e10f}) {
        VstXSynth longDelay(plainHost);
        ReferenceDelay model;
        longDelay.setProgram(14); // swept
        model.setProgram(14);
        longDelay.setParameter(kDelay, delay);
        model.setParameter(kDelay, delay);
        Stereo in(9000);
        fillSignal(Signal::kNoise, 5, in.left.data(), in.left.size());
        fillSignal(Signal::kNoise, 6, in.right.data(), in.right.size());
        const Stereo out = runThrough(longDelay, in);
        float* channels[2] = {in.left.data(), in.right.data()};
        model.process(channels, channels, 9000);
        EXPECT_EQ(firstDifference(out.left.data(), in.left.data(), in.left.size()), -1) << delay;
        EXPECT_EQ(firstDifference(out.right.data(), in.right.data(), in.right.size()), -1) << delay;
        EXPECT_EQ(stateDifference(longDelay, model), "") << delay;
    }
}

TEST_F(SignalPath, SweepStaysInItsTableAtAPositionBehindThePass) {
    float nothing = 0.0f;
    float* channels[2] = {&nothing, &nothing};
    for (const std::int64_t beyond : {0, 1, 5000}) {
        effect.delayPosition = effect.delayLength + beyond;
        effect.processReplacing(channels, channels, 0);
        EXPECT_EQ(effect.sineIndex, 179691) << beyond;
    }
    effect.delayPosition = -5;
    effect.processReplacing(channels, channels, 0);
    EXPECT_EQ(effect.sineIndex, 0);
}

TEST_F(SignalPath, BalanceThatIsNoNumberStandsForTheCentre) {
    ReferenceDelay model;
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    effect.setParameter(kLeftRight, notANumber);
    model.setParameter(kLeftRight, notANumber);
    VstXSynth centred(plainHost);
    centred.setParameter(kLeftRight, 0.5f);
    Stereo in(9000);
    fillSignal(Signal::kNoise, 7, in.left.data(), in.left.size());
    fillSignal(Signal::kNoise, 8, in.right.data(), in.right.size());
    for (const std::size_t blockFrames : {std::size_t{512}, std::size_t{1}}) {
        const Stereo out = runThrough(effect, in, blockFrames);
        const Stereo expected = runThrough(centred, in, blockFrames);
        EXPECT_EQ(out.left, expected.left) << blockFrames;
        EXPECT_EQ(out.right, expected.right) << blockFrames;
        Stereo modelled = in;
        float* channels[2] = {modelled.left.data(), modelled.right.data()};
        model.process(channels, channels, 9000);
        EXPECT_EQ(out.left, modelled.left) << blockFrames;
        EXPECT_EQ(out.right, modelled.right) << blockFrames;
    }
}
