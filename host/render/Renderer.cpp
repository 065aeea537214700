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

Renderer::Renderer(EffectInstance& effect_, FrameSource& source_, Automation& automation_,
                   SoundFileWriter& writer_, int blockSize_, std::optional<double> tailSeconds_)
    : effect(effect_), source(source_), automation(automation_), writer(writer_),
      blockSize(blockSize_), tailSeconds(tailSeconds_),
      sourceFrames(static_cast<std::size_t>(blockSize * source.channels())),
      inputs(static_cast<std::size_t>(effect.inputCount()),
             std::vector<float>(static_cast<std::size_t>(blockSize))),
      outputs(static_cast<std::size_t>(effect.outputCount()),
              std::vector<float>(static_cast<std::size_t>(blockSize))),
      outputFrames(static_cast<std::size_t>(blockSize * effect.outputCount())) {}

// Fills the effect's inputs with the stream's next frames, then silence; answers how many frames
// the stream gave.
int Renderer::fillInput(int frames) {
    const int given = source.read(sourceFrames.data(), frames);
    const std::size_t channels = static_cast<std::size_t>(source.channels());
    for (std::size_t c = 0; c < inputs.size(); ++c) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(given); ++i) {
            const float* frame = &sourceFrames[i * channels];
            if (channels == inputs.size()) {
                inputs[c][i] = frame[c];
            } else {
                inputs[c][i] = channels == 1 ? frame[0] : 0.5f * (frame[0] + frame[1]);
            }
        }
        std::fill(inputs[c].begin() + given, inputs[c].begin() + frames, 0.0f);
    }
    return given;
}

void Renderer::process(int frames) {
    effect.process(pointers(inputs).data(), pointers(outputs).data(), frames);
    const std::size_t channels = outputs.size();
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
        for (std::size_t c = 0; c < channels; ++c) {
            outputFrames[i * channels + c] = outputs[c][i];
        }
    }
    checkOutput(frames);
}

void Renderer::checkOutput(int frames) const {
    const auto width = static_cast<std::size_t>(effect.outputCount());
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames) * width; ++i) {
        if (std::isfinite(outputFrames[i])) {
            continue;
        }
        const auto frame = position + static_cast<std::int64_t>(i / width);
        const double seconds = static_cast<double>(frame) / source.sampleRate();
        throw UserError(effect.name() + " gives what is no finite number at " +
                        shortNumber(seconds, 6) + " s, run at " +
                        std::to_string(source.sampleRate()) +
                        " Hz; give other settings or another --rate");
    }
}

TailGate Renderer::makeGate() const {
    const auto frames = [this](double seconds) {
        return std::llround(seconds * source.sampleRate());
    };
    if (tailSeconds) {
        return TailGate::ofLength(effect.outputCount(), frames(*tailSeconds));
    }
    // Changes still to come may bring echoes back, and an effect may know that it has longer gaps.
    return TailGate::untilQuiet(
        effect.outputCount(),
        std::max<std::int64_t>(frames(TailGate::kQuietSeconds), effect.tailSize()),
        frames(TailGate::kLongestSeconds), automation.lastFrame() - inputEnd);
}

void Renderer::run(ProgressBar& progress) {
    std::optional<TailGate> tail;
    while (!tail || !tail->isFinished()) {
        automation.apply(effect, position);
        const int frames = static_cast<int>(automation.framesUntilNext(position, blockSize));
        const int given = tail ? 0 : fillInput(frames);
        if (tail) {
            for (std::vector<float>& input : inputs) {
                std::fill(input.begin(), input.end(), 0.0f);
            }
        }
        process(frames);

        writer.write(outputFrames.data(), given);
        if (!tail && given < frames) {
            inputEnd = position + given;
            tail = makeGate();
        }
        if (tail) {
            const std::ptrdiff_t width = effect.outputCount();
            for (int i = given; i < frames && !tail->isFinished(); ++i) {
                tail->push(outputFrames.data() + i * width);
            }
            std::vector<float>& ready = tail->ready();
            writer.write(ready.data(),
                         static_cast<std::int64_t>(ready.size()) / effect.outputCount());
            ready.clear();
        }
        position += frames;
        progress.update(position, tail.has_value());
    }
}

} // namespace tvhost
