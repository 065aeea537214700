#include "soundlib/ChorusUnitMaker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

using UnitPointer = std::unique_ptr<ChorusUnit, decltype(&destroyChorusUnit)>;

UnitPointer makeUnit() {
    return UnitPointer(makeChorusUnit(), destroyChorusUnit);
}

} // namespace

TEST(ChorusUnitMaker, LinesAreClearedAndTheUnitStartsSilent) {
    const UnitPointer unit = makeUnit();
    const auto isZero = [](double value) { return value == 0.0; };
    EXPECT_TRUE(std::all_of(unit->delayLineLeft, unit->delayLineLeft + 8192, isZero));
    EXPECT_TRUE(std::all_of(unit->delayLineRight, unit->delayLineRight + 8192, isZero));
    EXPECT_EQ(unit->writeIndex, 0);
    std::vector<float> left(20000);
    std::vector<float> right(20000);
    float* channels[] = {left.data(), right.data()};
    process(unit.get(), channels, channels, 20000);
    EXPECT_EQ(left, std::vector<float>(20000));
    EXPECT_EQ(right, std::vector<float>(20000));
}

TEST(ChorusUnitMaker, SmoothersAreDesignedAtTheirFrequencies) {
    const UnitPointer unit = makeUnit();
    SmoothingFilter delay;
    SmoothingFilter wet;
    designSmoother(&delay, kDelaySmootherFrequency);
    designSmoother(&wet, kWetSmootherFrequency);
    EXPECT_EQ(unit->delaySmoother->a1, delay.a1);
    EXPECT_EQ(unit->delaySmoother->alpha, delay.alpha);
    EXPECT_EQ(unit->wetSmoother->a1, wet.a1);
    EXPECT_EQ(unit->wetSmoother->alpha, wet.alpha);
    EXPECT_NE(unit->delaySmoother, unit->wetSmoother);
}

TEST(ChorusUnitMaker, FirstSampleIsDelayedLikeAnyLaterOne) {
    const UnitPointer unit = makeUnit();
    unit->setDepth(0.0f);
    std::vector<float> left(400);
    std::vector<float> right(400);
    left[0] = 0.5f;
    float* channels[] = {left.data(), right.data()};
    process(unit.get(), channels, channels, 400);
    // Half of 441 samples lies between two, at half of the wet level.
    EXPECT_EQ(left[0], 0.5f);
    EXPECT_NEAR(left[220], 0.125f, 1e-6f);
    EXPECT_NEAR(left[221], 0.125f, 1e-6f);
    left[0] = left[220] = left[221] = 0.0f;
    EXPECT_LT(*std::max_element(left.begin(), left.end()), 1e-6f);
}

TEST(ChorusUnitMaker, SweepStaysWithinItsSettings) {
    const UnitPointer unit = makeUnit();
    float silence[2] = {};
    float* channels[] = {&silence[0], &silence[1]};
    double highest = 0.0;
    for (int i = 0; i < 100000; ++i) {
        process(unit.get(), channels, channels, 1);
        highest = std::max(highest, unit->lfoValue);
        ASSERT_GE(unit->lfoValue, 0.0);
        ASSERT_NEAR(unit->delaySmoother->output1, 0.5, 1e-9);
        ASSERT_NEAR(unit->wetSmoother->output1, 0.5, 1e-9);
    }
    EXPECT_NEAR(highest, 0.25 * 441.0, unit->lfoDepth * 0.001);
}

// What the two design frequencies were chosen for.
TEST(ChorusUnitMaker, DelayJumpBendsThePitchByLessThanHalfAnOctave) {
    const UnitPointer unit = makeUnit();
    designSmoother(unit->delaySmoother, kDelaySmootherFrequency);
    double before = 0.0;
    double fastest = 0.0;
    for (int i = 0; i < 44100; ++i) {
        const double delay = 441.0 * tickSmoother(unit->delaySmoother, 1.0);
        fastest = std::max(fastest, std::fabs(delay - before));
        before = delay;
    }
    EXPECT_LT(12.0 * std::log2(1.0 + fastest), 6.0);
    EXPECT_NEAR(before, 441.0, 1e-6);
}

TEST(ChorusUnitMaker, DestroyingNothingIsAllowed) {
    destroyChorusUnit(nullptr);
}
