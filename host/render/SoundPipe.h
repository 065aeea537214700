// Sound that comes once and cannot be sought, as through a pipe.
#pragma once

#include <sndfile.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tvhost {

// The bytes of a descriptor: first looked at, then read by libsndfile as samples without a header.
// It must stay where it is while the library uses it.
class SoundPipe {
public:
    // `descriptor` stays its owner's.
    explicit SoundPipe(int descriptor) : descriptor_(descriptor) {}
    SoundPipe(const SoundPipe&) = delete;
    SoundPipe& operator=(const SoundPipe&) = delete;

    // The first bytes of the stream: at least `size` of them, fewer only where it ends. Not after
    // open().
    const std::string& head(std::size_t size);

    // The rest of the stream, what head() has shown included, into another file. Answers 0, or the
    // errno of the write that failed.
    int copyInto(int descriptor);

    // What follows the first `headerSize` bytes, `soundSize` bytes of it where that is given, as
    // `info` tells, whose format must be one without a header. Null when the library declines.
    SNDFILE* open(SF_INFO& info, std::size_t headerSize, std::optional<std::int64_t> soundSize);

    // Bytes of sound given to the library.
    std::int64_t bytesGiven() const { return given_; }
    // What the system said when a read failed; empty when none did.
    std::string fault() const;

private:
    std::size_t readSome(char* bytes, std::size_t size);
    sf_count_t give(void* data, sf_count_t count);

    int descriptor_;
    int error_ = 0; // errno
    std::string head_;
    std::size_t headStart_ = 0; // of what has not been given yet
    std::int64_t given_ = 0;
    std::optional<std::int64_t> soundSize_;
};

} // namespace tvhost
