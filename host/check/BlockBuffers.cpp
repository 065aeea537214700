#include "host/check/BlockBuffers.h"

#include <algorithm>

namespace tvhost {

BlockBuffers::BlockBuffers(int inputs, int outputs, int mostFrames, bool inPlace)
    : inputCount_(inputs), outputCount_(outputs), mostFrames_(mostFrames) {
    const int shared = inPlace ? std::min(inputs, outputs) : 0;
    const std::size_t length = static_cast<std::size_t>(mostFrames) + 2 * std::size_t{kMargin};
    rooms_.assign(static_cast<std::size_t>(inputs + outputs - shared), std::vector<float>(length));
    const auto channel = [&](int room) {
        return rooms_[static_cast<std::size_t>(room)].data() + kMargin;
    };
    for (int i = 0; i < inputs; ++i) {
        inputs_.push_back(channel(i));
    }
    for (int i = 0; i < outputs; ++i) {
        outputs_.push_back(i < shared ? channel(i) : channel(inputs + i - shared));
    }
    // A plug-in without channels still gets arrays to point at.
    inputs_.push_back(nullptr);
    outputs_.push_back(nullptr);
}

void BlockBuffers::fillOutputs(float value) {
    for (int i = 0; i < outputCount_; ++i) {
        const bool own = std::find(inputs_.begin(), inputs_.end() - 1,
                                   outputs_[static_cast<std::size_t>(i)]) == inputs_.end() - 1;
        if (own) {
            std::fill_n(outputs_[static_cast<std::size_t>(i)], mostFrames_, value);
        }
    }
}

void BlockBuffers::markAround(int frames) {
    for (std::vector<float>& room : rooms_) {
        std::fill_n(room.begin(), kMargin, kMark);
        std::fill(room.begin() + kMargin + frames, room.end(), kMark);
    }
}

bool BlockBuffers::marksStand(int frames) const {
    const auto isMark = [](float sample) { return sample == kMark; };
    return std::all_of(rooms_.begin(), rooms_.end(), [&](const std::vector<float>& room) {
        return std::all_of(room.begin(), room.begin() + kMargin, isMark) &&
               std::all_of(room.begin() + kMargin + frames, room.end(), isMark);
    });
}

} // namespace tvhost
