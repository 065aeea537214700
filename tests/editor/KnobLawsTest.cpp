#include "editor/KnobLaws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kSteps = 100;

// The highest whole angle of each step, by exact fractions: 99 * (225 - angle) / 270, cut.
constexpr std::array<int, 100> kHighestAngleOfStep{
    225, 222, 219, 216, 214, 211, 208, 205, 203, 200, 197, 195, 192, 189, 186, 184, 181,
    178, 175, 173, 170, 167, 165, 162, 159, 156, 154, 151, 148, 145, 143, 140, 137, 135,
    132, 129, 126, 124, 121, 118, 115, 113, 110, 107, 105, 102, 99,  96,  94,  91,  88,
    85,  83,  80,  77,  75,  72,  69,  66,  64,  61,  58,  55,  53,  50,  47,  45,  42,
    39,  36,  34,  31,  28,  25,  23,  20,  17,  15,  12,  9,   6,   4,   1,   -2,  -5,
    -7,  -10, -13, -15, -18, -21, -24, -26, -29, -32, -35, -37, -40, -43, -45};

int stepInTable(int angle) {
    const auto found = std::find_if(kHighestAngleOfStep.rbegin(), kHighestAngleOfStep.rend(),
                                    [angle](int highest) { return highest >= angle; });
    return static_cast<int>(kHighestAngleOfStep.rend() - found) - 1;
}

std::vector<std::int64_t> framesOfSteps(std::int32_t first, std::int32_t last) {
    std::vector<std::int64_t> frames;
    for (std::int32_t step = first; step <= last; ++step) {
        frames.push_back(frameOfStep(step));
    }
    return frames;
}

} // namespace

TEST(KnobLaws, EachWholeAngleFallsIntoItsStep) {
    for (int angle = -45; angle <= 225; ++angle) {
        EXPECT_EQ(stepAtAngle(static_cast<float>(angle), kSteps), stepInTable(angle)) << angle;
    }
}

TEST(KnobLaws, AnglesAtTheStepBorders) {
    struct Row {
        int from;
        int to;
        int step;
    };
    for (const Row& row :
         {Row{225, 223, 0}, Row{222, 220, 1}, Row{91, 89, 49}, Row{88, 86, 50}, Row{85, 84, 51},
          Row{-40, -42, 97}, Row{-43, -44, 98}, Row{-45, -45, 99}}) {
        for (int angle = row.from; angle >= row.to; --angle) {
            EXPECT_EQ(stepAtAngle(static_cast<float>(angle), kSteps), row.step) << angle;
        }
    }
}

TEST(KnobLaws, DragTurnsOneDegreeAPointAndStopsAtTheEnds) {
    for (int base = -45; base <= 225; ++base) {
        for (int travel = -600; travel <= 600; ++travel) {
            const float angle = draggedAngle(base, 24, 24 + travel);
            const int expected = std::clamp(base - travel, -45, 225);
            ASSERT_EQ(angle, static_cast<float>(expected)) << base << " and " << travel;
            ASSERT_EQ(stepAtAngle(angle, kSteps), stepInTable(expected));
        }
    }
}

TEST(KnobLaws, DragSumWrapsAtThirtyTwoBits) {
    constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(draggedAngle(0, kHighest, kLowest), -1.0f);
    EXPECT_EQ(draggedAngle(225, kHighest, 0), -45.0f);
    EXPECT_EQ(draggedAngle(85, 0, kHighest), -45.0f);
    EXPECT_EQ(draggedAngle(85, 0, kLowest), -45.0f);
    EXPECT_EQ(draggedAngle(-45, kHighest, 0), 225.0f);
}

TEST(KnobLaws, AngleOfStepSweepsFromLowerLeftToLowerRight) {
    EXPECT_EQ(angleOfStep(0, kSteps), 225.0f);
    EXPECT_EQ(angleOfStep(99, kSteps), -45.0f);
    EXPECT_NEAR(angleOfStep(50, kSteps), 88.63636, 1e-4);
    EXPECT_NEAR(angleOfStep(100, kSteps), -47.72727, 1e-4);
    EXPECT_NEAR(angleOfStep(-1, kSteps), 227.72727, 1e-4);
}

TEST(KnobLaws, AngleOfStepIsRoundedOnceAtTheEnd) {
    int differsFromSinglePrecision = 0;
    for (std::int32_t step = -200; step <= 300; ++step) {
        const double exact = step * (-270.0 / 99.0) + 225.0;
        EXPECT_EQ(angleOfStep(step, kSteps), static_cast<float>(exact)) << step;
        const float single = static_cast<float>(step) * (-270.0f / 99.0f) + 225.0f;
        differsFromSinglePrecision += single != static_cast<float>(exact) ? 1 : 0;
    }
    EXPECT_GT(differsFromSinglePrecision, 0);
}

TEST(KnobLaws, AngleOfStepTakesTheQuotientFirst) {
    // The last bit of -270 / 114 and of its like is left over.
    EXPECT_EQ(angleOfStep(95, 115), 0x1p-45f);
    EXPECT_EQ(angleOfStep(175, 211), -0x1p-45f);
}

TEST(KnobLaws, TurnIsTakenInSinglePrecision) {
    // 180 degrees less a bit, which single precision has no place for.
    EXPECT_EQ(stepAtAngle(std::nextafter(45.0f, 46.0f), kSteps), 66);
    EXPECT_EQ(stepAtAngle(std::nextafter(45.0f, 44.0f), kSteps), 66);
}

TEST(KnobLaws, TurnIsMultipliedWhereADivisionWouldFallShort) {
    EXPECT_EQ(stepAtAngle(147.0f, 46), 13);
    EXPECT_EQ(stepAtAngle(69.0f, 46), 26);
    EXPECT_EQ(stepAtAngle(27.0f, 76), 55);
    EXPECT_EQ(stepAtAngle(27.0f, 151), 110);
}

TEST(KnobLaws, LengthOfTheListSetsTheScale) {
    EXPECT_EQ(angleOfStep(1, 2), -45.0f);
    EXPECT_EQ(angleOfStep(5, 11), 90.0f);
    EXPECT_EQ(stepAtAngle(90.0f, 11), 5);
    EXPECT_EQ(stepAtAngle(-45.0f, 2), 1);
    EXPECT_EQ(stepAtAngle(-44.0f, 2), 0);
    EXPECT_EQ(stepAtAngle(-45.0f, 1), 0);
    EXPECT_EQ(angleOfStep(1, 0), 495.0f);
}

TEST(KnobLaws, FramesOfSteps) {
    EXPECT_EQ(frameOfStep(0), 0);
    EXPECT_EQ(frameOfStep(3), 3);
    EXPECT_EQ(frameOfStep(4), 5);
    EXPECT_EQ(frameOfStep(50), 63);
    EXPECT_EQ(frameOfStep(99), 125);
    EXPECT_EQ(frameOfStep(100), 127);
}

TEST(KnobLaws, TwentySevenFramesAreNeverShown) {
    const std::vector<std::int64_t> shown = framesOfSteps(0, 100);
    std::vector<std::int64_t> skipped;
    for (std::int64_t frame = 0; frame < 128; ++frame) {
        if (std::find(shown.begin(), shown.end(), frame) == shown.end()) {
            skipped.push_back(frame);
        }
    }
    const std::vector<std::int64_t> expected{4,  9,  14, 18,  23,  28,  32,  37,  42,
                                             47, 51, 56, 61,  65,  70,  75,  79,  84,
                                             89, 94, 98, 103, 108, 112, 117, 122, 126};
    EXPECT_EQ(skipped, expected);
}

TEST(KnobLaws, FramesOutsideTheStripAreNotHeldBack) {
    EXPECT_EQ(frameOfStep(101), 128);
    EXPECT_EQ(frameOfStep(-1), -1);
    EXPECT_EQ(frameOfStep(std::numeric_limits<std::int32_t>::min()), -2727304232);
}

TEST(KnobLaws, HandleLiesOnACircleInsideTheRim) {
    const HandleSquare right = handleAtAngle(0.0f, 3, 2, 48.0, 48.0);
    EXPECT_DOUBLE_EQ(right.x, 18.0 - 1.0 + 24.0);
    EXPECT_DOUBLE_EQ(right.y, 23.0);
    EXPECT_DOUBLE_EQ(right.side, 3.0);
    const HandleSquare top = handleAtAngle(90.0f, 10, 2, 48.0, 60.0);
    EXPECT_NEAR(top.x, 19.0, 1e-12);
    EXPECT_NEAR(top.y, 18.0 - 5.0 + 30.0, 1e-12);
    const HandleSquare lowerLeft = handleAtAngle(225.0f, 0, 2, 48.0, 48.0);
    EXPECT_NEAR(lowerLeft.x, 24.0 - 18.0 * std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(lowerLeft.y, 24.0 - 18.0 * std::sqrt(0.5), 1e-12);
}

TEST(KnobLaws, HandleCutsTheRadiusAndHalvesTheWidthInIntegers) {
    const HandleSquare cut = handleAtAngle(0.0f, 1, 2, 49.0, 48.0);
    EXPECT_DOUBLE_EQ(cut.x, 18.0 + 24.5);
    const HandleSquare negative = handleAtAngle(0.0f, -3, 0, 8.0, 8.0);
    EXPECT_DOUBLE_EQ(negative.x, 5.0);
    EXPECT_DOUBLE_EQ(negative.side, -3.0);
    const HandleSquare inward = handleAtAngle(0.0f, 0, 30, 48.0, 48.0);
    EXPECT_DOUBLE_EQ(inward.x, 24.0 - 10.0);
}

TEST(KnobLaws, RandomDragsStayWithinTheStepsAndTheSweep) {
    const auto seed = std::random_device{}();
    RecordProperty("seed", std::to_string(seed));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::int32_t> any(std::numeric_limits<std::int32_t>::min(),
                                                    std::numeric_limits<std::int32_t>::max());
    for (int i = 0; i < 100000; ++i) {
        const float angle = draggedAngle(any(random), any(random), any(random));
        ASSERT_GE(angle, -45.0f);
        ASSERT_LE(angle, 225.0f);
        const std::int32_t step = stepAtAngle(angle, kSteps);
        ASSERT_GE(step, 0);
        ASSERT_LE(step, 99);
    }
}
