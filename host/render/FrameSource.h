// Where a render gets its sound from.
#pragma once

#include <cstdint>

namespace tvhost {

// A stream of interleaved frames.
class FrameSource {
public:
    virtual ~FrameSource() = default;

    virtual int channels() const = 0;
    virtual int sampleRate() const = 0; // Hz

    // How many frames the stream holds in all, 0 when that isn't known. An estimate.
    virtual std::int64_t expectedFrames() const = 0;

    // Fills `frames` frames, fewer only where the stream ends, and answers how many. Throws
    // UserError when the stream cannot be read.
    virtual int read(float* interleaved, int frames) = 0;
};

} // namespace tvhost
