#include "soundlib/SmoothingFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstddef>

#include "tests/soundlib/ReferenceChorus.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"

namespace {

constexpr double kPi = 3.141592653589793;

double gainAt(const SmoothingFilter& filter, double hertz) {
    const std::complex<double> z = std::polar(1.0, -2.0 * kPi * hertz / 44100.0);
    return std::abs((filter.b0 + z * (filter.b1 + z * filter.b2)) /
                    (filter.a0 + z * (filter.a1 + z * filter.a2)));
}

} // namespace

TEST(SmoothingFilter, IsTwelveDoublesInOrder) {
    const std::size_t offsets[] = {
        offsetof(SmoothingFilter, input1),  offsetof(SmoothingFilter, input2),
        offsetof(SmoothingFilter, output1), offsetof(SmoothingFilter, output2),
        offsetof(SmoothingFilter, a0),      offsetof(SmoothingFilter, a1),
        offsetof(SmoothingFilter, a2),      offsetof(SmoothingFilter, b0),
        offsetof(SmoothingFilter, b1),      offsetof(SmoothingFilter, b2),
        offsetof(SmoothingFilter, omega),   offsetof(SmoothingFilter, alpha)};
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_EQ(offsets[i], i * sizeof(double));
    }
    EXPECT_EQ(sizeof(SmoothingFilter), 12 * sizeof(double));
}

TEST(SmoothingFilter, DesignClearsTheHistory) {
    SmoothingFilter filter;
    designSmoother(&filter, 500.0f);
    tickSmoother(&filter, 1.0);
    tickSmoother(&filter, 2.0);
    designSmoother(&filter, 20.0f);
    EXPECT_EQ(filter.input1, 0.0);
    EXPECT_EQ(filter.input2, 0.0);
    EXPECT_EQ(filter.output1, 0.0);
    EXPECT_EQ(filter.output2, 0.0);
}

TEST(SmoothingFilter, DesignStoresAngleAndAlpha) {
    SmoothingFilter filter;
    designSmoother(&filter, 1000.0f);
    EXPECT_EQ(filter.omega, 1000.0 * 0.00014247585730565955);
    EXPECT_EQ(filter.alpha, std::sin(filter.omega) * 0.4545454446934474);
    EXPECT_NEAR(filter.omega, 2.0 * kPi * 1000.0 / 44100.0, 1e-15);
    EXPECT_NEAR(filter.alpha, std::sin(filter.omega) * 0.5 / static_cast<double>(1.1f), 1e-15);
}

TEST(SmoothingFilter, DesignGivesEveryCoefficient) {
    for (const float frequency : {0.0f, 0.1f, 10.0f, 1000.0f, 11025.0f, 22050.0f, -5.0f}) {
        SmoothingFilter filter;
        designSmoother(&filter, frequency);
        const double c = std::cos(filter.omega);
        EXPECT_EQ(filter.a0, filter.alpha + 1.0);
        EXPECT_EQ(filter.a1, c * -2.0);
        EXPECT_EQ(filter.a2, 1.0 - filter.alpha);
        EXPECT_EQ(filter.b0, 0.5 - c * 0.5);
        EXPECT_EQ(filter.b1, 1.0 - c);
        EXPECT_EQ(filter.b2, 0.5 - c * 0.5);
    }
}

TEST(SmoothingFilter, IsALowPassOfGainOne) {
    for (const float frequency : {50.0f, 1000.0f, 8000.0f}) {
        SmoothingFilter filter;
        designSmoother(&filter, frequency);
        EXPECT_NEAR(gainAt(filter, 0.0), 1.0, 1e-9);
        EXPECT_NEAR(gainAt(filter, 22050.0), 0.0, 1e-9);
        EXPECT_NEAR(gainAt(filter, static_cast<double>(frequency)), static_cast<double>(1.1f),
                    1e-9); // at its own frequency the gain is Q
    }
}

TEST(SmoothingFilter, ResultStaysInOutput1AndHistoryMovesOn) {
    SmoothingFilter filter;
    designSmoother(&filter, 700.0f);
    const double first = tickSmoother(&filter, 0.25);
    EXPECT_EQ(filter.output1, first);
    EXPECT_EQ(filter.input1, 0.25);
    const double second = tickSmoother(&filter, -1.5);
    EXPECT_EQ(filter.output1, second);
    EXPECT_EQ(filter.output2, first);
    EXPECT_EQ(filter.input1, -1.5);
    EXPECT_EQ(filter.input2, 0.25);
}

// With these coefficients dividing b2 and multiplying it by the reciprocal round differently.
TEST(SmoothingFilter, OldestInputIsDividedAndNotMultipliedByTheReciprocal) {
    SmoothingFilter filter{};
    filter.a0 = 49.0;
    filter.b2 = 49.0;
    filter.input2 = 1.0;
    ASSERT_NE(49.0 * (1.0 / 49.0), 1.0);
    EXPECT_EQ(tickSmoother(&filter, 0.0), 1.0);

    filter = {};
    filter.a0 = 49.0;
    filter.b1 = 49.0;
    filter.input1 = 1.0;
    EXPECT_EQ(tickSmoother(&filter, 0.0), 49.0 * (1.0 / 49.0));
}

TEST(SmoothingFilter, TicksBitForBitLikeTheReference) {
    const std::uint64_t seed = randomSeed(411);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 200; ++round) {
        const float frequency = dice.within(0.0f, 20000.0f);
        SmoothingFilter filter;
        ReferenceSmoother reference;
        designSmoother(&filter, frequency);
        reference.design(frequency);
        for (int i = 0; i < 500; ++i) {
            const double input = dice.unit() * 4.0 - 2.0;
            ASSERT_EQ(bitsOf(tickSmoother(&filter, input)), bitsOf(reference.tick(input)))
                << "round " << round << " sample " << i;
        }
    }
}
