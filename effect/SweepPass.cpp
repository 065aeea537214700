#include "effect/SweepPass.h"

#include "effect/DelayFields.h"
#include "plugin/Truncation.h"

#include <algorithm>
#include <cstddef>
#include <sys/mman.h>

namespace {

// How many sines are looked up at once, when one of them is needed.
constexpr std::int64_t kChunk = 64;
static_assert(DelayFields::kDelayCapacity % kChunk == 0);

constexpr std::size_t kBytes = sizeof(double) * DelayFields::kDelayCapacity;

void lookUp(const double* table, std::int64_t position, std::int64_t length, std::int64_t count,
            double* sines) {
    for (std::int64_t i = 0; i < count; ++i) {
        sines[i] = table[sineIndexAt(sweepPhaseAt(position + i, length))];
    }
}

} // namespace

std::int64_t sineIndexAt(double phase) {
    const std::int64_t index =
        truncateToInt64(phase * static_cast<double>(DelayFields::kSineTableSize));
    return std::clamp<std::int64_t>(index, 0, DelayFields::kSineTableSize - 1);
}

// From the system: a page of it takes memory once it is used, and an effect without it does its
// work as well.
double* SweepPass::reserve() {
    void* const memory =
        mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<double*>(memory);
}

void SweepPass::Release::operator()(double* memory) const {
    munmap(memory, kBytes);
}

void SweepPass::prepare(std::int64_t length) {
    const std::int64_t end = std::min(length, DelayFields::kDelayCapacity);
    if (kept_ == nullptr || end <= prepared_) {
        return;
    }
    prepared_ = end;
#ifdef MADV_POPULATE_WRITE // Linux 5.14 and later; elsewhere the first pass waits a little
    madvise(kept_.get(), sizeof(double) * static_cast<std::size_t>(end), MADV_POPULATE_WRITE);
#endif
}

const double* SweepPass::sines(const double* table, std::int64_t position, std::int64_t length,
                               VstInt32 frames) {
    if (kept_ == nullptr || length > DelayFields::kDelayCapacity) {
        lookUp(table, position, length, frames, unkept_);
        return unkept_;
    }
    if (length != length_) {
        length_ = length;
        firstChunk_ = endChunk_ = 0;
    }
    const std::int64_t last = (position + frames - 1) / kChunk;
    for (std::int64_t chunk = position / kChunk; chunk <= last; ++chunk) {
        keepChunk(table, chunk);
    }
    return kept_.get() + position;
}

void SweepPass::keepChunk(const double* table, std::int64_t chunk) {
    if (chunk < firstChunk_ || chunk > endChunk_) {
        firstChunk_ = endChunk_ = chunk; // in a row again from here on
    }
    if (chunk == endChunk_) {
        const std::int64_t position = chunk * kChunk;
        lookUp(table, position, length_, kChunk, kept_.get() + position);
        ++endChunk_;
    }
}
