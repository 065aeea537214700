#include "effect/SweepPass.h"

#include "effect/DelayFields.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceDelay.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sys/mman.h>
#include <sys/resource.h>
#include <vector>

namespace {

constexpr std::int64_t kTableSize = 179692;

std::vector<double> sinesOf(const std::vector<double>& table, std::int64_t position,
                            std::int64_t length, std::int64_t count) {
    std::vector<double> sines;
    for (std::int64_t i = position; i < position + count; ++i) {
        const double phase = static_cast<double>(i) / static_cast<double>(length);
        const auto index = static_cast<std::int64_t>(phase * static_cast<double>(kTableSize));
        sines.push_back(table[static_cast<std::size_t>(std::min(index, kTableSize - 1))]);
    }
    return sines;
}

testing::AssertionResult gives(SweepPass& pass, const std::vector<double>& table,
                               std::int64_t position, std::int64_t length, std::int64_t count) {
    const double* const sines =
        pass.sines(table.data(), position, length, static_cast<VstInt32>(count));
    const std::vector<double> expected = sinesOf(table, position, length, count);
    const auto difference = firstDifference(sines, expected.data(), expected.size());
    if (difference < 0) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << count << " from " << position << " of " << length << ": number " << difference;
}

void goThrough(SweepPass& pass, const std::vector<double>& table, std::int64_t length,
               std::int64_t step) {
    for (std::int64_t position = 1; position < length; position += step) {
        ASSERT_TRUE(gives(pass, table, position, length, std::min(step, length - position)));
    }
}

} // namespace

TEST(SweepPass, GivesTheTablesEntriesInEveryOrder) {
    const std::uint64_t seed = randomSeed(0x5E);
    SCOPED_TRACE(testing::Message() << "TVDELAY_TEST_SEED=" << seed);
    Dice dice(seed);
    const std::vector<double>& table = ReferenceDelay::sineTable();
    SweepPass pass;
    for (int round = 0; round < 300; ++round) {
        static constexpr std::int64_t kLengths[] = {
            5, 64, 65, 255, 257, 2205, 10363, 44099, 191999, 192000, 192001, 1000000, 10000000000};
        const std::int64_t length = dice.pick(kLengths);
        std::int64_t position = dice.between(0, length - 1);
        for (int turn = 0; turn < 30; ++turn) {
            const std::int64_t count = dice.between(1, std::min<std::int64_t>(256, length));
            if (position + count > length) {
                position = dice.oneIn(2) ? 0 : dice.between(0, length - count);
            }
            ASSERT_TRUE(gives(pass, table, position, length, count)) << "round " << round;
            position += count;
            if (dice.oneIn(10)) {
                position = dice.between(0, length - 1);
            }
        }
    }
}

TEST(SweepPass, LooksEachPlaceUpOnce) {
    const std::vector<double>& table = ReferenceDelay::sineTable();
    for (const std::int64_t length : {100, 2205, 192000}) {
        SweepPass pass;
        goThrough(pass, table, length, 64);
        const std::vector<double> kept = sinesOf(table, 0, length, 64);
        const std::vector<double> others(table.size(), -1.0);
        const double* const again = pass.sines(others.data(), 0, length, 64);
        EXPECT_EQ(firstDifference(again, kept.data(), kept.size()), -1) << length;
    }
}

TEST(SweepPass, LooksUpAnewForAnotherLength) {
    const std::vector<double>& table = ReferenceDelay::sineTable();
    SweepPass pass;
    for (const std::int64_t length : {2205, 2206, 300, 2205, 200000, 2205}) {
        goThrough(pass, table, length, 200);
    }
}

// A sweep that is switched on in mid pass begins there, and each of the sub-blocks that follow has
// no more to look up than its own places.
TEST(SweepPass, BeginsAnywhereInAPass) {
    const std::vector<double>& table = ReferenceDelay::sineTable();
    SweepPass pass;
    ASSERT_TRUE(gives(pass, table, 5000, 44099, 64));
    ASSERT_TRUE(gives(pass, table, 20000, 44099, 64)); // not next to what is kept
    ASSERT_TRUE(gives(pass, table, 5000, 44099, 64));
    goThrough(pass, table, 44099, 64);
    goThrough(pass, table, 44099, 100);
}

TEST(SweepPass, PreparingLeavesWhatIsKept) {
    const std::vector<double>& table = ReferenceDelay::sineTable();
    SweepPass pass;
    goThrough(pass, table, 2205, 64);
    for (const std::int64_t length : {std::int64_t{-1}, std::int64_t{0}, std::int64_t{2205},
                                      std::int64_t{192000}, std::int64_t{1} << 62}) {
        pass.prepare(length);
        const std::vector<double> kept = sinesOf(table, 0, 2205, 2205);
        EXPECT_EQ(firstDifference(pass.expected(0), kept.data(), kept.size()), -1) << length;
    }
}

// Else the system would hand pages out in the middle of a block.
TEST(SweepPass, FirstPassFindsItsMemoryInPlace) {
    if (*TVDELAY_SANITIZERS != 0) {
        GTEST_SKIP() << "a sanitizer's own memory can't be told from the pass's";
    }
#ifndef MADV_POPULATE_WRITE
    GTEST_SKIP() << "this system gives memory only to who uses it";
#else
    alignas(4096) static char page[4096];
    if (madvise(page, sizeof page, MADV_POPULATE_WRITE) != 0) {
        GTEST_SKIP() << "this system gives memory only to who uses it";
    }
#endif
    const std::vector<double>& table = ReferenceDelay::sineTable();
    SweepPass pass;
    pass.prepare(192000);
    rusage before{};
    rusage after{};
    ASSERT_EQ(getrusage(RUSAGE_THREAD, &before), 0);
    double sum = 0.0;
    for (std::int64_t position = 0; position < 192000; position += 250) {
        sum += *pass.sines(table.data(), position, 192000, 250);
    }
    ASSERT_EQ(getrusage(RUSAGE_THREAD, &after), 0);
    EXPECT_GT(sum, 0.0);
    EXPECT_LT(after.ru_minflt - before.ru_minflt, 20);
}
