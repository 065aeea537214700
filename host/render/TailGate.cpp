#include "host/render/TailGate.h"

#include <algorithm>
#include <cmath>

namespace tvhost {

TailGate TailGate::ofLength(int channels, std::int64_t frames) {
    // Every frame counts as loud, silence included.
    return TailGate(channels, 0.0f, std::numeric_limits<std::int64_t>::max(), frames, 0);
}

TailGate TailGate::untilQuiet(int channels, std::int64_t quietFrames, std::int64_t longest,
                              std::int64_t notBefore) {
    return TailGate(channels, kThreshold, quietFrames, longest, notBefore);
}

TailGate::TailGate(int channels, float threshold, std::int64_t quietFrames, std::int64_t longest,
                   std::int64_t notBefore)
    : channels_(channels), threshold_(threshold), quietFrames_(quietFrames), longest_(longest),
      quietFrom_(std::max<std::int64_t>(0, notBefore)) {}

std::int64_t TailGate::gapFrames(double longestGapSeconds, std::int32_t tailSize, int sampleRate) {
    const std::int64_t told = tailSize < std::llround(kLongestSeconds * sampleRate) ? tailSize : 0;
    return std::max<std::int64_t>(std::llround(longestGapSeconds * sampleRate), told);
}

void TailGate::push(const float* frame) {
    held_.insert(held_.end(), frame, frame + channels_);
    ++count_;
    const bool loud = std::any_of(frame, frame + channels_,
                                  [this](float sample) { return std::abs(sample) >= threshold_; });
    if (!loud) {
        return;
    }
    released_.insert(released_.end(), held_.begin(), held_.end());
    held_.clear();
    quietFrom_ = std::max(quietFrom_, count_);
    lastLoud_ = count_;
}

bool TailGate::isFinished() const {
    return count_ >= longest_ || count_ - quietFrom_ >= quietFrames_;
}

bool TailGate::wasCut() const {
    return count_ >= longest_ && threshold_ > 0.0f && count_ - lastLoud_ < quietFrames_;
}

} // namespace tvhost
