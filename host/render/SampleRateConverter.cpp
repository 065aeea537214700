#include "host/render/SampleRateConverter.h"

#include "host/base/UserError.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace tvhost {

namespace {

constexpr int kChunkFrames = 4096;

} // namespace

SampleRateConverter::SampleRateConverter(std::unique_ptr<FrameSource> source_, int sampleRate,
                                         std::string name_)
    : source(std::move(source_)), rate(sampleRate),
      ratio(static_cast<double>(rate) / source->sampleRate()), name(std::move(name_)),
      input(static_cast<std::size_t>(kChunkFrames * source->channels())),
      output(static_cast<std::size_t>(kChunkFrames * source->channels())) {
    int error = 0;
    if (src_is_valid_ratio(ratio)) {
        state = src_new(SRC_SINC_BEST_QUALITY, source->channels(), &error);
    }
    if (!state) {
        throw UserError(name + " is at " + std::to_string(source->sampleRate()) +
                        " Hz and cannot be brought to " + std::to_string(rate) +
                        " Hz; give a --rate nearer to its own");
    }
}

SampleRateConverter::~SampleRateConverter() {
    src_delete(state);
}

std::int64_t SampleRateConverter::expectedFrames() const {
    return std::llround(static_cast<double>(source->expectedFrames()) * ratio);
}

void SampleRateConverter::convert() {
    for (;;) {
        if (inputFrames == 0 && !inputEnded) {
            inputFrames = source->read(input.data(), kChunkFrames);
            inputStart = 0;
            inputEnded = inputFrames < kChunkFrames;
        }
        SRC_DATA data{};
        data.data_in = input.data() + std::ptrdiff_t{inputStart} * channels();
        data.input_frames = inputFrames;
        data.data_out = output.data();
        data.output_frames = kChunkFrames;
        data.src_ratio = ratio;
        data.end_of_input = inputEnded;
        const int error = src_process(state, &data);
        if (error != 0) {
            throw UserError(name + " cannot be resampled: " + src_strerror(error) +
                            "; give it at the rate to render at");
        }
        inputStart += static_cast<int>(data.input_frames_used);
        inputFrames -= static_cast<int>(data.input_frames_used);
        outputStart = 0;
        outputFrames = static_cast<int>(data.output_frames_gen);
        const bool drained = inputEnded && inputFrames == 0;
        if (outputFrames > 0 || drained) {
            return;
        }
    }
}

int SampleRateConverter::read(float* interleaved, int frames) {
    int done = 0;
    while (done < frames) {
        if (outputFrames == 0) {
            convert();
        }
        if (outputFrames == 0) {
            break;
        }
        const int count = std::min(frames - done, outputFrames);
        const std::ptrdiff_t width = channels();
        const float* const from = output.data() + outputStart * width;
        std::copy(from, from + count * width, interleaved + done * width);
        outputStart += count;
        outputFrames -= count;
        done += count;
    }
    return done;
}

} // namespace tvhost
