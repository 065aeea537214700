#include "host/play/SoundFeed.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tvhost {

namespace {

constexpr int kSecondsAhead = 2;
constexpr int kChunk = 4096; // frames
constexpr auto kTurn = std::chrono::milliseconds(20);

} // namespace

SoundFeed::SoundFeed(Open open, bool loops)
    : open_(std::move(open)), loops_(loops), source_(open_()),
      expectedFrames_(source_->expectedFrames()),
      queue_(std::make_unique<FrameQueue>(source_->channels(),
                                          source_->sampleRate() * kSecondsAhead + kChunk)),
      chunk_(static_cast<std::size_t>(kChunk * source_->channels())) {
    while (fill()) {
    }
    rethrow();
    thread_ = std::thread([this] { feed(); });
}

SoundFeed::~SoundFeed() {
    leaving_ = true;
    thread_.join();
}

void SoundFeed::feed() {
    while (!leaving_ && !ended_) {
        if (!fill()) {
            std::this_thread::sleep_for(kTurn);
        }
    }
}

// Answers whether there may be room and sound for more.
bool SoundFeed::fill() {
    if (ended_ || queue_->writable() < kChunk) {
        return false;
    }
    try {
        const int count = source_->read(chunk_.data(), kChunk);
        queue_->write(chunk_.data(), count);
        if (count < kChunk) {
            if (loops_) {
                source_ = open_();
            } else {
                ended_ = true;
            }
        }
    } catch (...) {
        fault_ = std::current_exception();
        ended_ = true;
    }
    return !ended_;
}

int SoundFeed::read(float* interleaved, int frames) {
    const int there = std::min(frames, queue_->readable());
    queue_->read(interleaved, there);
    return there;
}

bool SoundFeed::isFinished() const {
    // In this order: what was written before the end is seen once the end is.
    return ended_ && queue_->readable() == 0;
}

void SoundFeed::rethrow() const {
    if (ended_ && fault_) {
        std::rethrow_exception(fault_);
    }
}

} // namespace tvhost
