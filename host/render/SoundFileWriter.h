// A sound file as it is written.
#pragma once

#include "host/base/OutputFile.h"
#include "host/render/SoundFormat.h"
#include "host/render/SoundSink.h"

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

    int channels() const { return info_.channels; }

    // Interleaved, finite. Throws UserError when there is no room.
    void write(const float* interleaved, std::int64_t frames);
    void finish();

    std::int64_t framesWritten() const { return frameCount_; }
    float peak() const { return largest_; }
    // Samples that the format could not hold as they were.
    std::int64_t samplesClipped() const { return clippedCount_; }

private:
    [[noreturn]] void refuse(const std::string& reason) const;

    std::string path_;
    bool fixedPoint_;
    SF_INFO info_{};
    OutputFile output_;
    SoundSink sink_;
    SNDFILE* file_ = nullptr;
    std::vector<float> clipped_;
    std::int64_t frameCount_ = 0;
    float largest_ = 0.0f;
    std::int64_t clippedCount_ = 0;
};

} // namespace tvhost
