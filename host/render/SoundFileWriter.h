// A sound file as it is written.
#pragma once

#include "host/base/OutputFile.h"
#include "host/render/SoundFormat.h"
#include "host/render/SoundSink.h"

#include <sndfile.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tvhost {

// Writes a sound file that appears under its name when finish() has been called, and not at all
// without; or standard output, as it comes.
class SoundFileWriter {
public:
    // `path` is "-" for standard output, which takes a format of SoundFormat::forStream(). Throws
    // UserError when it cannot be written.
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
    void writeHeader();
    void completeHeader();
    bool writeFixed(const float* interleaved, std::int64_t frames);

    std::string name_; // in messages
    SoundFormat format_;
    SF_INFO info_{};
    std::optional<OutputFile> output_; // none for standard output
    int descriptor_;
    SoundSink sink_;
    SNDFILE* file_ = nullptr;
    std::int64_t headerPlace_ = -1; // where it can be written again; -1 where it can't
    std::int64_t headerSize_ = 0;
    std::vector<double> steps_;
    std::int64_t frameCount_ = 0;
    float largest_ = 0.0f;
    std::int64_t clippedCount_ = 0;
};

} // namespace tvhost
