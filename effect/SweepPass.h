// The sweep's sine at each place of a pass over the delay lines, in the order in which the samples
// come to it.
//
// The sweep walks its table once a pass, in strides of several cache lines: with many instances
// that was what their samples waited for most. All passes of one length are alike, so what a pass
// finds in the table is kept, side by side, for those after it.
#pragma once

#include "effect/SubBlock.h"

#include <cstdint>
#include <memory>

// Where the sweep is in its pass, from 0.0 on and below 1.0.
inline double sweepPhaseAt(std::int64_t position, std::int64_t length) {
    return static_cast<double>(position) / static_cast<double>(length);
}

// The entry of the sine table for a phase; any phase is taken, not-a-numbers for the first entry.
std::int64_t sineIndexAt(double phase);

// Reserves memory for the longest pass that the lines hold, of which only what is used becomes
// real. Never throws. For the audio thread, but for one call.
class SweepPass {
public:
    // Makes the memory of passes of `length` real where the system can, which the audio thread
    // would else wait for in its first pass. Any thread; what is kept stays.
    void prepare(std::int64_t length);

    // The sines of the sub-block of `frames` samples at `position` in a pass of `length`, out of
    // `table`: always the same one. They stand until the next call.
    const double* sines(const double* table, std::int64_t position, std::int64_t length,
                        VstInt32 frames);

    // Where those of a sub-block at `position` will stand, to have them fetched.
    const double* expected(std::int64_t position) const { return kept_.get() + position; }

private:
    void keepChunk(const double* table, std::int64_t chunk);

    struct Release {
        void operator()(double* memory) const;
    };
    static double* reserve();

    std::unique_ptr<double, Release> kept_{reserve()}; // null where there was no memory
    std::int64_t prepared_ = 0;                        // the longest pass whose memory is real
    std::int64_t length_ = 0;                          // of the passes that it holds for
    std::int64_t firstChunk_ = 0;                      // the chunks that it holds,
    std::int64_t endChunk_ = 0;                        // in a row
    double unkept_[kMaxSubBlock];                      // what can't be kept
};
