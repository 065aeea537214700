#include "tests/support/BlockMemory.h"

#include "tests/support/Bits.h"

std::string BlockMemory::differenceFrom(const BlockMemory& expected) const {
    const std::ptrdiff_t at =
        firstDifference(samples_.data(), expected.samples_.data(), samples_.size());
    if (at < 0) {
        return "";
    }
    const auto index = static_cast<std::size_t>(at);
    return "the block's memory differs at " + std::to_string(at) + ": " +
           std::to_string(samples_[index]) + " instead of " +
           std::to_string(expected.samples_[index]) + "; ";
}
