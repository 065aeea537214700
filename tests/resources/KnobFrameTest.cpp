#include "tests/resources/ControlPlaces.h"
#include "tests/support/screen/Picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int kPixels = Picture::kPixelsPerPoint * kKnobSize;
constexpr double kPi = 3.14159265358979323846;

// The knob's turning part lies inside this radius, and its plain cap inside the smaller one. In
// points.
constexpr double kKnobRadius = 20.6;
constexpr double kCapRadius = 14.0;

double frameAngle(int frame) {
    return 225.0 - 270.0 * frame / 127.0;
}

double wrapped(double degrees) {
    return std::remainder(degrees, 360.0);
}

class KnobFrames : public testing::Test {
protected:
    static void SetUpTestSuite() {
        for (int frame = 0; frame < kKnobFrames; ++frame) {
            frames.push_back(Picture::load(picturePath(knobFrameName(frame))));
        }
        background = Picture::load(picturePath("delaybackground"));
    }

    static void TearDownTestSuite() { frames.clear(); }

    // The luminance that a pixel has in most frames: the cap as it looks without the pointer.
    static double usualLuminance(int column, int row) {
        std::vector<double> values;
        values.reserve(frames.size());
        for (const Picture& frame : frames) {
            values.push_back(luminance(frame.at(column, row)));
        }
        std::nth_element(values.begin(), values.begin() + kKnobFrames / 2, values.end());
        return values[kKnobFrames / 2];
    }

    static const Pixel& ground(const ControlPlace& place, int column, int row) {
        const int left = Picture::kPixelsPerPoint * place.left;
        const int top = Picture::kPixelsPerPoint * (kFaceHeight - place.bottom - place.height);
        return background.at(left + column, top + row);
    }

    static inline std::vector<Picture> frames;
    static inline Picture background;
};

template <typename Visit>
void forEachPixel(Visit visit) {
    for (int row = 0; row < kPixels; ++row) {
        for (int column = 0; column < kPixels; ++column) {
            const double x = (column + 0.5) / Picture::kPixelsPerPoint - kKnobSize / 2.0;
            const double y = kKnobSize / 2.0 - (row + 0.5) / Picture::kPixelsPerPoint;
            visit(column, row, x, y);
        }
    }
}

} // namespace

TEST_F(KnobFrames, PointerStandsAtTheAngleOfItsFrame) {
    std::vector<double> plain(static_cast<std::size_t>(kPixels) * kPixels);
    forEachPixel([&](int column, int row, double x, double y) {
        if (std::hypot(x, y) < kCapRadius) {
            plain[static_cast<std::size_t>(row * kPixels + column)] = usualLuminance(column, row);
        }
    });
    for (int frame = 0; frame < kKnobFrames; ++frame) {
        double sumX = 0.0;
        double sumY = 0.0;
        double weight = 0.0;
        forEachPixel([&](int column, int row, double x, double y) {
            if (std::hypot(x, y) >= kCapRadius) {
                return;
            }
            const double darkening =
                plain[static_cast<std::size_t>(row * kPixels + column)] -
                luminance(frames[static_cast<std::size_t>(frame)].at(column, row));
            if (darkening > 0.1) {
                sumX += darkening * x;
                sumY += darkening * y;
                weight += darkening;
            }
        });
        ASSERT_GT(weight, 20.0) << "no pointer in frame " << frame;
        const double angle = std::atan2(sumY, sumX) * 180.0 / kPi;
        EXPECT_LT(std::abs(wrapped(angle - frameAngle(frame))), 1.0)
            << "frame " << frame << " points to " << angle;
    }
}

TEST_F(KnobFrames, PointerContrastsWithTheCap) {
    for (int frame = 0; frame < kKnobFrames; ++frame) {
        const double angle = frameAngle(frame) * kPi / 180.0;
        const auto at = [&](double radius, double turn) {
            return frames[static_cast<std::size_t>(frame)].atPoint(
                kKnobSize / 2.0 + radius * std::cos(angle + turn),
                kKnobSize / 2.0 + radius * std::sin(angle + turn));
        };
        EXPECT_GT(contrast(at(11.0, 0.0), at(11.0, kPi / 2.0)), 4.5) << frame;
    }
}

TEST_F(KnobFrames, GroundIsTheSameBelowAllKnobs) {
    for (const ControlPlace& place : kKnobPlaces) {
        int different = 0;
        forEachPixel([&](int column, int row, double, double) {
            different += ground(place, column, row) == ground(kKnobPlaces[0], column, row) ? 0 : 1;
        });
        EXPECT_EQ(different, 0) << place.name;
    }
}

TEST_F(KnobFrames, CarryTheGroundAroundTheKnobUnchanged) {
    for (const ControlPlace& place : kKnobPlaces) {
        for (int frame = 0; frame < kKnobFrames; ++frame) {
            int different = 0;
            forEachPixel([&](int column, int row, double x, double y) {
                if (std::hypot(x, y) > kKnobRadius &&
                    !(frames[static_cast<std::size_t>(frame)].at(column, row) ==
                      ground(place, column, row))) {
                    ++different;
                }
            });
            ASSERT_EQ(different, 0) << place.name << " frame " << frame;
        }
    }
}

TEST_F(KnobFrames, LightStaysAboveWhileTheKnobTurns) {
    const auto meanOfGrip = [](const Picture& frame, double direction) {
        double sum = 0.0;
        int count = 0;
        forEachPixel([&](int column, int row, double x, double y) {
            const double radius = std::hypot(x, y);
            const double away = wrapped(std::atan2(y, x) * 180.0 / kPi - direction);
            if (radius > 16.0 && radius < 18.5 && std::abs(away) < 40.0) {
                sum += luminance(frame.at(column, row));
                ++count;
            }
        });
        return sum / count;
    };
    for (int frame = 0; frame < kKnobFrames; ++frame) {
        const Picture& picture = frames[static_cast<std::size_t>(frame)];
        EXPECT_GT(meanOfGrip(picture, 90.0), 1.5 * meanOfGrip(picture, 270.0)) << frame;
    }
}

TEST_F(KnobFrames, EachDiffersFromTheOneBefore) {
    for (int frame = 1; frame < kKnobFrames; ++frame) {
        int different = 0;
        forEachPixel([&](int column, int row, double, double) {
            const auto index = static_cast<std::size_t>(frame);
            different +=
                difference(frames[index].at(column, row), frames[index - 1].at(column, row)) > 16
                    ? 1
                    : 0;
        });
        EXPECT_GT(different, 20) << frame;
    }
}
