#pragma once

#include "host/base/OutputFile.h"
#include "host/render/SoundFormat.h"

#include <sndfile.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tvhost {

// Writes a sound file that appears under its name when finish() has been called, and not at all
// without.
class SoundFileWriter {
public:
    // Throws UserError when the file cannot be written.
    SoundFileWriter(const std::string& path, const SoundFormat& format, int channels,
                    int sampleRate);
    ~SoundFileWriter();
    SoundFileWriter(const SoundFileWriter&) = delete;
    SoundFileWriter& operator=(const SoundFileWriter&) = delete;

    int channels() const { return info.channels; }

    // Interleaved, finite. Throws UserError when there is no room.
    void write(const float* interleaved, std::int64_t frames);
    void finish();

    std::int64_t framesWritten() const { return frameCount; }
    float peak() const { return largest; }
    // Samples that the format could not hold as they were.
    std::int64_t samplesClipped() const { return clippedCount; }

private:
    std::string path;
    bool fixedPoint;
    SF_INFO info{};
    OutputFile output;
    SNDFILE* file = nullptr;
    std::vector<float> clipped;
    std::int64_t frameCount = 0;
    float largest = 0.0f;
    std::int64_t clippedCount = 0;
};

} // namespace tvhost
