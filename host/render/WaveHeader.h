// The header of WAV where it cannot be written again, or sought: at the head of a pipe.
#pragma once

#include "host/render/SoundPipe.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tvhost {

// What a WAV's header tells of samples that follow it one by one, uncompressed.
struct WaveHeader {
    int channels = 0;
    int sampleRate = 0;               // Hz
    int code = 0;                     // libsndfile's, of the samples without a header
    int frameSize = 0;                // bytes
    std::size_t size = 0;             // of the header itself, bytes
    std::optional<std::int64_t> data; // bytes of sound; nothing where the writer left it open

    // Nothing when the stream begins otherwise, or too intricately for one that is read once.
    static std::optional<WaveHeader> from(SoundPipe& stream);

    // The bytes of a header before 32-bit floating point samples. Without `data`, or beyond the
    // four gigabytes that a header can count, it leaves the length open.
    static std::string forFloats(int channels, int sampleRate, std::optional<std::int64_t> data);
};

// Whether a header's number of bytes says that its writer didn't know, as programs that write into
// a pipe put it: the largest number of 31 or 32 bits, or nearly that.
bool leavesLengthOpen(std::int64_t bytes);

} // namespace tvhost
