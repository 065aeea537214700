#include "editor/DisplayText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

} // namespace

TEST(PercentText, EndsWithItsSign) {
    EXPECT_EQ(percentText(0), "0%");
    EXPECT_EQ(percentText(2), "2%");
    EXPECT_EQ(percentText(100), "100%");
    EXPECT_EQ(percentText(-102), "-102%");
    EXPECT_EQ(percentText(kLowest), "-2147483648%");
}

TEST(NumberText, PrintsWholeNumbersWithAMinusWhereTheyAreNegative) {
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(-7), "-7");
    EXPECT_EQ(numberText(kHighest), "2147483647");
    EXPECT_EQ(numberText(kLowest), "-2147483648");
}

TEST(LoadingText, PrintsBothCounts) {
    EXPECT_EQ(loadingText(0, 4380), "Loading Samples 0 of 4380");
    EXPECT_EQ(loadingText(4440, 4380), "Loading Samples 4440 of 4380");
}

TEST(LoadingText, PrintsCountsAsSignedNumbers) {
    EXPECT_EQ(loadingText(0x7FFFFFFF, 0x80000000), "Loading Samples 2147483647 of -2147483648");
    EXPECT_EQ(loadingText(0xFFFFFFFF, 0xFFFFFFC4), "Loading Samples -1 of -60");
    EXPECT_EQ(loadingText(0x80000000, 0x80000000), "Loading Samples -2147483648 of -2147483648");
}
