// Frames handed from one thread to one other, neither of which waits.
#pragma once

#include <atomic>
#include <cstddef>
#include <vector>

namespace tvhost {

// One thread writes, one reads.
class FrameQueue {
public:
    // Holds `frames` frames of `channels` samples.
    FrameQueue(int channels, int frames);

    int channels() const { return static_cast<int>(channels_); }

    // How many frames may be written, or read, by whoever does.
    int writable() const;
    int readable() const;

    // Interleaved. Not more than writable(), or readable().
    void write(const float* interleaved, int frames);
    void read(float* interleaved, int frames);

private:
    std::size_t channels_;
    std::size_t size_; // frames
    std::vector<float> samples_;
    // In frames since the beginning.
    std::atomic<std::size_t> written_{0};
    std::atomic<std::size_t> read_{0};
};

} // namespace tvhost
