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

    int channels() const override { return source->channels(); }
    int sampleRate() const override { return rate; }
    std::int64_t expectedFrames() const override;
    int read(float* interleaved, int frames) override;

private:
    // Makes the next stretch of output available; nothing at the end.
    void convert();

    std::unique_ptr<FrameSource> source;
    int rate;
    double ratio;
    std::string name;
    SRC_STATE* state = nullptr;
    std::vector<float> input;
    int inputFrames = 0; // in `input`, from `inputStart` on
    int inputStart = 0;
    bool inputEnded = false;
    std::vector<float> output;
    int outputFrames = 0; // in `output`, from `outputStart` on
    int outputStart = 0;
};

} // namespace tvhost
