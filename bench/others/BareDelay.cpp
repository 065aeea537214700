#include "bench/others/BareDelay.h"

namespace {

constexpr double kSeconds = 0.25;
constexpr float kFeedBack = 0.5f;
constexpr float kMix = 0.5f;

} // namespace

BareDelay::BareDelay() {
    for (std::vector<float>& line : lines_) {
        line.assign(static_cast<std::size_t>(kSeconds * kContenderRate), 0.0f);
    }
}

void BareDelay::run(const float* const* inputs, float* const* outputs, int frames) {
    for (int i = 0; i < frames; ++i) {
        for (std::size_t channel = 0; channel < lines_.size(); ++channel) {
            float& place = lines_[channel][position_];
            const float tap = place;
            place = inputs[channel][i] + kFeedBack * tap;
            outputs[channel][i] = inputs[channel][i] + kMix * tap;
        }
        position_ = position_ + 1 == lines_[0].size() ? 0 : position_ + 1;
    }
}
