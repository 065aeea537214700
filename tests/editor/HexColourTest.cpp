#include "editor/HexColour.h"

#include <gtest/gtest.h>

TEST(HexColour, ComponentsAreTakenFromTheirBits) {
    EXPECT_EQ(rgbOfHex(0x00FF0000).red, 255 * 0.00392156862745098);
    EXPECT_EQ(rgbOfHex(0x00FF0000).green, 0.0);
    EXPECT_EQ(rgbOfHex(0x00123456).red, 0x12 * 0.00392156862745098);
    EXPECT_EQ(rgbOfHex(0x00123456).green, 0x34 * 0.00392156862745098);
    EXPECT_EQ(rgbOfHex(0x00123456).blue, 0x56 * 0.00392156862745098);
}

TEST(HexColour, HigherBitsAreNotLookedAt) {
    EXPECT_EQ(rgbOfHex(0xFF000000).red, 0.0);
    EXPECT_EQ(rgbOfHex(0xFF000001).blue, 0.00392156862745098);
}
