#include "host/render/ChannelPlan.h"

#include <algorithm>
#include <cstddef>

namespace tvhost {

namespace {

// "channel 3", "channels 3 to 6".
std::string range(const char* thing, int first, int last) {
    const std::string text =
        thing + std::string(first == last ? " " : "s ") + std::to_string(first);
    return first == last ? text
                         : text + (last == first + 1 ? " and " : " to ") + std::to_string(last);
}

} // namespace

ChannelPlan::ChannelPlan(int channels, int inputs, int outputs, bool paired)
    : channels_(channels), inputs_(inputs) {
    const bool sideChained = inputs_ == 2 && outputs == 1 && !paired;
    if (channels_ == 1 && inputs_ == 2 && !sideChained) {
        way_ = Way::kMonoIntoBoth;
    } else if (channels_ == 2 && (inputs_ == 1 || sideChained)) {
        way_ = Way::kMeanOfBoth;
    }
}

void ChannelPlan::spread(const float* interleaved, int frames,
                         std::vector<std::vector<float>>& inputs) const {
    const auto width = static_cast<std::size_t>(channels_);
    const auto count = static_cast<std::size_t>(frames);
    for (std::size_t c = 0; c < inputs.size(); ++c) {
        float* const input = inputs[c].data();
        if (way_ == Way::kMeanOfBoth && c == 0) {
            for (std::size_t i = 0; i < count; ++i) {
                input[i] = 0.5f * (interleaved[2 * i] + interleaved[2 * i + 1]);
            }
        } else if ((c < width && way_ == Way::kOneToOne) || way_ == Way::kMonoIntoBoth) {
            const float* from = interleaved + (way_ == Way::kMonoIntoBoth ? 0 : c);
            for (std::size_t i = 0; i < count; ++i) {
                input[i] = from[i * width];
            }
        } else {
            std::fill_n(input, count, 0.0f);
        }
    }
}

std::string ChannelPlan::note(const std::string& effect) const {
    switch (way_) {
    case Way::kMonoIntoBoth:
        return {};
    case Way::kMeanOfBoth:
        return inputs_ == 1
                   ? effect + " takes one channel, so it got the mean of left and right"
                   : effect + " takes one channel and a side-chain, so it got the mean of " +
                         "left and right, and silence there";
    case Way::kOneToOne:
        break;
    }
    if (channels_ > inputs_) {
        return effect + " takes " + std::to_string(inputs_) +
               (inputs_ == 1 ? " channel" : " channels") + ", so " +
               range("channel", inputs_ + 1, channels_) + " of the input " +
               (channels_ - inputs_ == 1 ? "was" : "were") + " left out";
    }
    if (channels_ < inputs_) {
        return effect + " takes " + std::to_string(inputs_) + " channels, so " +
               range("input", channels_ + 1, inputs_) + " got silence";
    }
    return {};
}

} // namespace tvhost
