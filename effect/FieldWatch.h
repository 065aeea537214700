// Reading the fields that a sub-block is held to, and seeing that they are still the same.
#pragma once

#include "effect/LiveField.h"
#include "effect/SubBlock.h"

#include <cstring>

namespace {

[[gnu::always_inline]] inline SampleFields readSampleFields(const DelayFields& live) {
    SampleFields fields;
    fields.delayLength = readLive(live.delayLength);
    fields.delayPosition = readLive(live.delayPosition);
    fields.lowPass = readLive(live.lowPass);
    fields.highPass = readLive(live.highPass);
    fields.leftRight = readLive(live.leftRight);
    fields.mix = readLive(live.mix);
    fields.panDepth = readLive(live.panDepth);
    fields.feedBack = readLive(live.feedBack);
    fields.highPassType = readLive(live.highPassType);
    fields.lowPassType = readLive(live.lowPassType);
    return fields;
}

[[gnu::always_inline]] inline HeldFilter holdFilter(FourPoleFilter* filter) {
    return {filter, readLive(filter->lowGain), readLive(filter->midGain),
            readLive(filter->highGain)};
}

// Zero for equal bits.
[[gnu::always_inline]] inline std::uint64_t bitDifference(double a, double b) {
    std::uint64_t first;
    std::uint64_t second;
    std::memcpy(&first, &a, sizeof(first));
    std::memcpy(&second, &b, sizeof(second));
    return first ^ second;
}

[[gnu::always_inline]] inline std::uint64_t bitDifference(float a, float b) {
    std::uint32_t first;
    std::uint32_t second;
    std::memcpy(&first, &a, sizeof(first));
    std::memcpy(&second, &b, sizeof(second));
    return first ^ second;
}

[[gnu::always_inline]] inline std::uint64_t bitDifference(std::int64_t a, std::int64_t b) {
    return static_cast<std::uint64_t>(a ^ b);
}

[[gnu::always_inline]] inline std::uint64_t bitDifference(bool a, bool b) {
    return a != b ? 1 : 0;
}

[[gnu::always_inline]] inline std::uint64_t changeOf(const HeldFilter& held) {
    const HeldFilter now = holdFilter(held.filter);
    return bitDifference(now.lowGain, held.lowGain) | bitDifference(now.midGain, held.midGain) |
           bitDifference(now.highGain, held.highGain);
}

// Whether all that a sample depends on is what it is held to be, with `kPairs` pairs running, and
// nobody has begun to clear the lines.
template <int kPairs>
[[gnu::always_inline]] inline bool stillHolds(const SubBlock& subBlock) {
    const SampleFields& held = subBlock.held;
    const SampleFields now = readSampleFields(*subBlock.live);
    std::uint64_t change =
        (subBlock.clearing->begun() ^ subBlock.clearingsBegun) |
        bitDifference(now.delayLength, held.delayLength) |
        bitDifference(now.delayPosition, held.delayPosition) |
        bitDifference(now.lowPass, held.lowPass) | bitDifference(now.highPass, held.highPass) |
        bitDifference(now.leftRight, held.leftRight) | bitDifference(now.mix, held.mix) |
        bitDifference(now.panDepth, held.panDepth) | bitDifference(now.feedBack, held.feedBack) |
        bitDifference(now.highPassType, held.highPassType) |
        bitDifference(now.lowPassType, held.lowPassType);
    for (int pair = 0; pair < kPairs; ++pair) {
        change |= changeOf(subBlock.pairs[pair].steady) | changeOf(subBlock.pairs[pair].dipped);
    }
    return change == 0;
}

} // namespace
