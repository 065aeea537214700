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
                   SoundFileWriter& writer, const RenderTerms& terms)
    : effect_(effect), source_(source), automation_(automation), writer_(writer), terms_(terms),
      plan_(source_.channels(), effect_.inputCount(), effect_.outputCount(), effect_.pairsInputs()),
      latency_(terms_.compensated ? effect_.latency() : 0),
      sourceFrames_(static_cast<std::size_t>(terms_.blockSize) *
                    static_cast<std::size_t>(source_.channels())),
      inputs_(static_cast<std::size_t>(effect_.inputCount()),
              std::vector<float>(static_cast<std::size_t>(terms_.blockSize))),
      outputs_(static_cast<std::size_t>(effect_.outputCount()),
               std::vector<float>(static_cast<std::size_t>(terms_.blockSize))),
      outputFrames_(static_cast<std::size_t>(terms_.blockSize) *
                    static_cast<std::size_t>(effect_.outputCount())) {}

// Fills the effect's inputs with the stream's next frames, then silence; answers how many frames
// the stream gave.
int Renderer::fillInput(int frames) {
    const int given = source_.read(sourceFrames_.data(), frames);
    plan_.spread(sourceFrames_.data(), given, inputs_);
    for (std::vector<float>& input : inputs_) {
        std::fill(input.begin() + given, input.begin() + frames, 0.0f);
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
    if (terms_.tailSeconds) {
        return TailGate::ofLength(effect_.outputCount(), frames(*terms_.tailSeconds));
    }
    // Changes still to come may bring echoes back.
    return TailGate::untilQuiet(
        effect_.outputCount(),
        TailGate::gapFrames(terms_.longestGap, effect_.tailSize(), source_.sampleRate()),
        frames(TailGate::kLongestSeconds), automation_.lastFrame() - inputEnd_);
}

void Renderer::pushTail(TailGate& tail, int from, int to) {
    const std::ptrdiff_t width = effect_.outputCount();
    for (int i = from; i < to && !tail.isFinished(); ++i) {
        tail.push(outputFrames_.data() + i * width);
    }
    std::vector<float>& ready = tail.ready();
    writer_.write(ready.data(), static_cast<std::int64_t>(ready.size()) / effect_.outputCount());
    ready.clear();
}

void Renderer::run(ProgressBar& progress) {
    bool inputEnded = false;
    std::optional<TailGate> tail;
    while (!tail || !tail->isFinished()) {
        automation_.apply(effect_, position_);
        const int frames =
            static_cast<int>(automation_.framesUntilNext(position_, terms_.blockSize));
        if (inputEnded) {
            for (std::vector<float>& input : inputs_) {
                std::fill(input.begin(), input.end(), 0.0f);
            }
        } else {
            const int given = fillInput(frames);
            inputEnded = given < frames;
            inputEnd_ = position_ + given;
        }
        process(frames);

        // What comes out answers what went in `latency_` frames before.
        const auto within = [&](std::int64_t frame) {
            return static_cast<int>(
                std::clamp<std::int64_t>(frame - position_, 0, static_cast<std::int64_t>(frames)));
        };
        const int begin = within(latency_);
        const int end = inputEnded ? within(inputEnd_ + latency_) : frames;
        writer_.write(outputFrames_.data() + std::ptrdiff_t{begin} * effect_.outputCount(),
                      end - begin);
        if (!tail && inputEnded && end < frames) {
            tail = makeGate();
        }
        if (tail) {
            pushTail(*tail, end, frames);
        }
        position_ += frames;
        progress.update(position_, tail.has_value());
    }
    tailCut_ = tail->wasCut();
}

} // namespace tvhost
