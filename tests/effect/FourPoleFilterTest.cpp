#include "effect/FourPoleFilter.h"

#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The first of the sixteen doubles in which the two differ, or -1.
std::ptrdiff_t difference(const FourPoleFilter& filter, const ReferenceFilter& model) {
    double own[16];
    double expected[16];
    std::memcpy(own, &filter, sizeof(own));
    std::memcpy(expected, &model, sizeof(expected));
    return firstDifference(own, expected, 16);
}

// The two of one setting, gains of a low-pass or a high-pass with a knob value.
struct Twins {
    FourPoleFilter filter;
    ReferenceFilter model;

    Twins(VstInt32 low, VstInt32 high, VstInt32 rate, double lowGain, double upperGains) {
        init(&filter, low, high, rate);
        model.init(low, high, rate);
        filter.lowGain = model.lowGain = lowGain;
        filter.midGain = model.midGain = upperGains;
        filter.highGain = model.highGain = upperGains;
    }
};

double tickOnce(FourPoleFilter& filter, double sample) {
    return tick(&filter, sample);
}

} // namespace

TEST(FourPoleFilter, IsAPlainRecordOfSixteenDoublesInOrder) {
    static_assert(std::is_standard_layout_v<FourPoleFilter>);
    static_assert(std::is_trivial_v<FourPoleFilter>);
    EXPECT_EQ(sizeof(FourPoleFilter), 16 * sizeof(double));
    EXPECT_EQ(offsetof(FourPoleFilter, lowCoefficient), 0u);
    EXPECT_EQ(offsetof(FourPoleFilter, lowStages), 8u);
    EXPECT_EQ(offsetof(FourPoleFilter, highCoefficient), 40u);
    EXPECT_EQ(offsetof(FourPoleFilter, highStages), 48u);
    EXPECT_EQ(offsetof(FourPoleFilter, inputHistory), 80u);
    EXPECT_EQ(offsetof(FourPoleFilter, lowGain), 104u);
    EXPECT_EQ(offsetof(FourPoleFilter, midGain), 112u);
    EXPECT_EQ(offsetof(FourPoleFilter, highGain), 120u);
}

TEST(FourPoleFilter, InitSetsEveryField) {
    FourPoleFilter filter;
    std::memset(&filter, 0x7F, sizeof(filter));
    init(&filter, 600, 1800, 44100);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(bitsOf(filter.lowStages[i]), 0u);
        EXPECT_EQ(bitsOf(filter.highStages[i]), 0u);
    }
    for (const double sample : filter.inputHistory) {
        EXPECT_EQ(bitsOf(sample), 0u);
    }
    EXPECT_EQ(filter.lowGain, 1.0);
    EXPECT_EQ(filter.midGain, 1.0);
    EXPECT_EQ(filter.highGain, 1.0);
}

TEST(FourPoleFilter, CoefficientsOfUsualRates) {
    struct Row {
        VstInt32 rate;
        double at600, at1800, at6000, at18500;
    };
    const Row rows[] = {{44100, 0.085459, 0.255754, 0.829062, 1.936384},
                        {48000, 0.078520, 0.235075, 0.765367, 1.871812},
                        {96000, 0.039267, 0.117742, 0.390181, 1.138200}};
    for (const Row& row : rows) {
        FourPoleFilter low;
        FourPoleFilter high;
        init(&low, 600, 1800, row.rate);
        init(&high, 6000, 18500, row.rate);
        EXPECT_NEAR(low.lowCoefficient, row.at600, 0.5e-6) << row.rate;
        EXPECT_NEAR(low.highCoefficient, row.at1800, 0.5e-6) << row.rate;
        EXPECT_NEAR(high.lowCoefficient, row.at6000, 0.5e-6) << row.rate;
        EXPECT_NEAR(high.highCoefficient, row.at18500, 0.5e-6) << row.rate;
    }
}

TEST(FourPoleFilter, InitGivesTheScalarBitsForAnyFrequencyAndRate) {
    const std::uint64_t seed = randomSeed(0xF1);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    const auto check = [](std::int64_t low, std::int64_t high, std::int64_t rate) {
        FourPoleFilter filter;
        ReferenceFilter model;
        init(&filter, static_cast<VstInt32>(low), static_cast<VstInt32>(high),
             static_cast<VstInt32>(rate));
        model.init(static_cast<VstInt32>(low), static_cast<VstInt32>(high),
                   static_cast<VstInt32>(rate));
        ASSERT_EQ(difference(filter, model), -1) << low << ", " << high << " at " << rate;
    };
    for (std::int64_t rate = 1; rate <= 200000 && !HasFatalFailure(); rate += 7) {
        check(600, 1800, rate);
        check(6000, 18500, rate);
    }
    for (int i = 0; i < 20000 && !HasFatalFailure(); ++i) {
        check(dice.between(-30000, 30000), dice.between(-30000, 30000),
              dice.between(-200000, 200000));
    }
    check(600, 1800, 0);
    check(600, 1800, std::numeric_limits<VstInt32>::min());
}

TEST(FourPoleFilter, TickGivesTheScalarBitsForRandomFiltersAndInput) {
    const std::uint64_t seed = randomSeed(0xF2);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 400; ++round) {
        Twins twins(static_cast<VstInt32>(dice.between(1, 20000)),
                    static_cast<VstInt32>(dice.between(1, 20000)),
                    static_cast<VstInt32>(dice.between(40000, 192000)), dice.within(-1.0f, 2.0f),
                    dice.within(-1.0f, 2.0f));
        twins.filter.highGain = twins.model.highGain = dice.within(-1.0f, 2.0f);
        for (int i = 0; i < 500; ++i) {
            const double sample = dice.unit() * 2.0 - 1.0;
            const double result = tick(&twins.filter, sample);
            ASSERT_TRUE(sameNumber(result, twins.model.tick(sample))) << round << ", " << i;
            ASSERT_EQ(difference(twins.filter, twins.model), -1) << round << ", " << i;
        }
    }
}

TEST(FourPoleFilter, TickGivesTheScalarBitsForAnyDoublesAtAll) {
    const std::uint64_t seed = randomSeed(0xF3);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 100000; ++round) {
        double values[16];
        for (double& value : values) {
            value = dice.oneIn(4) ? doubleOf(dice.bits()) : dice.unit();
        }
        Twins twins(600, 1800, 44100, 1.0, 1.0);
        std::memcpy(&twins.filter, values, sizeof(values));
        std::memcpy(static_cast<void*>(&twins.model), values, sizeof(values));
        const double sample = dice.oneIn(4) ? doubleOf(dice.bits()) : dice.unit();
        const double result = tick(&twins.filter, sample);
        ASSERT_TRUE(sameNumber(result, twins.model.tick(sample))) << round;
        ASSERT_EQ(difference(twins.filter, twins.model), -1) << round;
    }
}

TEST(FourPoleFilter, BandsAreTakenAgainstTheInputOfThreeTicksAgo) {
    FourPoleFilter filter;
    init(&filter, 600, 1800, 44100);
    const double input[] = {0.5, -0.25, 0.75, 1.0, 0.0, 0.125};
    const double expected[] = {0.0, 0.0, 0.0, 0.5, -0.25, 0.75};
    for (int i = 0; i < 6; ++i) {
        EXPECT_NEAR(tickOnce(filter, input[i]), expected[i], 1e-15) << i;
    }
    EXPECT_EQ(filter.inputHistory[0], 0.125);
    EXPECT_EQ(filter.inputHistory[1], 0.0);
    EXPECT_EQ(filter.inputHistory[2], 1.0);
}

TEST(FourPoleFilter, TickLeavesGainsAndCoefficientsAlone) {
    FourPoleFilter filter;
    init(&filter, 6000, 18500, 48000);
    filter.lowGain = 0.1;
    filter.midGain = 0.2;
    filter.highGain = 0.3;
    const FourPoleFilter before = filter;
    for (int i = 0; i < 100; ++i) {
        tickOnce(filter, 0.01 * i);
    }
    EXPECT_EQ(filter.lowCoefficient, before.lowCoefficient);
    EXPECT_EQ(filter.highCoefficient, before.highCoefficient);
    EXPECT_EQ(filter.lowGain, 0.1);
    EXPECT_EQ(filter.midGain, 0.2);
    EXPECT_EQ(filter.highGain, 0.3);
}

TEST(FourPoleFilter, ConstantAgainstDenormalsHasItsExactBits) {
    EXPECT_EQ(bitsOf(kAntiDenormal), 0x3DF0000000100000u);
    EXPECT_EQ(kAntiDenormal, 1.0 / 4294967295.0);
}

TEST(FourPoleFilter, SilenceSettlesAtTheConstantOverTheCoefficient) {
    for (const double knob : {0.25, 0.5, 1.0}) {
        Twins lowPass(600, 1800, 44100, 1.0, 1.0 - knob);
        Twins highPass(6000, 18500, 44100, 1.0 - knob, 1.0);
        double lowResult = 1.0;
        double highResult = 1.0;
        for (int i = 0; i < 20000; ++i) {
            lowResult = tickOnce(lowPass.filter, 0.0);
            highResult = tickOnce(highPass.filter, 0.0);
        }
        const double lowRest = kAntiDenormal / lowPass.filter.lowCoefficient;
        const double highRest = kAntiDenormal / highPass.filter.lowCoefficient;
        for (const double stage : lowPass.filter.lowStages) {
            EXPECT_NEAR(stage / lowRest, 1.0, 1e-9);
        }
        EXPECT_NEAR(lowResult / lowRest, knob, 1e-6);
        EXPECT_NEAR(highResult / highRest, -knob, 1e-6);
    }
}

TEST(FourPoleFilter, SilenceNeverLeavesDenormalStates) {
    Twins twins(600, 1800, 44100, 1.0, 0.0);
    tickOnce(twins.filter, 1e-30);
    for (int i = 0; i < 100000; ++i) {
        tickOnce(twins.filter, 0.0);
        ASSERT_EQ(std::fpclassify(twins.filter.lowStages[3]), FP_NORMAL) << i;
        ASSERT_EQ(std::fpclassify(twins.filter.highStages[3]), FP_NORMAL) << i;
    }
}

TEST(FourPoleFilter, CoefficientAboveOneAlternatesAndStaysStable) {
    FourPoleFilter filter;
    init(&filter, 6000, 18500, 44100);
    ASSERT_GT(filter.highCoefficient, 1.0);
    tickOnce(filter, 1.0);
    for (int i = 0; i < 10; ++i) {
        const double before = filter.highStages[0];
        tickOnce(filter, 0.0);
        EXPECT_LT(before * filter.highStages[0], 0.0) << i;
    }
    for (int i = 0; i < 5000; ++i) {
        tickOnce(filter, 0.0);
    }
    EXPECT_LT(std::fabs(filter.highStages[3]), 1e-8);
}

TEST(FourPoleFilter, LowPassKnobFadesFromTheLateInputToTheLowBand) {
    Twins open(600, 1800, 44100, 1.0, 1.0);   // knob at 0
    Twins closed(600, 1800, 44100, 1.0, 0.0); // knob at 1
    double late[3] = {0.0, 0.0, 0.0};
    Dice dice(5);
    for (int i = 0; i < 1000; ++i) {
        const double x = dice.unit() - 0.5;
        EXPECT_NEAR(tickOnce(open.filter, x), late[2], 1e-12);
        EXPECT_EQ(tickOnce(closed.filter, x), closed.filter.lowStages[3]);
        late[2] = late[1];
        late[1] = late[0];
        late[0] = x;
    }
}

TEST(FourPoleFilter, HighPassKnobSubtractsTheLowBandFromTheLateInput) {
    for (const double knob : {0.0, 0.3, 1.0}) {
        Twins twins(6000, 18500, 48000, 1.0 - knob, 1.0);
        Dice dice(6);
        for (int i = 0; i < 1000; ++i) {
            const double late = twins.filter.inputHistory[2];
            const double result = tickOnce(twins.filter, dice.unit() - 0.5);
            EXPECT_NEAR(result, late - knob * twins.filter.lowStages[3], 1e-12);
        }
    }
}

TEST(FourPoleFilter, NotANumberStaysUntilTheNextInit) {
    for (const double poison : {std::nan(""), kInfinity, -kInfinity}) {
        FourPoleFilter filter;
        init(&filter, 600, 1800, 44100);
        tickOnce(filter, poison);
        double result = 0.0;
        for (int i = 0; i < 1000; ++i) {
            result = tickOnce(filter, 0.5);
        }
        EXPECT_TRUE(std::isnan(result));
        EXPECT_FALSE(std::isfinite(filter.lowStages[0]));
        init(&filter, 600, 1800, 44100);
        for (int i = 0; i < 4; ++i) {
            result = tickOnce(filter, 0.5);
        }
        EXPECT_NEAR(result, 0.5, 1e-15);
    }
}
