#include "editor/SliderGeometry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

TEST(SliderGeometry, TrackIsCutToWholePoints) {
    EXPECT_EQ(trackExtent(150.0), 150);
    EXPECT_EQ(trackExtent(150.999), 150);
    EXPECT_EQ(trackExtent(0.75), 0);
    EXPECT_EQ(trackExtent(-0.75), 0);
    EXPECT_EQ(trackExtent(-21.5), -21);
}

TEST(SliderGeometry, TrackBeyondWholeNumbersIsTheLowest) {
    const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(trackExtent(2147483648.0), lowest);
    EXPECT_EQ(trackExtent(std::numeric_limits<double>::quiet_NaN()), lowest);
    EXPECT_EQ(trackExtent(2147483647.9), std::numeric_limits<std::int32_t>::max());
}

TEST(SliderGeometry, KnobPictureStandsOnALineAboveTheKnobsLowerEdge) {
    const SliderPoint corner = knobPictureCorner(10.0, 20.0, 16.0);
    EXPECT_EQ(corner.x, 14.0);
    EXPECT_EQ(corner.y, 32.0);
}

TEST(SliderGeometry, KnobPictureIsPlacedInDoublePrecisionUpFirst) {
    // 4 - 2^-50 can be told from 4 only before the height is added.
    const double y = 4.0 + 0x1p-50;
    EXPECT_EQ(knobPictureCorner(0.0, y, 0x1p-50).y, 0x1p-49);
    EXPECT_NE(y + 0x1p-51 - 4.0, 0x1p-50 + 0x1p-51);
    EXPECT_EQ(knobPictureCorner(0.0, y, 0x1p-51).y, 0x1p-50 + 0x1p-51);
    EXPECT_EQ(knobPictureCorner(0.1, 0.0, 0.0).x, 4.1);
}
