#include "host/measure/EchoAnalysis.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace tvhost;

namespace {

constexpr double kRate = 44100.0;

std::vector<float> response(std::size_t length,
                            const std::vector<std::pair<std::size_t, double>>& clicks) {
    std::vector<float> samples(length, 0.0f);
    for (const auto& [frame, level] : clicks) {
        samples[frame] += static_cast<float>(level);
    }
    return samples;
}

} // namespace

TEST(EchoAnalysis, FindsEachEchoWithItsTimeAndLevel) {
    const EchoAnalysis echoes(
        response(44100, {{0, 1.0}, {4410, -0.5}, {8820, 0.25}, {13230, -0.125}}), kRate);
    ASSERT_EQ(echoes.arrivals().size(), 4u);
    EXPECT_TRUE(echoes.hasDirect());
    ASSERT_EQ(echoes.echoCount(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(echoes.echo(i).frame, 4410 * static_cast<std::int64_t>(i + 1));
        EXPECT_DOUBLE_EQ(echoes.echo(i).level, std::pow(0.5, static_cast<double>(i + 1)));
    }
}

TEST(EchoAnalysis, FirstEchoIsTheFirstArrivalWithoutDirectSound) {
    const EchoAnalysis echoes(response(44100, {{3526, 0.7}}), kRate);
    EXPECT_FALSE(echoes.hasDirect());
    ASSERT_EQ(echoes.echoCount(), 1u);
    EXPECT_EQ(echoes.echo(0).frame, 3526);
}

TEST(EchoAnalysis, SilenceHasNoEchoes) {
    EXPECT_EQ(EchoAnalysis(std::vector<float>(1000), kRate).arrivals().size(), 0u);
    EXPECT_EQ(EchoAnalysis({}, kRate).arrivals().size(), 0u);
}

TEST(EchoAnalysis, HearsDownToMinus120Decibels) {
    EXPECT_EQ(EchoAnalysis(response(5000, {{2000, 1.01e-6}}), kRate).echoCount(), 1u);
    EXPECT_EQ(EchoAnalysis(response(5000, {{2000, 0.99e-6}}), kRate).echoCount(), 0u);
}

TEST(EchoAnalysis, FindsEchoesThatGrow) {
    const EchoAnalysis echoes(response(44100, {{5000, 0.01}, {10000, 0.1}, {15000, 1.0}}), kRate);
    ASSERT_EQ(echoes.echoCount(), 3u);
    EXPECT_EQ(echoes.echo(2).frame, 15000);
}

TEST(EchoAnalysis, FindsMoreEchoesThanAnyoneCounts) {
    std::vector<std::pair<std::size_t, double>> clicks;
    for (std::size_t i = 1; i <= 200; ++i) {
        clicks.emplace_back(i * 500, 0.5);
    }
    EXPECT_EQ(EchoAnalysis(response(200000, clicks), kRate).echoCount(), 200u);
}

TEST(EchoAnalysis, TakesASmearedEchoForOneWithItsHighestSample) {
    std::vector<float> samples(20000, 0.0f);
    // An oscillation that swells and fades over 10 ms.
    for (int i = -220; i <= 220; ++i) {
        samples[static_cast<std::size_t>(8000 + i)] = static_cast<float>(
            0.5 * std::exp(-i * i / 5000.0) * std::cos(2.0 * M_PI * 3000.0 * i / kRate));
    }
    const EchoAnalysis echoes(samples, kRate);
    ASSERT_EQ(echoes.echoCount(), 1u);
    EXPECT_EQ(echoes.echo(0).frame, 8000);
    EXPECT_DOUBLE_EQ(echoes.echo(0).level, 0.5);
}

TEST(EchoAnalysis, TellsEchoesApartFromSixMillisecondsOn) {
    const auto at = [](double seconds) { return static_cast<std::size_t>(seconds * kRate); };
    EXPECT_EQ(EchoAnalysis(response(9000, {{at(0.05), 0.5}, {at(0.056), 0.4}}), kRate).echoCount(),
              2u);
    EXPECT_EQ(EchoAnalysis(response(9000, {{at(0.05), 0.5}, {at(0.054), 0.4}}), kRate).echoCount(),
              1u);
}

TEST(EchoAnalysis, EachEchoOwnsTheFramesUpToTheNext) {
    const EchoAnalysis echoes(response(44100, {{0, 1.0}, {4410, 0.5}, {8820, 0.25}}), kRate);
    const std::vector<Echo>& arrivals = echoes.arrivals();
    ASSERT_EQ(arrivals.size(), 3u);
    EXPECT_EQ(arrivals[0].begin, 0);
    EXPECT_EQ(arrivals[2].end, 44100);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_LE(arrivals[i].begin, arrivals[i].frame);
        EXPECT_LT(arrivals[i].frame, arrivals[i].end);
        if (i > 0) {
            EXPECT_EQ(arrivals[i].begin, arrivals[i - 1].end);
        }
    }
}

TEST(EchoAnalysis, DecayingSoundWithoutGapsIsOneArrival) {
    std::vector<float> samples(44100);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<float>(std::exp(-static_cast<double>(i) / 4000.0));
    }
    const EchoAnalysis echoes(samples, kRate);
    EXPECT_EQ(echoes.arrivals().size(), 1u);
    EXPECT_TRUE(echoes.hasDirect());
}
