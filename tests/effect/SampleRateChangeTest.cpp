// The change of the sample rate, as the first block at the new rate finds it.
#include "effect/VstXSynth.h"

#include "tests/effect/EffectState.h"
#include "tests/effect/SynthRun.h"
#include "tests/support/Bits.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/ReferenceDelay.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

class SampleRateChange : public testing::Test {
protected:
    void processOne() {
        float samples[2] = {};
        float* channels[2] = {samples, samples + 1};
        effect.processReplacing(channels, channels, 1);
    }
    std::vector<FourPoleFilter*> filters() const {
        return {effect.lowPassLeft, effect.lowPassRight, effect.highPassLeft, effect.highPassRight};
    }

    VstXSynth effect{plainHost};
};

} // namespace

TEST_F(SampleRateChange, SameRateKeepsTheFilters) {
    const auto before = filters();
    effect.setSampleRate(44100.0f);
    processOne();
    processOne();
    EXPECT_EQ(filters(), before);
}

TEST_F(SampleRateChange, NewRateMakesFourNewFiltersOnce) {
    const auto before = filters();
    effect.setSampleRate(48000.0f);
    processOne();
    const auto after = filters();
    std::set<FourPoleFilter*> all(before.begin(), before.end());
    all.insert(after.begin(), after.end());
    EXPECT_EQ(all.size(), 8u);
    processOne();
    EXPECT_EQ(filters(), after);
}

TEST_F(SampleRateChange, FormerFiltersStayAllocated) {
    FourPoleFilter* const former = effect.lowPassLeft;
    effect.setSampleRate(48000.0f);
    processOne();
    tick(former, 0.5); // AddressSanitizer watches
    EXPECT_EQ(former->inputHistory[0], 0.5);
}

TEST_F(SampleRateChange, EveryRateGivesWhatTheModelGives) {
    ReferenceDelay model;
    for (const float rate : {48000.0f, 88200.0f, 96000.0f, 192000.0f, 22050.0f, 8000.0f, 44100.5f,
                             44100.0f, 1.0f, 0.5f, 0.0f, -44100.0f, 191999.9f}) {
        SCOPED_TRACE(rate);
        effect.setSampleRate(rate);
        model.setSampleRate(rate);
        float own[2] = {0.5f, 0.25f};
        float expected[2] = {0.5f, 0.25f};
        float* ownChannels[2] = {own, own + 1};
        float* expectedChannels[2] = {expected, expected + 1};
        effect.processReplacing(ownChannels, ownChannels, 1);
        model.process(expectedChannels, expectedChannels, 1);
        EXPECT_EQ(stateDifference(effect, model), "");
        EXPECT_TRUE(sameNumber(own[0], expected[0]));
        EXPECT_TRUE(sameNumber(own[1], expected[1]));
    }
}

TEST_F(SampleRateChange, LinesAreClearedAndRewound) {
    std::fill_n(effect.delayBufferLeft, VstXSynth::kDelayCapacity, 1.0f);
    std::fill_n(effect.delayBufferRight, VstXSynth::kDelayCapacity, 1.0f);
    effect.delayPosition = 100;
    effect.panSide = true;
    effect.setSampleRate(96000.0f);
    float sample = 0.0f;
    float* channels[2] = {&sample, &sample};
    effect.processReplacing(channels, channels, 0);
    for (std::int64_t i = 0; i < VstXSynth::kDelayCapacity; ++i) {
        ASSERT_EQ(effect.delayBufferLeft[i], 0.0f) << i;
        ASSERT_EQ(effect.delayBufferRight[i], 0.0f) << i;
    }
    EXPECT_EQ(effect.delayPosition, 0);
    EXPECT_TRUE(effect.panSide) << "the side is kept";
    EXPECT_EQ(effect.delayLength, static_cast<std::int64_t>(95999.0f * 0.0799773261f));
}

TEST_F(SampleRateChange, KnobGainsGoIntoTheNewFilters) {
    effect.setParameter(kLowPass, 0.25f);
    effect.setParameter(kHighPass, 0.75f);
    effect.setSampleRate(48000.0f);
    processOne();
    for (const FourPoleFilter* filter : {effect.lowPassLeft, effect.lowPassRight}) {
        EXPECT_EQ(filter->lowGain, 1.0);
        EXPECT_EQ(filter->midGain, 0.75);
        EXPECT_EQ(filter->highGain, 0.75);
    }
    for (const FourPoleFilter* filter : {effect.highPassLeft, effect.highPassRight}) {
        EXPECT_EQ(filter->lowGain, 0.25);
        EXPECT_EQ(filter->midGain, 1.0);
        EXPECT_EQ(filter->highGain, 1.0);
    }
}

TEST_F(SampleRateChange, LowPassMovesToWhereTheHighPassSends) {
    effect.setParameter(kHighPass, 0.5f);
    effect.setParameter(kLowPassType, 0.0f);
    effect.setSampleRate(48000.0f);
    processOne();
    EXPECT_TRUE(effect.lowPassType);
    EXPECT_TRUE(effect.programs[0].lowPassType);

    effect.setParameter(kHighPass, 0.0f);
    effect.setParameter(kLowPassType, 1.0f);
    effect.setSampleRate(96000.0f);
    processOne();
    EXPECT_FALSE(effect.lowPassType);
    EXPECT_FALSE(effect.programs[0].lowPassType);
}

TEST_F(SampleRateChange, DelayTimeGoesIntoTheCurrentRecord) {
    effect.setProgram(5);
    effect.programs[5].delayTime = 0.75f; // a record that has fallen behind the working field
    effect.setSampleRate(48000.0f);
    processOne();
    EXPECT_EQ(effect.programs[5].delayTime, 0.249977f);
}

TEST_F(SampleRateChange, DepthsArePassedOnInSinglePrecision) {
    struct Watching : VstXSynth {
        Watching() : VstXSynth(plainHost) {}
        void setParameter(VstInt32 index, float value) override {
            writes.emplace_back(index, value);
            VstXSynth::setParameter(index, value);
        }
        std::vector<std::pair<VstInt32, float>> writes;
    };
    Watching watching;
    watching.lowPass = 0.1;
    watching.highPass = 0.2;
    watching.setSampleRate(48000.0f);
    float sample = 0.0f;
    float* channels[2] = {&sample, &sample};
    watching.processReplacing(channels, channels, 0);
    EXPECT_EQ(watching.writes, (std::vector<std::pair<VstInt32, float>>{{2, 0.1f}, {3, 0.2f}}));
    EXPECT_EQ(watching.lowPass, static_cast<double>(0.1f));
}

TEST_F(SampleRateChange, FractionalRateStartsOverAtEveryBlock) {
    effect.setSampleRate(44100.5f);
    std::set<FourPoleFilter*> seen;
    for (int block = 0; block < 5; ++block) {
        effect.delayBufferLeft[1000] = 1.0f;
        processOne();
        EXPECT_EQ(effect.delayBufferLeft[1000], 0.0f);
        EXPECT_EQ(effect.delayPosition, 1);
        EXPECT_EQ(effect.lastSampleRate, 44100);
        seen.insert(effect.lowPassLeft);
    }
    EXPECT_EQ(seen.size(), 5u);
}

TEST_F(SampleRateChange, RateThatIsNoNumberStartsOverAtEveryBlock) {
    effect.setSampleRate(std::nanf(""));
    processOne();
    FourPoleFilter* const first = effect.lowPassLeft;
    processOne();
    EXPECT_NE(effect.lowPassLeft, first);
    EXPECT_EQ(effect.lastSampleRate, std::numeric_limits<std::int64_t>::min());
}

TEST_F(SampleRateChange, RateIsTakenThroughTheVirtualOperation) {
    struct Elsewhere : VstXSynth {
        Elsewhere() : VstXSynth(plainHost) {}
        float getSampleRate() override { return 96000.0f; }
    };
    Elsewhere elsewhere;
    float sample = 0.0f;
    float* channels[2] = {&sample, &sample};
    elsewhere.processReplacing(channels, channels, 0);
    EXPECT_EQ(elsewhere.lastSampleRate, 96000);
    FourPoleFilter expected;
    init(&expected, 600, 1800, 96000);
    EXPECT_EQ(elsewhere.lowPassLeft->lowCoefficient, expected.lowCoefficient);
}

TEST_F(SampleRateChange, OldContentIsNotCarriedOver) {
    setPlainEchoes(effect, 100, 0.5f);
    Stereo in(100);
    std::fill(in.left.begin(), in.left.end(), 1.0f);
    runThrough(effect, in);
    effect.setSampleRate(48000.0f);
    const Stereo out = runThrough(effect, Stereo(1000));
    for (const float sample : out.right) {
        ASSERT_EQ(sample, 0.0f);
    }
}

// Filters take the rate in 32 bits; the delay takes it whole.
TEST_F(SampleRateChange, RatesBeyond32BitsAreCutAsTheModelCutsThem) {
    for (const float rate : {2147483520.0f, 2147483648.0f, 3e9f, 4294967296.0f, 1e10f, 1e20f}) {
        VstXSynth fast(plainHost);
        ReferenceDelay fastModel;
        fast.setSampleRate(rate);
        fastModel.setSampleRate(rate);
        float samples[2] = {};
        float* channels[2] = {&samples[0], &samples[1]};
        fast.processReplacing(channels, channels, 0);
        fastModel.process(channels, channels, 0);
        EXPECT_EQ(stateDifference(fast, fastModel), "") << rate;
    }
}
