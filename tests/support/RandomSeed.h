// The seed of the random tests.
#pragma once

#include <cstdint>

// `usual`, so that every run is the same, unless TVDELAY_TEST_SEED names another to replay or to
// search with. Tests put the seed in use into their failure messages.
std::uint64_t randomSeed(std::uint64_t usual);
