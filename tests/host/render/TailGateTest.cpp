#include "host/render/TailGate.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace tvhost;

namespace {

// How many frames of the tail belong to the output.
std::size_t lengthOf(TailGate gate, const std::vector<float>& tail) {
    std::size_t length = 0;
    for (std::size_t i = 0; !gate.isFinished() && i < tail.size(); ++i) {
        gate.push(&tail[i]);
        length += gate.ready().size();
        gate.ready().clear();
    }
    return length;
}

std::vector<float> clicks(std::size_t length, const std::vector<std::size_t>& at,
                          float level = 0.1f) {
    std::vector<float> tail(length, 0.0f);
    for (const std::size_t frame : at) {
        tail[frame] = level;
    }
    return tail;
}

} // namespace

TEST(TailGate, EndsBehindTheLastFrameThatIsHeard) {
    EXPECT_EQ(lengthOf(TailGate::untilQuiet(1, 100, 1000, 0), clicks(1000, {10, 90, 150})), 151u);
}

TEST(TailGate, DoesNotTakeAGapForTheEnd) {
    // 99 quiet frames lie between, one less than would end it.
    EXPECT_EQ(lengthOf(TailGate::untilQuiet(1, 100, 1000, 0), clicks(1000, {10, 110})), 111u);
    EXPECT_EQ(lengthOf(TailGate::untilQuiet(1, 100, 1000, 0), clicks(1000, {10, 111})), 11u);
}

TEST(TailGate, IsEmptyWhereNothingIsHeard) {
    EXPECT_EQ(lengthOf(TailGate::untilQuiet(1, 100, 1000, 0), clicks(1000, {})), 0u);
}

TEST(TailGate, HearsFromMinus90Decibels) {
    const float threshold = std::pow(10.0f, -90.0f / 20.0f);
    EXPECT_EQ(
        lengthOf(TailGate::untilQuiet(1, 100, 1000, 0), clicks(1000, {10}, threshold * 1.001f)),
        11u);
    EXPECT_EQ(
        lengthOf(TailGate::untilQuiet(1, 100, 1000, 0), clicks(1000, {10}, threshold * 0.999f)),
        0u);
    EXPECT_EQ(
        lengthOf(TailGate::untilQuiet(1, 100, 1000, 0), clicks(1000, {10}, -threshold * 1.001f)),
        11u);
}

TEST(TailGate, EndsAtTheLatestAtItsLimit) {
    EXPECT_EQ(lengthOf(TailGate::untilQuiet(1, 100, 500, 0), std::vector<float>(1000, 0.5f)), 500u);
}

TEST(TailGate, WaitsForWhatIsToCome) {
    EXPECT_EQ(lengthOf(TailGate::untilQuiet(1, 100, 1000, 300), clicks(1000, {350})), 351u);
    EXPECT_EQ(lengthOf(TailGate::untilQuiet(1, 100, 1000, -5000), clicks(1000, {50})), 51u);
}

TEST(TailGate, OfAFixedLengthKeepsSilenceToo) {
    EXPECT_EQ(lengthOf(TailGate::ofLength(1, 250), clicks(1000, {300})), 250u);
    EXPECT_EQ(lengthOf(TailGate::ofLength(1, 0), clicks(1000, {300})), 0u);
}

TEST(TailGate, HearsEitherChannelAndKeepsBoth) {
    TailGate gate = TailGate::untilQuiet(2, 10, 100, 0);
    const float quiet[] = {1e-6f, 2e-6f};
    const float right[] = {0.0f, 0.5f};
    gate.push(quiet);
    EXPECT_TRUE(gate.ready().empty());
    gate.push(right);
    EXPECT_EQ(gate.ready(), (std::vector<float>{1e-6f, 2e-6f, 0.0f, 0.5f}));
}
