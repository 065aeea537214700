// A stream of sound at another sample rate than its source.
#pragma once

#include "host/render/FrameSource.h"

#include <samplerate.h>

#include <memory>
#include <string>
#include <vector>

namespace tvhost {

// A stream at another rate than its source, through libsamplerate's best converter. What comes out
// does not depend on how many frames are read at a time.
class SampleRateConverter : public FrameSource {
public:
    // `name` is the source's in messages. Throws UserError for a ratio the converter cannot do.
    SampleRateConverter(std::unique_ptr<FrameSource> source, int sampleRate, std::string name);
    ~SampleRateConverter() override;
    SampleRateConverter(const SampleRateConverter&) = delete;
    SampleRateConverter& operator=(const SampleRateConverter&) = delete;

    int channels() const override { return source_->channels(); }
    int sampleRate() const override { return rate_; }
    std::int64_t expectedFrames() const override;
    int read(float* interleaved, int frames) override;

private:
    // Makes the next stretch of output available; nothing at the end.
    void convert();

    std::unique_ptr<FrameSource> source_;
    int rate_;
    double ratio_;
    std::string name_;
    SRC_STATE* state_ = nullptr;
    std::vector<float> input_;
    int inputFrames_ = 0; // in `input`, from `inputStart` on
    int inputStart_ = 0;
    bool inputEnded_ = false;
    std::vector<float> output_;
    int outputFrames_ = 0; // in `output`, from `outputStart` on
    int outputStart_ = 0;
};

} // namespace tvhost
