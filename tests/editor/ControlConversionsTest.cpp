#include "editor/ControlConversions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <set>

namespace {

float ofBits(std::uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

const std::set<int> kLowerWhileOpen{5,  10, 15, 20, 23, 27, 30, 40, 43, 46, 49,
                                    53, 54, 59, 60, 67, 73, 80, 86, 92, 98};
const std::set<int> kUnchangedAtOpening{0,  7,  14, 17, 25, 28, 31, 34, 37, 50, 55,
                                        56, 61, 62, 68, 74, 75, 81, 87, 93, 100};

} // namespace

TEST(ControlConversions, TopOfADragIsFullAndOneBelowIsNot) {
    EXPECT_EQ(parameterOfStep(99), 1.0f);
    EXPECT_EQ(parameterOfStep(100), 1.0f);
    EXPECT_EQ(parameterOfStep(98), 98.0f * 0.01f);
    EXPECT_NEAR(parameterOfStep(98), 0.98, 1e-6);
    EXPECT_EQ(parameterOfStep(0), 0.0f);
    EXPECT_EQ(parameterOfStep(1), 0.01f);
    EXPECT_EQ(parameterOfStep(50), 0.5f);
}

TEST(ControlConversions, NoStepOfADragSendsNinetyNineHundredths) {
    for (int step = 0; step < 99; ++step) {
        EXPECT_EQ(parameterOfStep(step), static_cast<float>(step) * 0.01f) << step;
        EXPECT_LT(parameterOfStep(step), 0.985f) << step;
    }
}

TEST(ControlConversions, SwitchSendsItsState) {
    EXPECT_EQ(parameterOfSwitch(0), 0.0f);
    EXPECT_EQ(parameterOfSwitch(1), 1.0f);
}

TEST(ControlConversions, EachStepReadsBackWhileOpenAsInTheTable) {
    for (int step = 0; step <= 100; ++step) {
        const int expected =
            step == 99 ? 100 : step - static_cast<int>(kLowerWhileOpen.count(step));
        EXPECT_EQ(stepOfParameter(parameterOfStep(step)), expected) << step;
    }
}

TEST(ControlConversions, EachStepReadsBackAtOpeningAsInTheTable) {
    for (int step = 0; step <= 100; ++step) {
        const int expected = step == 99                             ? 100
                             : kUnchangedAtOpening.count(step) != 0 ? step
                                                                    : step - 1;
        EXPECT_EQ(initialStepOfParameter(parameterOfStep(step)), expected) << step;
    }
}

TEST(ControlConversions, EightyStepsReadBackChangedInOneWayOrTheOther) {
    int changed = 0;
    for (int step = 0; step <= 100; ++step) {
        const float value = parameterOfStep(step);
        changed += stepOfParameter(value) != step || initialStepOfParameter(value) != step ? 1 : 0;
    }
    EXPECT_EQ(changed, 80);
}

TEST(ControlConversions, OpeningAndMovingAgainAndAgainLowersAStepToTheNextThatStays) {
    int step = 13;
    for (const int lower : {12, 11, 10, 9, 8, 7, 7, 7}) {
        step = initialStepOfParameter(parameterOfStep(step));
        EXPECT_EQ(step, lower);
    }
}

TEST(ControlConversions, WaysBackDifferInPrecision) {
    EXPECT_EQ(stepOfParameter(0.01f), 1);
    EXPECT_EQ(initialStepOfParameter(0.01f), 0);
    EXPECT_EQ(initialStepOfParameter(0.5f), 50);
    EXPECT_EQ(stepOfParameter(0.295f), 29);
}

TEST(ControlConversions, RandomValuesMatchExactArithmetic) {
    const auto seed = std::random_device{}();
    RecordProperty("seed", std::to_string(seed));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> normalised(0.0f, 1.0f);
    std::uniform_real_distribution<float> wide(-1000.0f, 1000.0f);
    for (int i = 0; i < 100000; ++i) {
        const float value = i % 4 == 0 ? wide(random) : normalised(random);
        // The product is exact in double precision: 24 bits by 7.
        const double exact = static_cast<double>(value) * 100.0;
        ASSERT_EQ(initialStepOfParameter(value), static_cast<std::int32_t>(std::trunc(exact)));
        const float rounded = static_cast<float>(exact);
        ASSERT_EQ(stepOfParameter(value), static_cast<std::int32_t>(std::trunc(rounded))) << value;
    }
}

TEST(ControlConversions, ValuesOutOfRangeAreNotHeldBack) {
    EXPECT_EQ(stepOfParameter(1.5f), 150);
    EXPECT_EQ(stepOfParameter(-0.019f), -1);
    EXPECT_EQ(initialStepOfParameter(-0.019f), -1);
    constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
    const float none = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(stepOfParameter(none), kLowest);
    EXPECT_EQ(initialStepOfParameter(none), kLowest);
    EXPECT_EQ(stepOfParameter(1e30f), kLowest);
    EXPECT_EQ(initialStepOfParameter(-1e30f), kLowest);
}

TEST(ControlConversions, SwitchShowsOnFromOneUp) {
    EXPECT_EQ(switchOfParameter(0.0f), 0);
    EXPECT_EQ(switchOfParameter(0.5f), 0);
    EXPECT_EQ(switchOfParameter(ofBits(0x3F7FFFFF)), 0);
    EXPECT_EQ(switchOfParameter(1.0f), 1);
    EXPECT_EQ(switchOfParameter(-0.9f), 0);
}

TEST(ControlConversions, SwitchKeepsTheLowEightBits) {
    EXPECT_EQ(switchOfParameter(127.0f), 127);
    EXPECT_EQ(switchOfParameter(128.0f), -128);
    EXPECT_EQ(switchOfParameter(255.0f), -1);
    EXPECT_EQ(switchOfParameter(256.0f), 0);
    EXPECT_EQ(switchOfParameter(257.0f), 1);
    EXPECT_EQ(switchOfParameter(-1.0f), -1);
    EXPECT_EQ(switchOfParameter(std::numeric_limits<float>::quiet_NaN()), 0);
}
