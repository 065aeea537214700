#include "soundlib/BiquadDesigner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>

#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"

namespace {

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

struct Coefficients {
    double a0, a1, a2, b1, b2;
};

Coefficients coefficientsOf(const BiquadDesigner& filter) {
    return {filter.a0, filter.a1, filter.a2, filter.b1, filter.b2};
}

void expectSame(const Coefficients& actual, const Coefficients& expected) {
    EXPECT_TRUE(sameNumber(actual.a0, expected.a0)) << actual.a0 << " " << expected.a0;
    EXPECT_TRUE(sameNumber(actual.a1, expected.a1)) << actual.a1 << " " << expected.a1;
    EXPECT_TRUE(sameNumber(actual.a2, expected.a2)) << actual.a2 << " " << expected.a2;
    EXPECT_TRUE(sameNumber(actual.b1, expected.b1)) << actual.b1 << " " << expected.b1;
    EXPECT_TRUE(sameNumber(actual.b2, expected.b2)) << actual.b2 << " " << expected.b2;
}

// What the rows below are written in.
struct Terms {
    double v, k, k2, r, s, q, w, u;

    Terms(double frequency, double q, double gainDb)
        : v(std::pow(10.0, std::fabs(gainDb) * 0.05)), k(std::tan(frequency * 3.141592653589793)),
          k2(k * k), r(1.4142135623730951), s(std::sqrt(v + v)), q(q), w((1 / q) * k),
          u((v * (1 / q)) * k) {}
};

// One row for each law and sign of the gain.
Coefficients lowPass(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.k / t.q);
    const double a0 = t.k2 * norm;
    return {a0, 2 * a0, a0, (2 * t.k2 - 2) * norm, (1 + t.k2 - t.k / t.q) * norm};
}

Coefficients highPass(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.k / t.q);
    return {norm, -2 * norm, norm, (2 * t.k2 - 2) * norm, (1 + t.k2 - t.k / t.q) * norm};
}

Coefficients bandPass(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.k / t.q);
    const double a0 = (t.k / t.q) * norm;
    return {a0, 0.0, -a0, (2 * t.k2 - 2) * norm, (1 + t.k2 - t.k / t.q) * norm};
}

Coefficients notch(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.k / t.q);
    const double a0 = (1 + t.k2) * norm;
    const double a1 = (2 * t.k2 - 2) * norm;
    return {a0, a1, a0, a1, (1 + t.k2 - t.k / t.q) * norm};
}

Coefficients peakBoost(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.w);
    const double a1 = (2 * t.k2 - 2) * norm;
    return {(1 + t.k2 + t.u) * norm, a1, (1 + t.k2 - t.u) * norm, a1, (1 + t.k2 - t.w) * norm};
}

Coefficients peakCut(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.u);
    const double a1 = (2 * t.k2 - 2) * norm;
    return {(1 + t.k2 + t.w) * norm, a1, (1 + t.k2 - t.w) * norm, a1, (1 + t.k2 - t.u) * norm};
}

Coefficients lowShelfBoost(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.r * t.k);
    return {(1 + t.v * t.k2 + t.s * t.k) * norm, (2 * t.v * t.k2 - 2) * norm,
            (1 + t.v * t.k2 - t.s * t.k) * norm, (2 * t.k2 - 2) * norm,
            (1 - t.r * t.k + t.k2) * norm};
}

Coefficients lowShelfCut(const Terms& t) {
    const double norm = 1 / (1 + t.v * t.k2 + t.s * t.k);
    return {(1 + t.r * t.k + t.k2) * norm, (2 * t.k2 - 2) * norm, (1 - t.r * t.k + t.k2) * norm,
            (2 * t.v * t.k2 - 2) * norm, (1 + t.v * t.k2 - t.s * t.k) * norm};
}

Coefficients highShelfBoost(const Terms& t) {
    const double norm = 1 / (1 + t.k2 + t.r * t.k);
    return {(t.v + t.k2 + t.s * t.k) * norm, (norm + norm) * (t.k2 - t.v),
            (t.v + t.k2 - t.s * t.k) * norm, (2 * t.k2 - 2) * norm, (1 - t.r * t.k + t.k2) * norm};
}

Coefficients highShelfCut(const Terms& t) {
    const double norm = 1 / (t.v + t.k2 + t.s * t.k);
    return {(1 + t.r * t.k + t.k2) * norm, (2 * t.k2 - 2) * norm, (1 - t.r * t.k + t.k2) * norm,
            (norm + norm) * (t.k2 - t.v), (t.v + t.k2 - t.s * t.k) * norm};
}

using Row = Coefficients (*)(const Terms&);

// The row is right for whatever frequency, Q and magnitude of gain; `sign` picks boost or cut.
void expectRow(std::int32_t type, double sign, Row row) {
    const std::uint64_t seed = randomSeed(420 + static_cast<std::uint64_t>(type));
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 2000; ++round) {
        const double frequency = dice.unit() * 0.5;
        const double q = 0.05 + dice.unit() * 20.0;
        const double gainDb = sign * (round % 10 == 0 ? 0.0 : dice.unit() * 40.0);
        if (sign < 0.0 && gainDb == 0.0) {
            continue; // boost, even as a negative zero
        }
        SCOPED_TRACE(std::to_string(frequency) + " " + std::to_string(q) + " " +
                     std::to_string(gainDb));
        const BiquadDesigner filter(type, frequency, q, gainDb);
        expectSame(coefficientsOf(filter), row(Terms(frequency, q, gainDb)));
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

} // namespace

TEST(BiquadDesigner, HasItsFieldsInOrder) {
    const std::size_t offsets[] = {
        offsetof(BiquadDesigner, filterType), offsetof(BiquadDesigner, a0),
        offsetof(BiquadDesigner, a1),         offsetof(BiquadDesigner, a2),
        offsetof(BiquadDesigner, b1),         offsetof(BiquadDesigner, b2),
        offsetof(BiquadDesigner, frequency),  offsetof(BiquadDesigner, q),
        offsetof(BiquadDesigner, gainDb),     offsetof(BiquadDesigner, state1),
        offsetof(BiquadDesigner, state2)};
    for (std::size_t i = 0; i < std::size(offsets); ++i) {
        EXPECT_EQ(offsets[i], i * sizeof(double));
    }
    EXPECT_TRUE(std::is_standard_layout_v<BiquadDesigner>);
    EXPECT_FALSE(std::is_polymorphic_v<BiquadDesigner>);
}

TEST(BiquadDesigner, DefaultPassesThroughWhateverItsOtherFieldsWouldDesign) {
    const BiquadDesigner filter;
    EXPECT_EQ(filter.filterType, 0);
    EXPECT_EQ(filter.frequency, 0.5);
    EXPECT_EQ(filter.q, 0.707);
    EXPECT_EQ(filter.gainDb, 0.0);
    EXPECT_EQ(filter.state1, 0.0);
    EXPECT_EQ(filter.state2, 0.0);
    expectSame(coefficientsOf(filter), {1.0, 0.0, 0.0, 0.0, 0.0});
}

TEST(BiquadDesigner, FirstSetterDesignsFromTheDefaults) {
    BiquadDesigner filter;
    filter.setType(0);
    expectSame(coefficientsOf(filter), lowPass(Terms(0.5, 0.707, 0.0)));
    EXPECT_NE(filter.b1, 0.0);
}

TEST(BiquadDesigner, ValueConstructorStoresDesignsAndClearsTheState) {
    const BiquadDesigner filter(4, 0.1, 2.0, 6.0);
    EXPECT_EQ(filter.filterType, 4);
    EXPECT_EQ(filter.frequency, 0.1);
    EXPECT_EQ(filter.q, 2.0);
    EXPECT_EQ(filter.gainDb, 6.0);
    EXPECT_EQ(filter.state1, 0.0);
    EXPECT_EQ(filter.state2, 0.0);
    expectSame(coefficientsOf(filter), peakBoost(Terms(0.1, 2.0, 6.0)));
}

TEST(BiquadDesigner, EverySetterStoresAndRedesignsAtOnce) {
    BiquadDesigner filter(0, 0.1, 2.0, 6.0);
    filter.setFrequency(0.2);
    EXPECT_EQ(filter.frequency, 0.2);
    expectSame(coefficientsOf(filter), lowPass(Terms(0.2, 2.0, 6.0)));
    filter.setQ(0.9);
    EXPECT_EQ(filter.q, 0.9);
    expectSame(coefficientsOf(filter), lowPass(Terms(0.2, 0.9, 6.0)));
    filter.setType(4);
    EXPECT_EQ(filter.filterType, 4);
    expectSame(coefficientsOf(filter), peakBoost(Terms(0.2, 0.9, 6.0)));
    filter.setPeakGain(-3.0);
    EXPECT_EQ(filter.gainDb, -3.0);
    expectSame(coefficientsOf(filter), peakCut(Terms(0.2, 0.9, -3.0)));
    filter.setBiquad(6, 0.3, 0.5, 9.0);
    EXPECT_EQ(filter.filterType, 6);
    EXPECT_EQ(filter.frequency, 0.3);
    EXPECT_EQ(filter.q, 0.5);
    EXPECT_EQ(filter.gainDb, 9.0);
    expectSame(coefficientsOf(filter), highShelfBoost(Terms(0.3, 0.5, 9.0)));
}

TEST(BiquadDesigner, SettersLeaveTheState) {
    BiquadDesigner filter(0, 0.1, 2.0, 6.0);
    filter.state1 = 0.25;
    filter.state2 = -0.5;
    filter.setFrequency(0.2);
    filter.setQ(0.9);
    filter.setType(5);
    filter.setPeakGain(-3.0);
    filter.setBiquad(6, 0.3, 0.5, 9.0);
    EXPECT_EQ(filter.state1, 0.25);
    EXPECT_EQ(filter.state2, -0.5);
}

TEST(BiquadDesigner, UnknownTypeIsStoredAndLeavesTheCoefficients) {
    for (const std::int32_t type : {7, -1, 1000, std::numeric_limits<std::int32_t>::min(),
                                    std::numeric_limits<std::int32_t>::max()}) {
        BiquadDesigner filter(0, 0.1, 2.0, 6.0);
        const Coefficients before = coefficientsOf(filter);
        filter.setType(type);
        EXPECT_EQ(filter.filterType, type);
        expectSame(coefficientsOf(filter), before);
        filter.setFrequency(0.2);
        EXPECT_EQ(filter.frequency, 0.2);
        expectSame(coefficientsOf(filter), before);
        filter.setType(1);
        expectSame(coefficientsOf(filter), highPass(Terms(0.2, 2.0, 6.0)));
    }
}

TEST(BiquadDesigner, ConstructedWithAnUnknownTypePassesThrough) {
    const BiquadDesigner filter(7, 0.1, 2.0, 6.0);
    EXPECT_EQ(filter.filterType, 7);
    EXPECT_EQ(filter.frequency, 0.1);
    expectSame(coefficientsOf(filter), {1.0, 0.0, 0.0, 0.0, 0.0});
}

TEST(BiquadDesigner, LowPassFollowsItsRow) {
    expectRow(0, 1.0, lowPass);
}
TEST(BiquadDesigner, HighPassFollowsItsRow) {
    expectRow(1, 1.0, highPass);
}
TEST(BiquadDesigner, BandPassFollowsItsRow) {
    expectRow(2, 1.0, bandPass);
}
TEST(BiquadDesigner, NotchFollowsItsRow) {
    expectRow(3, 1.0, notch);
}
TEST(BiquadDesigner, PeakBoostFollowsItsRow) {
    expectRow(4, 1.0, peakBoost);
}
TEST(BiquadDesigner, PeakCutFollowsItsRow) {
    expectRow(4, -1.0, peakCut);
}
TEST(BiquadDesigner, LowShelfBoostFollowsItsRow) {
    expectRow(5, 1.0, lowShelfBoost);
}
TEST(BiquadDesigner, LowShelfCutFollowsItsRow) {
    expectRow(5, -1.0, lowShelfCut);
}
TEST(BiquadDesigner, HighShelfBoostFollowsItsRow) {
    expectRow(6, 1.0, highShelfBoost);
}
TEST(BiquadDesigner, HighShelfCutFollowsItsRow) {
    expectRow(6, -1.0, highShelfCut);
}

TEST(BiquadDesigner, GainOfZeroTakesTheBoostFormAndChangesNothing) {
    for (const double zero : {0.0, -0.0}) {
        for (const std::int32_t type : {4, 5, 6}) {
            const BiquadDesigner filter(type, 0.07, 1.3, zero);
            EXPECT_NEAR(filter.a0, 1.0, 1e-15);
            EXPECT_NEAR(filter.a1, filter.b1, 1e-15);
            EXPECT_NEAR(filter.a2, filter.b2, 1e-15);
        }
    }
    expectSame(coefficientsOf(BiquadDesigner(4, 0.07, 1.3, -0.0)),
               peakBoost(Terms(0.07, 1.3, 0.0)));
    expectSame(coefficientsOf(BiquadDesigner(5, 0.07, 1.3, -0.0)),
               lowShelfBoost(Terms(0.07, 1.3, 0.0)));
    expectSame(coefficientsOf(BiquadDesigner(6, 0.07, 1.3, -0.0)),
               highShelfBoost(Terms(0.07, 1.3, 0.0)));
}

TEST(BiquadDesigner, ShelvesDoNotReadTheQ) {
    for (const std::int32_t type : {5, 6}) {
        for (const double gainDb : {-9.0, 9.0}) {
            const BiquadDesigner usual(type, 0.07, 0.707, gainDb);
            for (const double q : {0.0, -3.0, 100.0, kNotANumber}) {
                expectSame(coefficientsOf(BiquadDesigner(type, 0.07, q, gainDb)),
                           coefficientsOf(usual));
            }
        }
    }
}

TEST(BiquadDesigner, FirstFourTypesDoNotReadTheGain) {
    for (const std::int32_t type : {0, 1, 2, 3}) {
        const BiquadDesigner usual(type, 0.07, 0.707, 0.0);
        for (const double gainDb : {-200.0, 12.0, kNotANumber}) {
            expectSame(coefficientsOf(BiquadDesigner(type, 0.07, 0.707, gainDb)),
                       coefficientsOf(usual));
        }
    }
}

TEST(BiquadDesigner, HalfTheSampleRateRunsThroughWithAVeryLargeTangent) {
    const double k = std::tan(0.5 * 3.141592653589793);
    EXPECT_GT(k, 1e16);
    expectSame(coefficientsOf(BiquadDesigner(0, 0.5, 0.707, 0.0)), lowPass(Terms(0.5, 0.707, 0.0)));
    const BiquadDesigner filter(0, 0.5, 0.707, 0.0);
    EXPECT_NEAR(filter.a0, 1.0, 1e-12);
    EXPECT_NEAR(filter.a1, filter.b1, 1e-12);
}

TEST(BiquadDesigner, QOfZeroDividesByZero) {
    const BiquadDesigner lowPassFilter(0, 0.1, 0.0, 0.0);
    EXPECT_EQ(lowPassFilter.a0, 0.0);
    EXPECT_TRUE(std::isnan(lowPassFilter.b2));
    EXPECT_TRUE(std::isnan(BiquadDesigner(4, 0.1, 0.0, 3.0).a0));
}
