#include "host/measure/FrequencyResponse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <vector>

using namespace tvhost;

TEST(FrequencyResponse, OfASingleSampleIsFlatWhereverItLies) {
    for (const std::size_t at : {0u, 1u, 4409u}) {
        std::vector<float> samples(4410, 0.0f);
        samples[at] = 0.5f;
        const FrequencyResponse response(samples.data(), samples.size(), 44100.0);
        for (int hertz = 0; hertz <= 22050; hertz += 97) {
            ASSERT_NEAR(response.decibelsAt(hertz), -6.0206, 0.001) << at << ", " << hertz;
        }
    }
}

TEST(FrequencyResponse, OfAOnePoleLowPassFollowsItsFormula) {
    constexpr double kRate = 44100.0;
    constexpr double kCoefficient = 0.1;
    std::vector<float> samples(3000);
    double state = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        state += kCoefficient * ((i == 0 ? 1.0 : 0.0) - state);
        samples[i] = static_cast<float>(state);
    }
    const FrequencyResponse response(samples.data(), samples.size(), kRate);
    for (int step = 0; step <= 72; ++step) {
        const double hertz = 20.0 * std::pow(1.1, step);
        const std::complex<double> z = std::polar(1.0, 2.0 * M_PI * hertz / kRate);
        const double gain = std::abs(kCoefficient / (1.0 - (1.0 - kCoefficient) / z));
        ASSERT_NEAR(response.decibelsAt(hertz), 20.0 * std::log10(gain), 0.01) << hertz;
    }
}

TEST(FrequencyResponse, SeesANotch) {
    // Two equal samples d apart cancel at half of rate / d.
    std::vector<float> samples(101, 0.0f);
    samples[0] = 0.5f;
    samples[100] = 0.5f;
    const FrequencyResponse response(samples.data(), samples.size(), 44100.0);
    EXPECT_LT(response.decibelsAt(220.5), -50.0);
    EXPECT_NEAR(response.decibelsAt(441.0), 0.0, 0.01);
}

TEST(FrequencyResponse, TakesStretchesLongerThanTheUsualTransform) {
    std::vector<float> samples(100000, 0.0f);
    samples[99999] = 1.0f;
    const FrequencyResponse response(samples.data(), samples.size(), 44100.0);
    EXPECT_NEAR(response.decibelsAt(1000.0), 0.0, 0.01);
}

TEST(FrequencyResponse, OfNothingIsNothing) {
    const FrequencyResponse response(nullptr, 0, 44100.0);
    EXPECT_EQ(response.decibelsAt(1000.0), -std::numeric_limits<double>::infinity());
}

TEST(FrequencyResponse, StaysAtItsEndsBeyondThem) {
    const float sample = 1.0f;
    const FrequencyResponse response(&sample, 1, 44100.0);
    EXPECT_NEAR(response.decibelsAt(-100.0), 0.0, 0.001);
    EXPECT_NEAR(response.decibelsAt(1e6), 0.0, 0.001);
}
