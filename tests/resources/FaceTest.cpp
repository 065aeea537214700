#include "tests/resources/ControlPlaces.h"
#include "tests/support/screen/Picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

// Contrasts that web accessibility asks for: of text at its strictest level, and of marks.
constexpr double kTextContrast = 7.0;
constexpr double kMarkContrast = 3.0;

constexpr double kMarkRadius = 26.0;

class Face : public testing::Test {
protected:
    static void SetUpTestSuite() { background = Picture::load(picturePath("delaybackground")); }

    // The plain enamel, taken above a knob where nothing is printed.
    static Pixel enamel() { return background.atPoint(84.0, 226.0 + 33.0); }

    static double contrastAt(double x, double y) {
        return contrast(background.atPoint(x, y), enamel());
    }

    struct Ink {
        int pixels = 0;
        double left = kFaceWidth;
        double right = 0.0;
        double centre() const { return (left + right) / 2.0; }
    };

    // Lettering within a box, in points.
    static Ink lettering(double left, double bottom, double right, double top) {
        Ink ink;
        for (int row = 0; row < background.height(); ++row) {
            for (int column = 0; column < background.width(); ++column) {
                const double x = background.pointX(column);
                const double y = background.pointY(row);
                if (x > left && x < right && y > bottom && y < top &&
                    contrast(background.at(column, row), enamel()) >= kTextContrast) {
                    ++ink.pixels;
                    ink.left = std::min(ink.left, x);
                    ink.right = std::max(ink.right, x);
                }
            }
        }
        return ink;
    }

    static inline Picture background;
};

} // namespace

TEST_F(Face, EveryKnobHasALegibleLabelCentredBelowIt) {
    for (const ControlPlace& place : kKnobPlaces) {
        const double x = place.centreX();
        const double y = place.centreY();
        const Ink label = lettering(x - 36.0, y - 44.0, x + 36.0, y - 31.5);
        EXPECT_GT(label.pixels, 80) << place.name;
        EXPECT_NEAR(label.centre(), x, 0.5) << place.name;
    }
}

TEST_F(Face, EverySwitchHasALegibleLabelForEachState) {
    for (const ControlPlace& place : kSwitchPlaces) {
        const double x = place.centreX();
        const double y = place.centreY();
        for (const Ink& label : {lettering(x - 17.0, y + 9.0, x + 17.0, y + 21.0),
                                 lettering(x - 17.0, y - 21.0, x + 17.0, y - 9.0)}) {
            EXPECT_GT(label.pixels, 40) << place.name;
            EXPECT_NEAR(label.centre(), x, 0.5) << place.name;
        }
    }
}

TEST_F(Face, NameStandsInTheTitleZone) {
    const Ink name = lettering(100.0, 334.0, 250.0, 380.0);
    EXPECT_GT(name.pixels, 1000);
    EXPECT_GT(contrast(background.atPoint(172.0, 392.0), Pixel{242, 240, 237, 255}), 4.5);
}

TEST_F(Face, ScaleMarksRunFromLowerLeftOverTheTopToLowerRight) {
    for (const ControlPlace& place : kKnobPlaces) {
        const auto contrastAtAngle = [&](double degrees) {
            return contrastAt(place.centreX() + kMarkRadius * std::cos(degrees * kPi / 180.0),
                              place.centreY() + kMarkRadius * std::sin(degrees * kPi / 180.0));
        };
        for (int mark = 0; mark <= 10; ++mark) {
            EXPECT_GT(contrastAtAngle(225.0 - 27.0 * mark), kMarkContrast)
                << place.name << " mark " << mark;
        }
        for (int gap = 0; gap < 10; ++gap) {
            EXPECT_LT(contrastAtAngle(225.0 - 27.0 * (gap + 0.5)), 1.3)
                << place.name << " gap " << gap;
        }
        for (int degrees = 235; degrees <= 305; ++degrees) {
            EXPECT_LT(contrastAtAngle(degrees), 1.3) << place.name << " at " << degrees;
        }
    }
}

TEST_F(Face, NothingIsClippedAtTheEdges) {
    constexpr double kMargin = 4.0;
    // The ridges alone run out at the sides.
    constexpr double kRidgesFrom = 265.0;
    for (int row = 0; row < background.height(); ++row) {
        for (int column = 0; column < background.width(); ++column) {
            const double x = background.pointX(column);
            const double y = background.pointY(row);
            const bool side = y < kRidgesFrom && (x < kMargin || x > kFaceWidth - kMargin);
            const bool end = y < kMargin || y > kFaceHeight - kMargin;
            if (side || end) {
                ASSERT_LT(contrast(background.at(column, row), enamel()), kMarkContrast)
                    << "at " << x << ", " << y;
            }
        }
    }
}

TEST_F(Face, KnobsAndSwitchesDontCoverLettering) {
    const auto expectPlain = [](const ControlPlace& place, double radius) {
        for (int row = 0; row < background.height(); ++row) {
            for (int column = 0; column < background.width(); ++column) {
                const double x = background.pointX(column) - place.centreX();
                const double y = background.pointY(row) - place.centreY();
                const bool within =
                    std::abs(x) < place.width / 2.0 && std::abs(y) < place.height / 2.0;
                if (within && std::hypot(x, y) < radius) {
                    ASSERT_LT(contrast(background.at(column, row), enamel()), 2.0)
                        << place.name << " at " << x << ", " << y;
                }
            }
        }
    };
    for (const ControlPlace& place : kKnobPlaces) {
        expectPlain(place, 24.0);
    }
    for (const ControlPlace& place : kSwitchPlaces) {
        expectPlain(place, 24.0);
    }
}
