#include "host/render/ProgressBar.h"

#include "host/base/PlainText.h"

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kBarWidth = 40;

} // namespace

ProgressBar::ProgressBar(std::int64_t expectedFrames, int sampleRate)
    : expected_(expectedFrames), rate_(sampleRate), visible_(isatty(STDERR_FILENO) == 1) {}

ProgressBar::~ProgressBar() {
    if (shown_.empty()) {
        return;
    }
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(columnsOf(shown_)), "");
    std::fflush(stderr);
}

std::string ProgressBar::line(std::int64_t frames, bool inTail) const {
    char text[160];
    const std::int64_t seconds = frames / rate_;
    if (inTail || expected_ <= 0) {
        std::snprintf(text, sizeof text, "%s %lld:%02lld",
                      inTail ? "echoes dying away" : "rendering",
                      static_cast<long long>(seconds / 60), static_cast<long long>(seconds % 60));
        return text;
    }
    const double share =
        std::min(1.0, static_cast<double>(frames) / static_cast<double>(expected_));
    const int filled = static_cast<int>(share * kBarWidth);
    std::snprintf(text, sizeof text, "[%s%s] %3d %%  %lld:%02lld",
                  std::string(static_cast<std::size_t>(filled), '#').c_str(),
                  std::string(static_cast<std::size_t>(kBarWidth - filled), '.').c_str(),
                  static_cast<int>(share * 100.0), static_cast<long long>(seconds / 60),
                  static_cast<long long>(seconds % 60));
    return text;
}

void ProgressBar::update(std::int64_t frames, bool inTail) {
    if (!visible_) {
        return;
    }
    const std::string now = line(frames, inTail);
    if (now == shown_) {
        return;
    }
    const int rest = std::max(0, static_cast<int>(shown_.size()) - static_cast<int>(now.size()));
    std::fprintf(stderr, "\r%s%*s", now.c_str(), rest, "");
    std::fflush(stderr);
    shown_ = now;
}

} // namespace tvhost
