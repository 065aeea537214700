#include "host/render/Renderer.h"

#include "host/base/NumberText.h"
#include "host/base/UserError.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tvhost {

namespace {

std::vector<float*> pointers(std::vector<std::vector<float>>& channels) {
    std::vector<float*> result;
    result.reserve(channels.size());
    for (std::vector<float>& channel : channels) {
        result.push_back(channel.data());
    }
    return result;
}

} // namespace

Renderer::Renderer(EffectInstance& effect, FrameSource& source, Automation& automation,
                   SoundFileWriter& writer, int blockSize, std::optional<double> tailSeconds)
    : effect_(effect), source_(source), automation_(automation), writer_(writer),
      blockSize_(blockSize), tailSeconds_(tailSeconds),
      sourceFrames_(static_cast<std::size_t>(blockSize_ * source_.channels())),
      inputs_(static_cast<std::size_t>(effect_.inputCount()),
              std::vector<float>(static_cast<std::size_t>(blockSize_))),
      outputs_(static_cast<std::size_t>(effect_.outputCount()),
               std::vector<float>(static_cast<std::size_t>(blockSize_))),
      outputFrames_(static_cast<std::size_t>(blockSize_ * effect_.outputCount())) {}

// Fills the effect's inputs with the stream's next frames, then silence; answers how many frames
// the stream gave.
int Renderer::fillInput(int frames) {
    const int given = source_.read(sourceFrames_.data(), frames);
    const std::size_t channels = static_cast<std::size_t>(source_.channels());
    for (std::size_t c = 0; c < inputs_.size(); ++c) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(given); ++i) {
            const float* frame = &sourceFrames_[i * channels];
            if (channels == inputs_.size()) {
                inputs_[c][i] = frame[c];
            } else {
                inputs_[c][i] = channels == 1 ? frame[0] : 0.5f * (frame[0] + frame[1]);
            }
        }
        std::fill(inputs_[c].begin() + given, inputs_[c].begin() + frames, 0.0f);
    }
    return given;
}

void Renderer::process(int frames) {
    effect_.process(pointers(inputs_).data(), pointers(outputs_).data(), frames);
    const std::size_t channels = outputs_.size();
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
        for (std::size_t c = 0; c < channels; ++c) {
            outputFrames_[i * channels + c] = outputs_[c][i];
        }
    }
    checkOutput(frames);
}

void Renderer::checkOutput(int frames) const {
    const auto width = static_cast<std::size_t>(effect_.outputCount());
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames) * width; ++i) {
        if (std::isfinite(outputFrames_[i])) {
            continue;
        }
        const auto frame = position_ + static_cast<std::int64_t>(i / width);
        const double seconds = static_cast<double>(frame) / source_.sampleRate();
        throw UserError(effect_.name() + " produced NaN or infinity at " + shortNumber(seconds, 6) +
                        " s, run at " + std::to_string(source_.sampleRate()) +
                        " Hz; try other settings or another --rate");
    }
}

TailGate Renderer::makeGate() const {
    const auto frames = [this](double seconds) {
        return std::llround(seconds * source_.sampleRate());
    };
    if (tailSeconds_) {
        return TailGate::ofLength(effect_.outputCount(), frames(*tailSeconds_));
    }
    // Changes still to come may bring echoes back, and an effect may know that it has longer gaps.
    return TailGate::untilQuiet(
        effect_.outputCount(),
        std::max<std::int64_t>(frames(TailGate::kQuietSeconds), effect_.tailSize()),
        frames(TailGate::kLongestSeconds), automation_.lastFrame() - inputEnd_);
}

void Renderer::run(ProgressBar& progress) {
    std::optional<TailGate> tail;
    while (!tail || !tail->isFinished()) {
        automation_.apply(effect_, position_);
        const int frames = static_cast<int>(automation_.framesUntilNext(position_, blockSize_));
        const int given = tail ? 0 : fillInput(frames);
        if (tail) {
            for (std::vector<float>& input : inputs_) {
                std::fill(input.begin(), input.end(), 0.0f);
            }
        }
        process(frames);

        writer_.write(outputFrames_.data(), given);
        if (!tail && given < frames) {
            inputEnd_ = position_ + given;
            tail = makeGate();
        }
        if (tail) {
            const std::ptrdiff_t width = effect_.outputCount();
            for (int i = given; i < frames && !tail->isFinished(); ++i) {
                tail->push(outputFrames_.data() + i * width);
            }
            std::vector<float>& ready = tail->ready();
            writer_.write(ready.data(),
                          static_cast<std::int64_t>(ready.size()) / effect_.outputCount());
            ready.clear();
        }
        position_ += frames;
        progress.update(position_, tail.has_value());
    }
}

} // namespace tvhost
