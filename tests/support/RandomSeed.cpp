#include "tests/support/RandomSeed.h"

#include <cstdlib>

std::uint64_t randomSeed(std::uint64_t usual) {
    const char* const named = std::getenv("TVDELAY_TEST_SEED");
    return named != nullptr ? std::strtoull(named, nullptr, 0) : usual;
}
