#include "editor/LoadingCount.h"

#include <gtest/gtest.h>

namespace {

void expectOrigin(double width, double height, double x, double y) {
    SCOPED_TRACE(testing::Message() << width << " by " << height);
    EXPECT_EQ(loadingOrigin(width, height).x, x);
    EXPECT_EQ(loadingOrigin(width, height).y, y);
}

} // namespace

TEST(LoadingCount, ReachesTheInitialTotalIn73Steps) {
    std::uint32_t count = 0;
    for (int step = 1; step <= 73; ++step) {
        EXPECT_LT(count, kInitialTotalSamples);
        count = advancedCount(count);
        EXPECT_EQ(count, 60u * static_cast<std::uint32_t>(step));
    }
    EXPECT_EQ(count, 4380u);
    EXPECT_EQ(count, kInitialTotalSamples);
}

TEST(LoadingCount, RisesBeyondTheTotal) {
    EXPECT_EQ(advancedCount(4380), 4440u);
}

TEST(LoadingCount, WrapsAt32Bits) {
    EXPECT_EQ(advancedCount(0xFFFFFFFF), 59u);
}

TEST(LoadingPlace, IsTheMiddleOfTheScreenHalfAPointHigh) {
    expectOrigin(1280, 800, 515, 340);
    expectOrigin(1920, 1080, 835, 480);
    EXPECT_EQ(loadingOrigin(1280, 800).y + kLoadingWindowHeight / 2, 400.5);
}

TEST(LoadingPlace, IsCutTowardsZero) {
    expectOrigin(1365, 767, 557, 323);
    expectOrigin(249, 119, 0, 0);
    expectOrigin(247, 117, -1, -1);
}

TEST(LoadingPlace, IsLeftAndBelowWithoutAScreen) {
    expectOrigin(0, 0, -125, -60);
}
