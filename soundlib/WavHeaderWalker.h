// Walks the chunks of a WAV file to its sample data and says whether it is 16-bit PCM.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "soundlib/WavFileInfo.h"

enum class WavHeaderError {
    kNone,
    kCannotRead,        // no such file, none that can be read, a pipe or a folder
    kNotWave,           // no RIFF header of type WAVE, or a file shorter than one
    kNoFormatChunk,     // the file ends before one
    kBrokenFormatChunk, // cut short, or its fields contradict each other
    kNotPcm,            // floating point or compressed
    kNot16Bit,          // PCM of another sample size
    kNoDataChunk,       // the file ends before one
    kDataTooFar,        // the samples begin 2 GiB or more into the file
};

struct WavFormat {
    std::int32_t channels;   // 1 to 32767
    std::int32_t sampleRate; // Hz, 1 or above
    std::int64_t frames;     // whole frames that the file holds
};

// Fills `info` and `format` from the file at `path`; on an error both stay as they were. Chunks may
// come in any order and the first of a kind counts. A data chunk that claims more than the file
// holds ends with the file, and so does one of size 0 under a RIFF size that ends before it, as
// recorders leave it that were cut off. Blocks on the disk; any thread.
WavHeaderError walkWavHeader(const std::string& path, WavFileInfo& info, WavFormat& format);

// The same for a seekable stream; leaves `info.path` alone.
WavHeaderError walkWavHeader(std::istream& file, WavFileInfo& info, WavFormat& format);

// A sentence for the user, without a full stop: what is wrong and what would be right. Static text.
const char* describe(WavHeaderError error);

// Whether the file was read and found to be something else than a 16-bit WAV file, so that
// `showNotWavAlert` is due.
bool isNotWavAlertDue(WavHeaderError error);
