#include "host/play/LevelMeter.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <unistd.h>

namespace tvhost {

namespace {

// A bar of each output, from -48 dBFS up to full scale.
constexpr int kBarWidth = 16;
constexpr double kLowest = -48.0;
// More would not fit on a line.
constexpr std::size_t kMostBars = 2;

std::string clockText(std::int64_t seconds) {
    const std::string rest = std::to_string(seconds % 60);
    return std::to_string(seconds / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
}

std::string bar(float level) {
    const double share = 1.0 - std::max(decibels(level), kLowest) / kLowest;
    const auto filled = std::clamp<long>(std::lround(share * kBarWidth), 0, kBarWidth);
    return "[" + std::string(static_cast<std::size_t>(filled), '#') +
           std::string(static_cast<std::size_t>(kBarWidth - filled), '.') +
           (level > 1.0f ? "!" : "]");
}

} // namespace

LevelMeter::LevelMeter(std::int64_t expectedFrames, int sampleRate)
    : expectedFrames_(expectedFrames), sampleRate_(sampleRate),
      visible_(isatty(STDERR_FILENO) == 1) {}

LevelMeter::~LevelMeter() {
    if (width_ > 0) {
        std::fprintf(stderr, "\r%*s\r", static_cast<int>(width_), "");
        std::fflush(stderr);
    }
}

std::string LevelMeter::line(std::int64_t frames, std::int64_t expectedFrames, int sampleRate,
                             const std::vector<float>& levels, std::int64_t dropouts) {
    std::string text = clockText(frames / sampleRate);
    if (expectedFrames > 0) {
        text += " / " + clockText(expectedFrames / sampleRate);
    }
    float loudest = 0.0f;
    for (const float level : levels) {
        loudest = std::max(loudest, level);
    }
    for (std::size_t c = 0; c < std::min(levels.size(), kMostBars); ++c) {
        text += "  " + bar(levels[c]);
    }
    text += "  " + decibelText(loudest) + "FS";
    if (dropouts > 0) {
        text += "  dropouts " + std::to_string(dropouts);
    }
    return text;
}

void LevelMeter::update(std::int64_t frames, const std::vector<float>& levels,
                        std::int64_t dropouts) {
    if (!visible_) {
        return;
    }
    const std::string now = line(frames, expectedFrames_, sampleRate_, levels, dropouts);
    const std::size_t columns = columnsOf(now);
    const std::size_t rest = width_ > columns ? width_ - columns : 0;
    std::fprintf(stderr, "\r%s%*s", now.c_str(), static_cast<int>(rest), "");
    std::fflush(stderr);
    width_ = columns;
}

} // namespace tvhost
