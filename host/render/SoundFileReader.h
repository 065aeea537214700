// A sound file as a stream.
#pragma once

#include "host/render/FrameSource.h"
#include "host/render/RawFormat.h"
#include "host/render/SoundPipe.h"

#include <sndfile.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tvhost {

// A sound file of any number of channels and any format libsndfile reads, or standard input. What
// cannot be sought there is read as it comes where it is WAV or raw, else from a temporary copy.
class SoundFileReader : public FrameSource {
public:
    // `path` is "-" for standard input, which holds no header where `raw` is given; that must tell
    // rate and channels then. Throws UserError when the file is missing, isn't a sound file or
    // holds no sound.
    explicit SoundFileReader(const std::string& path, const std::optional<RawFormat>& raw = {});
    ~SoundFileReader() override;
    SoundFileReader(const SoundFileReader&) = delete;
    SoundFileReader& operator=(const SoundFileReader&) = delete;

    int channels() const override { return info_.channels; }
    int sampleRate() const override { return info_.samplerate; }
    std::int64_t expectedFrames() const override;

    // Also throws UserError for a sample that is NaN or infinity. A damaged file ends where nothing
    // more can be read.
    int read(float* interleaved, int frames) override;

    // What is missing of the sound that the file says it holds, in words; empty when all was there.
    // Once it has been read to its end.
    std::string damage() const;

private:
    void openFile(const std::string& path);
    void openStandardInput(const std::optional<RawFormat>& raw);
    void openDescriptor();
    void openPipe(SoundPipe& pipe, std::size_t headerSize, std::optional<std::int64_t> soundSize);
    void keepCopyOf(SoundPipe& pipe);
    void close();
    std::string log() const;

    std::string name_; // in messages
    int descriptor_ = -1;
    std::optional<SoundPipe> pipe_; // where it is read once
    int frameSize_ = 0;             // bytes, of what comes by the pipe
    SF_INFO info_{};
    SNDFILE* file_ = nullptr;
    std::int64_t position_ = 0;
    std::string fault_; // that ended it
};

} // namespace tvhost
