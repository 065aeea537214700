// A sound file as a stream.
#pragma once

#include "host/render/FrameSource.h"

#include <sndfile.h>

#include <string>

namespace tvhost {

// A sound file of any number of channels and any format libsndfile reads.
class SoundFileReader : public FrameSource {
public:
    // Throws UserError when the file is missing, isn't a sound file or holds no sound.
    explicit SoundFileReader(const std::string& path);
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
    void close();
    std::string log() const;

    std::string path_;
    int descriptor_ = -1;
    SF_INFO info_{};
    SNDFILE* file_ = nullptr;
    std::int64_t position_ = 0;
    std::string fault_; // that ended it
};

} // namespace tvhost
