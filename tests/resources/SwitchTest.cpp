#include "tests/support/screen/Picture.h"

#include <gtest/gtest.h>

namespace {

// The middle third of the columns, where the bead runs.
double meanLuminance(const Picture& picture, int firstRow, int lastRow) {
    double sum = 0.0;
    int count = 0;
    for (int row = firstRow; row < lastRow; ++row) {
        for (int column = picture.width() / 3; column < 2 * picture.width() / 3; ++column) {
            EXPECT_EQ(picture.at(column, row).alpha, 255) << column << ", " << row;
            sum += luminance(picture.at(column, row));
            ++count;
        }
    }
    return sum / count;
}

class Switches : public testing::Test {
protected:
    const Picture off = Picture::load(picturePath("switchoff"));
    const Picture on = Picture::load(picturePath("switchon"));
};

} // namespace

TEST_F(Switches, OnStandsUpAndOffStandsDown) {
    EXPECT_GT(meanLuminance(on, 4, 13), 4.0 * meanLuminance(on, 24, 30));
    EXPECT_GT(meanLuminance(off, 19, 28), 4.0 * meanLuminance(off, 3, 9));
}

TEST_F(Switches, StatesDifferWithoutTheirColour) {
    EXPECT_GT(meanLuminance(on, 4, 13), 4.0 * meanLuminance(off, 4, 9));
    EXPECT_GT(meanLuminance(on, 4, 13), 1.4 * meanLuminance(off, 19, 28));
}

TEST_F(Switches, OnlyOnIsLit) {
    const auto warmPixels = [](const Picture& picture) {
        int count = 0;
        for (int row = 0; row < picture.height(); ++row) {
            for (int column = 0; column < picture.width(); ++column) {
                const Pixel& pixel = picture.at(column, row);
                count += pixel.alpha == 255 && pixel.red - pixel.blue > 90 ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_GT(warmPixels(on), 150);
    EXPECT_EQ(warmPixels(off), 0);
}

TEST_F(Switches, StayClearOfTheirCorners) {
    for (const Picture* picture : {&off, &on}) {
        for (const int column : {0, picture->width() - 1}) {
            for (const int row : {0, picture->height() - 1}) {
                EXPECT_EQ(picture->at(column, row).alpha, 0);
            }
        }
    }
}
