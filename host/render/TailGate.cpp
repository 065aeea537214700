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

TailGate::TailGate(int channels_, float threshold_, std::int64_t quietFrames_,
                   std::int64_t longest_, std::int64_t notBefore)
    : channels(channels_), threshold(threshold_), quietFrames(quietFrames_), longest(longest_),
      quietFrom(std::max<std::int64_t>(0, notBefore)) {}

void TailGate::push(const float* frame) {
    held.insert(held.end(), frame, frame + channels);
    ++count;
    const bool loud = std::any_of(frame, frame + channels,
                                  [this](float sample) { return std::abs(sample) >= threshold; });
    if (!loud) {
        return;
    }
    released.insert(released.end(), held.begin(), held.end());
    held.clear();
    quietFrom = std::max(quietFrom, count);
}

bool TailGate::isFinished() const {
    return count >= longest || count - quietFrom >= quietFrames;
}

} // namespace tvhost
