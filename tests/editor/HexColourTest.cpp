#include "editor/HexColour.h"

#include <gtest/gtest.h>

TEST(HexColour, ComponentsAreTakenFromTheirBits) {
    EXPECT_EQ(rgbOfHex(0x00FF0000).red, 255 * 0.00392156862745098);
    EXPECT_EQ(rgbOfHex(0x00FF0000).green, 0.0);
    EXPECT_EQ(rgbOfHex(0x00123456).red, 0x12 * 0.00392156862745098);
    EXPECT_EQ(rgbOfHex(0x00123456).green, 0x34 * 0.00392156862745098);
    EXPECT_EQ(rgbOfHex(0x00123456).blue, 0x56 * 0.00392156862745098);
}

TEST(HexColour, ComponentsAreMultipliedAndNotDivided) {
    int differsFromTheQuotient = 0;
    for (std::uint32_t component = 0; component < 256; ++component) {
        const RgbComponents rgb = rgbOfHex(component << 16 | component << 8 | component);
        EXPECT_EQ(rgb.red, component * 0.00392156862745098) << component;
        EXPECT_EQ(rgb.green, rgb.red) << component;
        EXPECT_EQ(rgb.blue, rgb.red) << component;
        differsFromTheQuotient += rgb.red != component / 255.0 ? 1 : 0;
    }
    EXPECT_GT(differsFromTheQuotient, 0);
}

TEST(HexColour, HigherBitsAreNotLookedAt) {
    EXPECT_EQ(rgbOfHex(0xFF000000).red, 0.0);
    EXPECT_EQ(rgbOfHex(0xFF000001).blue, 0.00392156862745098);
}
