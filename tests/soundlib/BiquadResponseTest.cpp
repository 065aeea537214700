// The designs against the analogue filters that they stand for, in higher precision.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>

#include "soundlib/BiquadDesigner.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"

namespace {

using Wide = long double;
using Response = std::complex<Wide>;

constexpr Wide kPi = 3.14159265358979323846264338327950288L;

Response responseOf(const BiquadDesigner& filter, Wide frequency) {
    const Response z = std::polar<Wide>(1, -2 * kPi * frequency);
    return (Wide(filter.a0) + z * (Wide(filter.a1) + z * Wide(filter.a2))) /
           (Wide(1) + z * (Wide(filter.b1) + z * Wide(filter.b2)));
}

Wide decibels(const Response& response) {
    return 20 * std::log10(std::abs(response));
}

// The analogue filter at s, its own frequency at |s| = 1.
Response analogue(std::int32_t type, Response s, Wide q, Wide gainDb) {
    const Response s2 = s * s;
    const Wide v = std::pow(Wide(10), std::fabs(gainDb) / 20);
    const Wide root2 = std::sqrt(Wide(2));
    const Wide rootOf2V = std::sqrt(2 * v);
    Response boost;
    switch (type) {
    case 0:
        return Wide(1) / (s2 + s / q + Wide(1));
    case 1:
        return s2 / (s2 + s / q + Wide(1));
    case 2:
        return (s / q) / (s2 + s / q + Wide(1));
    case 3:
        return (s2 + Wide(1)) / (s2 + s / q + Wide(1));
    case 4:
        boost = (s2 + s * (v / q) + Wide(1)) / (s2 + s / q + Wide(1));
        break;
    case 5:
        boost = (s2 + s * rootOf2V + v) / (s2 + s * root2 + Wide(1));
        break;
    default:
        boost = (s2 * v + s * rootOf2V + Wide(1)) / (s2 + s * root2 + Wide(1));
        break;
    }
    return gainDb < 0 ? Wide(1) / boost : boost;
}

// Where the bilinear transform puts `frequency` of a filter designed at `centre`.
Response warped(Wide frequency, Wide centre) {
    return {0, std::tan(kPi * frequency) / std::tan(kPi * centre)};
}

} // namespace

class BiquadResponses : public testing::TestWithParam<std::int32_t> {};

TEST_P(BiquadResponses, AreThoseOfTheAnalogueFilter) {
    const std::int32_t type = GetParam();
    const std::uint64_t seed = randomSeed(421);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 300; ++round) {
        const double centre = 0.002 + dice.unit() * 0.49;
        const double q = 0.2 + dice.unit() * 10.0;
        const double gainDb = dice.unit() * 48.0 - 24.0;
        const BiquadDesigner filter(type, centre, q, gainDb);
        for (int i = 0; i < 40; ++i) {
            const Wide frequency = dice.unit() * 0.499;
            const Response expected = analogue(type, warped(frequency, centre), q, gainDb);
            const Response actual = responseOf(filter, frequency);
            ASSERT_LT(std::abs(actual - expected), 1e-8 * (1 + std::abs(expected)))
                << "centre " << centre << " q " << q << " gain " << gainDb << " at "
                << static_cast<double>(frequency);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryType, BiquadResponses, testing::Range(0, 7));

TEST(BiquadResponse, LowPassAtDcCentreAndNyquist) {
    const BiquadDesigner filter(0, 0.1, 2.5, 0.0);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.0L)), 1.0L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.1L)), 2.5L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.5L)), 0.0L, 1e-13);
}

TEST(BiquadResponse, HighPassAtDcCentreAndNyquist) {
    const BiquadDesigner filter(1, 0.1, 2.5, 0.0);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.0L)), 0.0L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.1L)), 2.5L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.5L)), 1.0L, 1e-13);
}

TEST(BiquadResponse, BandPassAtDcCentreAndNyquist) {
    const BiquadDesigner filter(2, 0.1, 2.5, 0.0);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.0L)), 0.0L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.1L)), 1.0L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.5L)), 0.0L, 1e-13);
}

TEST(BiquadResponse, NotchAtDcCentreAndNyquist) {
    const BiquadDesigner filter(3, 0.1, 2.5, 0.0);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.0L)), 1.0L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.1L)), 0.0L, 1e-13);
    EXPECT_NEAR(std::abs(responseOf(filter, 0.5L)), 1.0L, 1e-13);
}

TEST(BiquadResponse, PeakHasItsGainAtTheCentreOnly) {
    for (const double gainDb : {-12.0, 7.5}) {
        const BiquadDesigner filter(4, 0.1, 2.5, gainDb);
        EXPECT_NEAR(decibels(responseOf(filter, 0.0L)), 0.0L, 1e-12);
        EXPECT_NEAR(decibels(responseOf(filter, 0.1L)), gainDb, 1e-12);
        EXPECT_NEAR(decibels(responseOf(filter, 0.5L)), 0.0L, 1e-12);
    }
}

TEST(BiquadResponse, LowShelfHasItsGainAtDcAndHalfOfItNearTheCentre) {
    for (const double gainDb : {-12.0, 7.5}) {
        const BiquadDesigner filter(5, 0.1, 2.5, gainDb);
        EXPECT_NEAR(decibels(responseOf(filter, 0.0L)), gainDb, 1e-12);
        EXPECT_NEAR(decibels(responseOf(filter, 0.5L)), 0.0L, 1e-12);
        // At the centre the boost is |V - 1 + j sqrt(2 V)| / sqrt(2).
        const Wide v = std::pow(Wide(10), std::fabs(Wide(gainDb)) / 20);
        const Wide boost = 10 * std::log10(((v - 1) * (v - 1) + 2 * v) / 2);
        EXPECT_NEAR(decibels(responseOf(filter, 0.1L)), gainDb < 0 ? -boost : boost, 1e-12);
    }
}

TEST(BiquadResponse, HighShelfHasItsGainAtNyquist) {
    for (const double gainDb : {-12.0, 7.5}) {
        const BiquadDesigner filter(6, 0.1, 2.5, gainDb);
        EXPECT_NEAR(decibels(responseOf(filter, 0.0L)), 0.0L, 1e-12);
        EXPECT_NEAR(decibels(responseOf(filter, 0.5L)), gainDb, 1e-12);
        const Wide v = std::pow(Wide(10), std::fabs(Wide(gainDb)) / 20);
        const Wide boost = 10 * std::log10(((v - 1) * (v - 1) + 2 * v) / 2);
        EXPECT_NEAR(decibels(responseOf(filter, 0.1L)), gainDb < 0 ? -boost : boost, 1e-12);
    }
}

TEST(BiquadResponse, BoostAndCutCancel) {
    for (const std::int32_t type : {4, 5, 6}) {
        for (const double gainDb : {0.5, 6.0, 24.0}) {
            const BiquadDesigner boost(type, 0.03, 1.7, gainDb);
            const BiquadDesigner cut(type, 0.03, 1.7, -gainDb);
            for (int i = 0; i <= 100; ++i) {
                const Wide frequency = Wide(i) / 200;
                const Response both = responseOf(boost, frequency) * responseOf(cut, frequency);
                ASSERT_LT(std::abs(both - Wide(1)), 1e-11) << type << " " << gainDb << " " << i;
            }
        }
    }
}

TEST(BiquadResponse, LowBandAndHighPassAddUpToTheSignal) {
    const BiquadDesigner low(0, 0.03, 1.7, 0.0);
    const BiquadDesigner high(1, 0.03, 1.7, 0.0);
    const BiquadDesigner band(2, 0.03, 1.7, 0.0);
    const BiquadDesigner notched(3, 0.03, 1.7, 0.0);
    for (int i = 0; i <= 100; ++i) {
        const Wide frequency = Wide(i) / 200;
        const Response rest = responseOf(low, frequency) + responseOf(high, frequency);
        ASSERT_LT(std::abs(rest + responseOf(band, frequency) - Wide(1)), 1e-11);
        ASSERT_LT(std::abs(rest - responseOf(notched, frequency)), 1e-11);
    }
}

TEST(BiquadResponse, ShelvesMirrorEachOther) {
    for (const double gainDb : {-9.0, 9.0}) {
        const BiquadDesigner low(5, 0.1, 1.0, gainDb);
        const BiquadDesigner high(6, 0.4, 1.0, gainDb);
        for (int i = 0; i <= 100; ++i) {
            const Wide frequency = Wide(i) / 200;
            const Response mirrored = std::conj(responseOf(high, 0.5L - frequency));
            ASSERT_LT(std::abs(responseOf(low, frequency) - mirrored), 1e-11) << i;
        }
    }
}
