#include "effect/VstXSynth.h"

#include "tests/effect/EffectState.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/ReferenceText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
const float kNotANumber = std::nanf("");
constexpr VstInt32 kLowest = std::numeric_limits<VstInt32>::min();
constexpr VstInt32 kHighest = std::numeric_limits<VstInt32>::max();

class Parameters : public testing::Test {
protected:
    // All bytes of a field of 24 after `ask`.
    template <typename Ask>
    std::string field(Ask ask) {
        std::string bytes(24, '#');
        ask(bytes.data());
        return bytes;
    }
    std::string nameOf(VstInt32 index) {
        return field([&](char* text) { effect.getParameterName(index, text); });
    }
    std::string labelOf(VstInt32 index) {
        return field([&](char* text) { effect.getParameterLabel(index, text); });
    }
    std::string displayOf(VstInt32 index) {
        return field([&](char* text) { effect.getParameterDisplay(index, text); });
    }
    DelayProgram& record() { return effect.programs[effect.getProgram()]; }

    void fillLines(float value) {
        std::fill_n(effect.delayBufferLeft, VstXSynth::kDelayCapacity, value);
        std::fill_n(effect.delayBufferRight, VstXSynth::kDelayCapacity, value);
    }
    bool linesHold(float value) {
        const auto holds = [value](float sample) { return sample == value; };
        const auto size = VstXSynth::kDelayCapacity;
        return std::all_of(effect.delayBufferLeft, effect.delayBufferLeft + size, holds) &&
               std::all_of(effect.delayBufferRight, effect.delayBufferRight + size, holds);
    }

    VstXSynth effect{plainHost};
};

std::string written(const std::string& text) {
    std::string bytes = text;
    bytes.push_back('\0');
    return bytes + std::string(24 - bytes.size(), '#');
}

// A display is zero-filled to its limit of eight.
std::string shown(const std::string& text) {
    const std::string head = inField(text, 8);
    return head + std::string(24 - head.size(), '#');
}

const std::string kUntouched(24, '#');

} // namespace

TEST_F(Parameters, NamesAndLabelsAreWrittenInFull) {
    const std::pair<const char*, const char*> rows[9] = {{"Delay", "samples"},
                                                         {"FeedBack", "amount"},
                                                         {"lowPass", "%"},
                                                         {"highPass", "%"},
                                                         {"lowPass Type", "on/off"},
                                                         {"highPass Type", "on/off"},
                                                         {"Left/Right", "left/right"},
                                                         {"Pan Depth", "%"},
                                                         {"MIX", "%"}};
    for (VstInt32 index = 0; index < 9; ++index) {
        EXPECT_EQ(nameOf(index), written(rows[index].first));
        EXPECT_EQ(labelOf(index), written(rows[index].second));
    }
    EXPECT_EQ(kNumParams, 9);
}

TEST_F(Parameters, UnknownIndicesLeaveTheTextsAlone) {
    for (const VstInt32 index : {-1, 9, 10, kLowest, kHighest}) {
        EXPECT_EQ(nameOf(index), kUntouched) << index;
        EXPECT_EQ(labelOf(index), kUntouched) << index;
        EXPECT_EQ(displayOf(index), kUntouched) << index;
        EXPECT_EQ(effect.getParameter(index), 0.0f) << index;
    }
}

TEST_F(Parameters, UnknownIndicesStoreNothing) {
    for (const VstInt32 index : {-1, 9, 10, kLowest, kHighest}) {
        effect.setParameter(index, 0.125f);
        EXPECT_EQ(stateDifference(effect, ReferenceDelay()), "") << index;
    }
}

TEST_F(Parameters, WritesReachTheWorkingFieldAndTheCurrentRecord) {
    effect.setProgram(3);
    effect.setParameter(kDelay, 0.25f);
    EXPECT_EQ(effect.delayTime, 0.25f);
    EXPECT_EQ(record().delayTime, 0.25f);
    effect.setParameter(kFeedBack, 0.75f);
    EXPECT_EQ(effect.feedBack, 0.75f);
    EXPECT_EQ(record().feedBack, 0.75f);
    effect.setParameter(kLowPass, 0.1f);
    EXPECT_EQ(effect.lowPass, static_cast<double>(0.1f));
    EXPECT_EQ(record().lowPass, static_cast<double>(0.1f));
    effect.setParameter(kHighPass, 0.2f);
    EXPECT_EQ(effect.highPass, static_cast<double>(0.2f));
    EXPECT_EQ(record().highPass, static_cast<double>(0.2f));
    effect.setParameter(kLowPassType, 0.0f);
    EXPECT_FALSE(effect.lowPassType);
    EXPECT_FALSE(record().lowPassType);
    effect.setParameter(kHighPassType, 0.0f);
    EXPECT_FALSE(effect.highPassType);
    EXPECT_FALSE(record().highPassType);
    effect.setParameter(kLeftRight, 0.3f);
    EXPECT_EQ(effect.leftRight, static_cast<double>(0.3f));
    EXPECT_EQ(record().leftRight, static_cast<double>(0.3f));
    effect.setParameter(kPanDepth, 0.6f);
    EXPECT_EQ(effect.panDepth, static_cast<double>(0.6f));
    EXPECT_EQ(record().panDepth, static_cast<double>(0.6f));
    effect.setParameter(kMix, 0.7f);
    EXPECT_EQ(effect.mix, static_cast<double>(0.7f));
    EXPECT_EQ(record().mix, static_cast<double>(0.7f));
}

TEST_F(Parameters, DoubleFieldHoldsTheFloatThatCameIn) {
    effect.setParameter(kLowPass, 0.374f);
    EXPECT_EQ(effect.lowPass, 0.37400001287460327);
    EXPECT_NE(effect.lowPass, 0.374);
}

TEST_F(Parameters, EachWriteChangesWhatTheModelChanges) {
    static constexpr float kValues[] = {0.0f, -0.0f,  1.0f,  0.5f,   0.3f,      -1.0f,
                                        2.5f, 1e-45f, 1e30f, -1e30f, kInfinity, 0.999999f};
    for (VstInt32 index = 1; index < 9; ++index) {
        for (const float value : kValues) {
            VstXSynth fresh(plainHost);
            ReferenceDelay model;
            fresh.setParameter(index, value);
            model.setParameter(index, value);
            ASSERT_EQ(stateDifference(fresh, model), "") << index << " = " << value;
            ASSERT_TRUE(sameNumber(fresh.getParameter(index), model.getParameter(index)));
        }
    }
}

TEST_F(Parameters, RandomWritesInAllProgramsKeepToTheModel) {
    const std::uint64_t seed = randomSeed(0xBA);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    ReferenceDelay model;
    for (int i = 0; i < 1500; ++i) {
        if (dice.oneIn(10)) {
            const auto program = static_cast<VstInt32>(dice.between(-2, 27));
            effect.setProgram(program);
            model.setProgram(program);
        }
        const auto index = static_cast<VstInt32>(dice.between(-1, 9));
        const float value =
            dice.oneIn(3) ? std::round(dice.within(0.0f, 1.0f)) : dice.within(-0.1f, 1.2f);
        effect.setParameter(index, value);
        model.setParameter(index, value);
        ASSERT_EQ(stateDifference(effect, model), "") << i;
        for (VstInt32 any = -1; any <= 9; ++any) {
            ASSERT_EQ(effect.getParameter(any), model.getParameter(any)) << i << ", " << any;
        }
    }
}

TEST_F(Parameters, LowPassFadesTheUpperBandsOfItsPair) {
    for (const auto& [value, gain] :
         {std::pair<float, double>{1.0f, 0.0}, {0.0f, 1.0}, {0.25f, 0.75}, {2.0f, -1.0}}) {
        effect.lowPassLeft->lowGain = effect.lowPassRight->lowGain = 0.625;
        effect.setParameter(kLowPass, value);
        for (const FourPoleFilter* filter : {effect.lowPassLeft, effect.lowPassRight}) {
            EXPECT_EQ(filter->midGain, gain);
            EXPECT_EQ(filter->highGain, gain);
            EXPECT_EQ(filter->lowGain, 0.625) << "no parameter touches it";
        }
    }
}

TEST_F(Parameters, HighPassFadesTheLowBandOfItsPair) {
    for (const auto& [value, gain] :
         {std::pair<float, double>{1.0f, 0.0}, {0.0f, 1.0}, {0.25f, 0.75}, {-1.0f, 2.0}}) {
        for (FourPoleFilter* filter : {effect.highPassLeft, effect.highPassRight}) {
            filter->midGain = 0.625;
            filter->highGain = 0.375;
        }
        effect.setParameter(kHighPass, value);
        for (const FourPoleFilter* filter : {effect.highPassLeft, effect.highPassRight}) {
            EXPECT_EQ(filter->lowGain, gain);
            EXPECT_EQ(filter->midGain, 0.625) << "no parameter touches it";
            EXPECT_EQ(filter->highGain, 0.375) << "no parameter touches it";
        }
    }
}

TEST_F(Parameters, GainsAreWorkedOutInDoublePrecision) {
    effect.setParameter(kLowPass, 0.1f);
    EXPECT_EQ(effect.lowPassLeft->midGain, 1.0 - static_cast<double>(0.1f));
    EXPECT_NE(effect.lowPassLeft->midGain, static_cast<double>(1.0f - 0.1f));
    effect.setParameter(kHighPass, 0.1f);
    EXPECT_EQ(effect.highPassRight->lowGain, 1.0 - static_cast<double>(0.1f));
}

TEST_F(Parameters, HighPassWriteMovesLowPassType) {
    effect.setParameter(kLowPassType, 0.0f);
    effect.setParameter(kHighPass, 0.5f);
    EXPECT_TRUE(effect.lowPassType);
    EXPECT_TRUE(record().lowPassType);
    EXPECT_EQ(effect.getParameter(kLowPassType), 1.0f);
    effect.setParameter(kHighPass, 0.0f);
    EXPECT_FALSE(effect.lowPassType);
    EXPECT_FALSE(record().lowPassType);
    EXPECT_EQ(effect.getParameter(kLowPassType), 0.0f);
    effect.setParameter(kHighPass, -0.5f);
    EXPECT_TRUE(effect.lowPassType);
    effect.setParameter(kHighPass, -0.0f);
    EXPECT_FALSE(effect.lowPassType);
}

TEST_F(Parameters, HighPassWriteLeavesHighPassTypeAlone) {
    effect.setParameter(kHighPassType, 1.0f);
    effect.setParameter(kHighPass, 0.0f);
    EXPECT_TRUE(effect.highPassType);
    effect.setParameter(kHighPassType, 0.0f);
    effect.setParameter(kHighPass, 0.5f);
    EXPECT_FALSE(effect.highPassType);
}

TEST_F(Parameters, LastOfTwoCoupledWritesDecides) {
    effect.setParameter(kLowPassType, 0.0f);
    effect.setParameter(kHighPass, 0.25f);
    EXPECT_TRUE(effect.lowPassType);
    effect.setParameter(kHighPass, 0.25f);
    effect.setParameter(kLowPassType, 0.0f);
    EXPECT_FALSE(effect.lowPassType);
    EXPECT_EQ(effect.highPass, 0.25);
}

TEST_F(Parameters, SwitchesAreOnForAnythingButZero) {
    for (const VstInt32 index : {VstInt32{kLowPassType}, VstInt32{kHighPassType}}) {
        for (const float value : {1.0f, 0.5f, -1.0f, 1e-45f, kInfinity, -kInfinity}) {
            effect.setParameter(index, 0.0f);
            effect.setParameter(index, value);
            EXPECT_EQ(effect.getParameter(index), 1.0f) << value;
        }
        for (const float value : {0.0f, -0.0f, kNotANumber, -kNotANumber}) {
            effect.setParameter(index, 1.0f);
            effect.setParameter(index, value);
            EXPECT_EQ(effect.getParameter(index), 0.0f) << value;
        }
    }
}

TEST_F(Parameters, DelayIsTheRateLessOneTimesTheValue) {
    const std::pair<float, std::int64_t> rows[] = {
        {1.0f, 44099}, {0.0f, 0},      {-0.0f, 0},           {0.5f, 22049},
        {2.0f, 88198}, {4.0f, 176396}, {-1.0f, -44099},      {-0.5f, -22049},
        {1e-9f, 0},    {-1e-5f, 0},    {0.0799773261f, 3526}};
    for (const auto& [value, length] : rows) {
        effect.setParameter(kDelay, value);
        EXPECT_EQ(effect.delayLength, length) << value;
        EXPECT_EQ(effect.getParameter(kDelay), value);
    }
}

TEST_F(Parameters, DelayIsWorkedOutInSinglePrecision) {
    const std::uint64_t seed = randomSeed(0xBB);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    int differing = 0;
    for (int i = 0; i < 600; ++i) {
        const float rate = dice.within(8000.0f, 192000.0f);
        const float value = dice.within(0.0f, 1.0f);
        effect.setSampleRate(rate);
        effect.setParameter(kDelay, value);
        const float longest = rate + -1.0f;
        const float length = longest * value;
        ASSERT_EQ(effect.delayLength, static_cast<std::int64_t>(length)) << rate << ", " << value;
        const double wide = (static_cast<double>(rate) - 1.0) * static_cast<double>(value);
        differing += static_cast<std::int64_t>(wide) != effect.delayLength ? 1 : 0;
    }
    EXPECT_GT(differing, 0) << "the values can't tell the precisions apart";
}

TEST_F(Parameters, DelayAtOneHundredAndNinetyTwoKilohertzFitsTheLines) {
    effect.setSampleRate(192000.0f);
    effect.setParameter(kDelay, 1.0f);
    EXPECT_EQ(effect.delayLength, 191999);
}

TEST_F(Parameters, DelayOutOfEveryRangeIsTheLowestLength) {
    for (const float value : {kNotANumber, kInfinity, -kInfinity, 1e30f, -1e30f}) {
        effect.setParameter(kDelay, value);
        EXPECT_EQ(effect.delayLength, std::numeric_limits<std::int64_t>::min()) << value;
        EXPECT_EQ(effect.delayPosition, 0);
    }
}

TEST_F(Parameters, EachWriteOfTheDelayClearsBothLinesAndRewinds) {
    for (const float value : {0.5f, 0.5f, 0.0f, 1.0f, -1.0f}) {
        fillLines(0.25f);
        effect.delayPosition = 17;
        effect.panSide = true;
        effect.sweepPhase = 0.75;
        effect.sineIndex = 99;
        effect.setParameter(kDelay, value);
        EXPECT_TRUE(linesHold(0.0f)) << value;
        EXPECT_EQ(effect.delayPosition, 0) << value;
        EXPECT_TRUE(effect.panSide);
        EXPECT_EQ(effect.sweepPhase, 0.75);
        EXPECT_EQ(effect.sineIndex, 99);
    }
}

TEST_F(Parameters, OtherWritesLeaveTheLinesAlone) {
    fillLines(0.25f);
    effect.delayPosition = 17;
    for (VstInt32 index = 1; index <= 9; ++index) {
        effect.setParameter(index, 0.5f);
    }
    EXPECT_TRUE(linesHold(0.25f));
    EXPECT_EQ(effect.delayPosition, 17);
}

TEST_F(Parameters, DelayWriteKeepsTheFiltersInnerState) {
    for (FourPoleFilter* filter : {effect.lowPassLeft, effect.highPassRight}) {
        filter->lowStages[2] = 0.5;
        filter->inputHistory[1] = 0.25;
    }
    effect.setParameter(kDelay, 0.5f);
    EXPECT_EQ(effect.lowPassLeft->lowStages[2], 0.5);
    EXPECT_EQ(effect.highPassRight->inputHistory[1], 0.25);
}

TEST_F(Parameters, PlainMemberSetsTheDelayAsTheParameterDoes) {
    fillLines(0.25f);
    effect.delayPosition = 17;
    effect.setDelay(0.75f);
    ReferenceDelay model;
    model.setParameter(0, 0.75f);
    EXPECT_EQ(stateDifference(effect, model), "");
}

TEST_F(Parameters, LengthDoesNotFollowTheRateByItself) {
    effect.setParameter(kDelay, 1.0f);
    effect.setSampleRate(48000.0f);
    EXPECT_EQ(effect.delayLength, 44099);
    effect.setParameter(kDelay, 1.0f);
    EXPECT_EQ(effect.delayLength, 47999);
}

TEST_F(Parameters, LengthTakesTheRateThroughTheVirtualOperation) {
    struct Elsewhere : VstXSynth {
        Elsewhere() : VstXSynth(plainHost) {}
        float getSampleRate() override { return 1001.0f; }
    };
    Elsewhere elsewhere;
    elsewhere.setParameter(kDelay, 0.5f);
    EXPECT_EQ(elsewhere.delayLength, 500);
}

TEST_F(Parameters, DisplayShowsTheDelayInSamples) {
    effect.setParameter(kDelay, 1.0f);
    EXPECT_EQ(displayOf(kDelay), shown("44099"));
    effect.setParameter(kDelay, 0.0f);
    EXPECT_EQ(displayOf(kDelay), shown(""));
    effect.setParameter(kDelay, -1.0f);
    EXPECT_EQ(displayOf(kDelay), shown("-44099"));
    effect.delayLength = (std::int64_t{1} << 32) + 12;
    EXPECT_EQ(displayOf(kDelay), shown("12")) << "cut to 32 bits";
    effect.delayLength = 100000000;
    EXPECT_EQ(displayOf(kDelay), shown("Huge!"));
}

TEST_F(Parameters, DisplayShowsSwitchesAsOneOrNothing) {
    for (const VstInt32 index : {VstInt32{kLowPassType}, VstInt32{kHighPassType}}) {
        effect.setParameter(index, 1.0f);
        EXPECT_EQ(displayOf(index), shown("1"));
        effect.setParameter(index, 0.0f);
        EXPECT_EQ(displayOf(index), shown(""));
    }
}

TEST_F(Parameters, DisplayShowsPlainValuesWithoutAFactorOfAHundred) {
    for (const VstInt32 index : {VstInt32{kFeedBack}, VstInt32{kLowPass}, VstInt32{kHighPass},
                                 VstInt32{kLeftRight}, VstInt32{kPanDepth}, VstInt32{kMix}}) {
        for (const float value : {1.0f, 0.5f, 0.0f, 0.7f, -0.25f, 0.374f, 123456.789f}) {
            effect.setParameter(index, value);
            EXPECT_EQ(displayOf(index), shown(referenceFloatText(value).value())) << index;
        }
        effect.setParameter(index, 1e30f);
        EXPECT_EQ(displayOf(index), kUntouched) << index;
        effect.setParameter(index, kNotANumber);
        EXPECT_EQ(displayOf(index), kUntouched) << index;
    }
    effect.setParameter(kMix, 1.0f);
    EXPECT_EQ(displayOf(kMix), shown("1.000000"));
    effect.setParameter(kLowPass, 0.5f);
    EXPECT_EQ(displayOf(kLowPass), shown("0.500000"));
}

TEST_F(Parameters, DisplayUsesTheVirtualConversions) {
    struct Conversions : VstXSynth {
        Conversions() : VstXSynth(plainHost) {}
        void float2string(float value, char*, VstInt32 maxLen) override {
            asked.push_back("float " + std::to_string(value) + " " + std::to_string(maxLen));
        }
        void int2string(VstInt32 value, char*, VstInt32 maxLen) override {
            asked.push_back("int " + std::to_string(value) + " " + std::to_string(maxLen));
        }
        std::vector<std::string> asked;
    };
    Conversions conversions;
    char text[32];
    for (VstInt32 index = -1; index <= 9; ++index) {
        conversions.getParameterDisplay(index, text);
    }
    EXPECT_EQ(conversions.asked, (std::vector<std::string>{
                                     "int 3526 8", "float 0.215000 8", "float 0.374000 8",
                                     "float 0.655999 8", "int 1 8", "int 0 8", "float 0.500000 8",
                                     "float 0.000000 8", "float 1.000000 8"}));
}
