// The factors by which the sweep dips one output over a sub-block.
#pragma once

#include "effect/SubBlockVectors.h"

#include <cstdint>

namespace {

class SubBlockSweep {
public:
    TVDELAY_INLINE explicit SubBlockSweep(const SubBlock& subBlock)
        : sineTable_(subBlock.sineTable) {
        const auto start = static_cast<double>(subBlock.held.delayPosition);
        const auto length = static_cast<double>(subBlock.held.delayLength);
        const auto size = static_cast<double>(subBlock.sineTableSize);
        const double depth = subBlock.held.panDepth;
        position_ = Doubles4{start, start + 1.0, start + 2.0, start + 3.0};
        length_ = Doubles4{length, length, length, length};
        size_ = Doubles4{size, size, size, size};
        depth_ = Doubles4{depth, depth, depth, depth};
        const double step = size / length;
        step_ = static_cast<std::uint64_t>(step * kOne);
        ahead_ =
            static_cast<std::uint64_t>(static_cast<double>(subBlock.nextPosition) * step * kOne);
    }

    // The factors of four frames more.
    TVDELAY_INLINE void next(Doubles4& factor) {
        const Ints4 index = __builtin_convertvector((position_ / length_) * size_, Ints4);
        position_ += 4.0;
        unsigned at[4];
        store(index, at);
        const Doubles4 sine = {sineTable_[at[0]], sineTable_[at[1]], sineTable_[at[2]],
                               sineTable_[at[3]]};
        factor = 1.0 - depth_ * sine;
    }

    // Has the table fetched for four frames of the next sub-block. The sweep walks it in strides
    // of more than a cache line, and until this instance's turn comes again, those of others take
    // its place.
    TVDELAY_INLINE void fetchAhead() {
        for (int frame = 0; frame < 4; ++frame) {
            __builtin_prefetch(sineTable_ + (ahead_ >> 32));
            ahead_ += step_;
        }
    }

private:
    static constexpr double kOne = 4294967296.0; // of a table index in 32 and 32 bits

    Doubles4 position_;
    Doubles4 length_;
    Doubles4 size_;
    Doubles4 depth_;
    const double* sineTable_;
    std::uint64_t ahead_; // table index in 32 and 32 bits, rounding aside
    std::uint64_t step_;
};

} // namespace
