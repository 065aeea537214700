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

SampleRateConverter::SampleRateConverter(std::unique_ptr<FrameSource> source, int sampleRate,
                                         std::string name)
    : source_(std::move(source)), rate_(sampleRate),
      ratio_(static_cast<double>(rate_) / source_->sampleRate()), name_(std::move(name)),
      input_(static_cast<std::size_t>(kChunkFrames * source_->channels())),
      output_(static_cast<std::size_t>(kChunkFrames * source_->channels())) {
    int error = 0;
    if (src_is_valid_ratio(ratio_)) {
        state_ = src_new(SRC_SINC_BEST_QUALITY, source_->channels(), &error);
    }
    if (!state_) {
        throw UserError(name_ + " is at " + std::to_string(source_->sampleRate()) +
                        " Hz and cannot be brought to " + std::to_string(rate_) +
                        " Hz; give a --rate nearer to its own");
    }
}

SampleRateConverter::~SampleRateConverter() {
    src_delete(state_);
}

std::int64_t SampleRateConverter::expectedFrames() const {
    return std::llround(static_cast<double>(source_->expectedFrames()) * ratio_);
}

void SampleRateConverter::convert() {
    for (;;) {
        if (inputFrames_ == 0 && !inputEnded_) {
            inputFrames_ = source_->read(input_.data(), kChunkFrames);
            inputStart_ = 0;
            inputEnded_ = inputFrames_ < kChunkFrames;
        }
        SRC_DATA data{};
        data.data_in = input_.data() + std::ptrdiff_t{inputStart_} * channels();
        data.input_frames = inputFrames_;
        data.data_out = output_.data();
        data.output_frames = kChunkFrames;
        data.src_ratio = ratio_;
        data.end_of_input = inputEnded_;
        const int error = src_process(state_, &data);
        if (error != 0) {
            throw UserError(name_ + " cannot be resampled: " + src_strerror(error) +
                            "; give it at the rate to render at");
        }
        inputStart_ += static_cast<int>(data.input_frames_used);
        inputFrames_ -= static_cast<int>(data.input_frames_used);
        outputStart_ = 0;
        outputFrames_ = static_cast<int>(data.output_frames_gen);
        const bool drained = inputEnded_ && inputFrames_ == 0;
        if (outputFrames_ > 0 || drained) {
            return;
        }
    }
}

int SampleRateConverter::read(float* interleaved, int frames) {
    int done = 0;
    while (done < frames) {
        if (outputFrames_ == 0) {
            convert();
        }
        if (outputFrames_ == 0) {
            break;
        }
        const int count = std::min(frames - done, outputFrames_);
        const std::ptrdiff_t width = channels();
        const float* const from = output_.data() + outputStart_ * width;
        std::copy(from, from + count * width, interleaved + done * width);
        outputStart_ += count;
        outputFrames_ -= count;
        done += count;
    }
    return done;
}

} // namespace tvhost
