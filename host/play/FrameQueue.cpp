#include "host/play/FrameQueue.h"

#include <algorithm>

namespace tvhost {

FrameQueue::FrameQueue(int channels, int frames)
    : channels_(static_cast<std::size_t>(channels)), size_(static_cast<std::size_t>(frames)),
      samples_(channels_ * size_) {}

int FrameQueue::readable() const {
    return static_cast<int>(written_.load(std::memory_order_acquire) -
                            read_.load(std::memory_order_acquire));
}

int FrameQueue::writable() const {
    return static_cast<int>(size_) - readable();
}

void FrameQueue::write(const float* interleaved, int frames) {
    const std::size_t begin = written_.load(std::memory_order_relaxed);
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
        std::copy_n(interleaved + i * channels_, channels_,
                    &samples_[(begin + i) % size_ * channels_]);
    }
    written_.store(begin + static_cast<std::size_t>(frames), std::memory_order_release);
}

void FrameQueue::read(float* interleaved, int frames) {
    const std::size_t begin = read_.load(std::memory_order_relaxed);
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
        std::copy_n(&samples_[(begin + i) % size_ * channels_], channels_,
                    interleaved + i * channels_);
    }
    read_.store(begin + static_cast<std::size_t>(frames), std::memory_order_release);
}

} // namespace tvhost
