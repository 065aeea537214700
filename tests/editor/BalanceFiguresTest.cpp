#include "editor/BalanceFigures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

void expectFigures(std::int32_t pan, std::int32_t left, std::int32_t right) {
    SCOPED_TRACE(pan);
    EXPECT_EQ(balanceFigures(pan).left, left);
    EXPECT_EQ(balanceFigures(pan).right, right);
}

} // namespace

TEST(BalanceFigures, AreBothNothingAtTheCentre) {
    expectFigures(50, 0, 0);
}

TEST(BalanceFigures, GoInStepsOfTwo) {
    expectFigures(49, 2, 0);
    expectFigures(48, 4, 0);
    expectFigures(51, 0, 2);
    expectFigures(52, 0, 4);
}

TEST(BalanceFigures, AreFullAtTheEnds) {
    expectFigures(0, 100, 0);
    expectFigures(100, 0, 100);
}

TEST(BalanceFigures, RunLikeTwoStraightLines) {
    for (std::int32_t pan = -300; pan <= 300; ++pan) {
        expectFigures(pan, std::max(0, 100 - 2 * pan), std::max(0, 2 * pan - 100));
    }
}

TEST(BalanceFigures, AreNotClampedBeyondTheEnds) {
    expectFigures(-1, 102, 0);
    expectFigures(-50, 200, 0);
    expectFigures(101, 0, 102);
    expectFigures(1073741873, 0, 2147483646);
}

TEST(BalanceFigures, WrapWhereTheyLeave32Bits) {
    expectFigures(1073741874, 0, std::numeric_limits<std::int32_t>::min());
    expectFigures(std::numeric_limits<std::int32_t>::max(), 0, -102);
    expectFigures(std::numeric_limits<std::int32_t>::min(), 100, 0);
}
