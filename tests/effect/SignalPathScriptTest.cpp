// The signal path against the scalar model, bit for bit, over random sequences of what hosts do.
#include "tests/effect/ScriptRun.h"
#include "tests/support/RandomSeed.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

constexpr std::size_t kScripts = 50; // of each test
constexpr std::size_t kSteps = 60;

class SignalPathScript : public testing::TestWithParam<std::uint64_t> {};

} // namespace

TEST_P(SignalPathScript, GivesTheModelsBits) {
    const std::uint64_t first = randomSeed(GetParam());
    for (std::uint64_t seed = first; seed < first + kScripts; ++seed) {
        ASSERT_EQ(runAgainstModel(generateScript(seed, kSteps)), "")
            << "TVDELAY_TEST_SEED=" << seed << " begins with this script";
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SignalPathScript,
                         testing::Values(1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000));
