// A sound file as a stream.
#pragma once

#include "host/render/FrameSource.h"

#include <sndfile.h>

#include <string>

namespace tvhost {

// A mono or stereo sound file of any format libsndfile reads.
class SoundFileReader : public FrameSource {
public:
    // Throws UserError when the file is missing, isn't a sound file, holds no sound or has more
    // than two channels.
    explicit SoundFileReader(const std::string& path);
    ~SoundFileReader() override;
    SoundFileReader(const SoundFileReader&) = delete;
    SoundFileReader& operator=(const SoundFileReader&) = delete;

    int channels() const override { return info_.channels; }
    int sampleRate() const override { return info_.samplerate; }
    std::int64_t expectedFrames() const override;

    // Also throws UserError for a sample that is NaN or infinity.
    int read(float* interleaved, int frames) override;

private:
    void close();

    std::string path_;
    int descriptor_ = -1;
    SF_INFO info_{};
    SNDFILE* file_ = nullptr;
    std::int64_t position_ = 0;
};

} // namespace tvhost
