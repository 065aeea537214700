#include "soundlib/BiquadRunner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/Signal.h"

namespace {

BiquadDesigner randomFilter(Dice& dice) {
    return {static_cast<std::int32_t>(dice.between(0, 6)), 0.001 + dice.unit() * 0.498,
            0.1 + dice.unit() * 8.0, dice.unit() * 48.0 - 24.0};
}

std::vector<float> signal(Signal kind, Dice& dice, std::size_t count) {
    std::vector<float> samples(count);
    fillSignal(kind, dice.bits(), samples.data(), count);
    return samples;
}

// Sample by sample through `tickBiquad`.
std::vector<float> ticked(BiquadDesigner& filter, const std::vector<float>& input) {
    std::vector<float> output;
    output.reserve(input.size());
    for (const float sample : input) {
        output.push_back(static_cast<float>(tickBiquad(&filter, static_cast<double>(sample))));
    }
    return output;
}

// Where a cleared state stands against one too small for a float, zeros may differ in sign.
void dropSignsOfZero(std::vector<float>& samples) {
    for (float& sample : samples) {
        sample = sample == 0.0f ? 0.0f : sample;
    }
}

constexpr Signal kSignals[] = {Signal::kNoise,   Signal::kImpulses, Signal::kTone,
                               Signal::kSilence, Signal::kLoud,     Signal::kDenormals,
                               Signal::kHostile};

} // namespace

TEST(BiquadRunner, DefaultFilterPassesTheSignal) {
    BiquadDesigner filter;
    for (const double sample : {0.5, -1.25, 1e300, 0.0}) {
        EXPECT_EQ(tickBiquad(&filter, sample), sample);
    }
}

TEST(BiquadRunner, TickIsTheTransposedDirectForm) {
    BiquadDesigner filter;
    filter.a0 = 2.0;
    filter.a1 = 3.0;
    filter.a2 = 5.0;
    filter.b1 = 7.0;
    filter.b2 = 11.0;
    filter.state1 = 0.5;
    filter.state2 = 0.25;
    EXPECT_EQ(tickBiquad(&filter, 1.0), 2.5);
    EXPECT_EQ(filter.state1, 3.0 + 0.25 - 7.0 * 2.5);
    EXPECT_EQ(filter.state2, 5.0 - 11.0 * 2.5);
}

// y[n] = a0 x[n] + a1 x[n-1] + a2 x[n-2] - b1 y[n-1] - b2 y[n-2], in higher precision.
TEST(BiquadRunner, RealisesTheTransferFunction) {
    const std::uint64_t seed = randomSeed(422);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 100; ++round) {
        BiquadDesigner filter = randomFilter(dice);
        long double x1 = 0;
        long double x2 = 0;
        long double y1 = 0;
        long double y2 = 0;
        for (int i = 0; i < 2000; ++i) {
            const double x = dice.unit() * 2.0 - 1.0;
            const long double y = filter.a0 * static_cast<long double>(x) + filter.a1 * x1 +
                                  filter.a2 * x2 - filter.b1 * y1 - filter.b2 * y2;
            x2 = x1;
            x1 = x;
            y2 = y1;
            y1 = y;
            ASSERT_NEAR(tickBiquad(&filter, x), static_cast<double>(y),
                        1e-9 * (1.0 + std::fabs(static_cast<double>(y))))
                << round << " " << i;
        }
    }
}

TEST(BiquadRunner, BlockIsBitForBitTheTicks) {
    const std::uint64_t first = randomSeed(423);
    for (std::uint64_t seed = first; seed < first + 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        BiquadDesigner scalar = randomFilter(dice);
        BiquadDesigner block = scalar;
        const Signal kind = dice.pick(kSignals);
        for (int part = 0; part < 10; ++part) {
            const auto input = signal(kind, dice, static_cast<std::size_t>(dice.between(1, 400)));
            std::vector<float> expected = ticked(scalar, input);
            std::vector<float> output(input.size());
            runBiquad(&block, input.data(), output.data(), static_cast<std::int32_t>(input.size()));
            dropSignsOfZero(expected);
            dropSignsOfZero(output);
            ASSERT_EQ(-1, firstDifference(output.data(), expected.data(), output.size()));
            if (dice.oneIn(3)) {
                const double frequency = dice.unit() * 0.49;
                scalar.setFrequency(frequency);
                block.setFrequency(frequency);
            }
        }
    }
}

TEST(BiquadRunner, PairIsBitForBitTwoFilters) {
    const std::uint64_t first = randomSeed(424);
    for (std::uint64_t seed = first; seed < first + 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        BiquadDesigner scalars[] = {randomFilter(dice), randomFilter(dice)};
        BiquadDesigner pair[] = {scalars[0], scalars[1]};
        const Signal kind = dice.pick(kSignals);
        for (int part = 0; part < 10; ++part) {
            const auto count = static_cast<std::size_t>(dice.between(1, 400));
            std::vector<float> left = signal(kind, dice, count);
            std::vector<float> right = signal(kind, dice, count);
            std::vector<float> expectedLeft = ticked(scalars[0], left);
            std::vector<float> expectedRight = ticked(scalars[1], right);
            float* channels[] = {left.data(), right.data()}; // in place
            runBiquadPair(&pair[0], &pair[1], channels, channels, static_cast<std::int32_t>(count));
            for (std::vector<float>* samples : {&left, &right, &expectedLeft, &expectedRight}) {
                dropSignsOfZero(*samples);
            }
            ASSERT_EQ(-1, firstDifference(left.data(), expectedLeft.data(), count));
            ASSERT_EQ(-1, firstDifference(right.data(), expectedRight.data(), count));
        }
    }
}

TEST(BiquadRunner, BlockMayBeInPlace) {
    Dice dice(1);
    BiquadDesigner scalar(1, 0.1, 0.7, 0.0);
    BiquadDesigner block = scalar;
    std::vector<float> samples = signal(Signal::kNoise, dice, 1000);
    const std::vector<float> expected = ticked(scalar, samples);
    runBiquad(&block, samples.data(), samples.data(), 1000);
    EXPECT_EQ(samples, expected);
}

TEST(BiquadRunner, EmptyBlockLeavesTheState) {
    BiquadDesigner filter(0, 0.1, 0.7, 0.0);
    filter.state1 = 1e-200; // even one that a block would clear
    filter.state2 = 0.0;
    runBiquad(&filter, nullptr, nullptr, 0);
    runBiquad(&filter, nullptr, nullptr, -1);
    EXPECT_EQ(filter.state1, 1e-200);
}

TEST(BiquadRunner, StateThatHasDecayedIsCleared) {
    BiquadDesigner single(0, 0.05, 0.7, 0.0);
    BiquadDesigner left = single;
    BiquadDesigner right = single;
    std::vector<float> samples(100000);
    samples[0] = 1.0f;
    runBiquad(&single, samples.data(), samples.data(), 100000);
    EXPECT_EQ(single.state1, 0.0);
    EXPECT_EQ(single.state2, 0.0);

    std::vector<float> impulse(100000);
    std::vector<float> again(100000);
    impulse[0] = again[0] = 1.0f;
    float* channels[] = {impulse.data(), again.data()};
    runBiquadPair(&left, &right, channels, channels, 100000);
    EXPECT_EQ(left.state1, 0.0);
    EXPECT_EQ(left.state2, 0.0);
    EXPECT_EQ(right.state1, 0.0);
    EXPECT_EQ(right.state2, 0.0);
}

TEST(BiquadRunner, StateThatCanStillBeHeardIsKept) {
    BiquadDesigner filter(0, 0.05, 0.7, 0.0);
    filter.state1 = 1e-30; // far below anything but still a float
    float sample = 0.0f;
    runBiquad(&filter, &sample, &sample, 1);
    EXPECT_EQ(sample, 1e-30f);
    EXPECT_NE(filter.state1, 0.0);
}

TEST(BiquadRunner, FilterGoesOnRingingThroughACoefficientChange) {
    BiquadDesigner filter(0, 0.01, 10.0, 0.0);
    std::vector<float> samples(200);
    samples[0] = 1.0f;
    runBiquad(&filter, samples.data(), samples.data(), 200);
    const double state1 = filter.state1;
    filter.setFrequency(0.011);
    EXPECT_EQ(filter.state1, state1);
    float next = 0.0f;
    runBiquad(&filter, &next, &next, 1);
    EXPECT_EQ(next, static_cast<float>(state1));
    EXPECT_NE(next, 0.0f);
}
