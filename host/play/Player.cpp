#include "host/play/Player.h"

#include "host/render/TailGate.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tvhost {

namespace {

using Clock = std::chrono::steady_clock;

std::vector<float*> pointersTo(std::vector<std::vector<float>>& channels) {
    std::vector<float*> pointers;
    pointers.reserve(channels.size());
    for (std::vector<float>& channel : channels) {
        pointers.push_back(channel.data());
    }
    return pointers;
}

std::vector<std::vector<float>> buffers(int channels, int frames) {
    return std::vector<std::vector<float>>(static_cast<std::size_t>(channels),
                                           std::vector<float>(static_cast<std::size_t>(frames)));
}

// One thread raises it, another takes it away.
void raise(std::atomic<float>& level, float value) {
    float before = level;
    while (before < value && !level.compare_exchange_weak(before, value)) {
    }
}

} // namespace

Player::Player(EffectInstance& effect, SoundFeed* feed, int liveChannels, int sampleRate,
               int blockSize, double longestGap)
    : effect_(effect), feed_(feed), sampleRate_(sampleRate), blockSize_(blockSize),
      channels_(feed ? feed->channels() : liveChannels),
      plan_(channels_, effect.inputCount(), effect.outputCount(), effect.pairsInputs()),
      fed_(static_cast<std::size_t>(channels_) * static_cast<std::size_t>(blockSize)),
      inputs_(buffers(effect.inputCount(), blockSize)),
      outputs_(buffers(effect.outputCount(), blockSize)), inputPointers_(pointersTo(inputs_)),
      outputPointers_(pointersTo(outputs_)),
      gapFrames_(TailGate::gapFrames(longestGap, effect.tailSize(), sampleRate)),
      levels_(outputs_.size()) {}

bool Player::process(const AudioServer::Block& block) {
    const Clock::time_point begin = Clock::now();
    underruns_ += block.underrun ? 1 : 0;
    overruns_ += block.overrun ? 1 : 0;
    bool goesOn = true;
    for (int done = 0; done < block.frames;) {
        const int frames = std::min(blockSize_, block.frames - done);
        if (goesOn) {
            fillInputs(block, done, frames);
            effect_.process(inputPointers_.data(), outputPointers_.data(), frames);
            goesOn = !hasEnded(frames, cleanOutputs(frames));
        } else {
            silenceOutputs(frames);
        }
        giveOutputs(block, done, frames);
        done += frames;
    }
    frames_ += block.frames;
    if (stopping_) {
        fadeOut(block);
        goesOn = false;
    }
    const std::chrono::duration<double> spent = Clock::now() - begin;
    late_ += spent.count() > static_cast<double>(block.frames) / sampleRate_ ? 1 : 0;
    if (!goesOn) {
        finished_ = true;
    }
    return goesOn;
}

void Player::fillInputs(const AudioServer::Block& block, int offset, int frames) {
    int given = frames;
    if (feed_) {
        given = feed_->read(fed_.data(), frames);
        position_ += given;
        unfed_ += given < frames && !feed_->isFinished() ? 1 : 0;
    } else {
        const int there = std::min(channels_, block.inputCount);
        for (int i = 0; i < frames; ++i) {
            for (int c = 0; c < there; ++c) {
                fed_[static_cast<std::size_t>(i) * static_cast<std::size_t>(channels_) +
                     static_cast<std::size_t>(c)] = block.inputs[c][offset + i];
            }
        }
    }
    plan_.spread(fed_.data(), given, inputs_);
    for (std::vector<float>& input : inputs_) {
        std::fill(input.begin() + given, input.begin() + frames, 0.0f);
    }
}

// Answers the highest level of the frames.
float Player::cleanOutputs(int frames) {
    float loudest = 0.0f;
    for (std::size_t c = 0; c < outputs_.size(); ++c) {
        float level = 0.0f;
        for (int i = 0; i < frames; ++i) {
            float& value = outputs_[c][static_cast<std::size_t>(i)];
            // No loudspeaker is to get these.
            if (!std::isfinite(value)) {
                value = 0.0f;
                ++notNumbers_;
            }
            level = std::max(level, std::abs(value));
        }
        raise(levels_[c], level);
        loudest = std::max(loudest, level);
    }
    raise(peak_, loudest);
    return loudest;
}

void Player::silenceOutputs(int frames) {
    for (std::vector<float>& output : outputs_) {
        std::fill(output.begin(), output.begin() + frames, 0.0f);
    }
}

void Player::giveOutputs(const AudioServer::Block& block, int offset, int frames) const {
    const int outputs = static_cast<int>(outputs_.size());
    for (int c = 0; c < block.outputCount; ++c) {
        float* const target = block.outputs[c] + offset;
        // A mono effect is heard on both sides.
        const int source = outputs == 1 && c < 2 ? 0 : c;
        if (source < outputs) {
            std::copy_n(outputs_[static_cast<std::size_t>(source)].begin(), frames, target);
        } else {
            std::fill_n(target, frames, 0.0f);
        }
    }
}

void Player::fadeOut(const AudioServer::Block& block) {
    for (int c = 0; c < block.outputCount; ++c) {
        for (int i = 0; i < block.frames; ++i) {
            block.outputs[c][i] *=
                static_cast<float>(block.frames - 1 - i) / static_cast<float>(block.frames);
        }
    }
}

bool Player::hasEnded(int frames, float loudest) {
    if (!feed_ || !feed_->isFinished()) {
        return false;
    }
    tailFrames_ += frames;
    quietFrames_ = loudest < TailGate::kThreshold ? quietFrames_ + frames : 0;
    return quietFrames_ >= gapFrames_ ||
           static_cast<double>(tailFrames_) >= TailGate::kLongestSeconds * sampleRate_;
}

std::vector<float> Player::takeLevels() {
    std::vector<float> levels;
    levels.reserve(levels_.size());
    for (std::atomic<float>& level : levels_) {
        levels.push_back(level.exchange(0.0f));
    }
    return levels;
}

Player::Report Player::report() const {
    return {frames_, underruns_, overruns_, late_, unfed_, notNumbers_, peak_};
}

} // namespace tvhost
