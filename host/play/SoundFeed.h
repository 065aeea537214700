// A sound file that is read ahead of what plays it.
#pragma once

#include "host/play/FrameQueue.h"
#include "host/render/FrameSource.h"

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace tvhost {

// Reads on a thread of its own until the sound ends, or again and again. read() and isFinished()
// are for one other thread and never wait.
class SoundFeed {
public:
    using Open = std::function<std::unique_ptr<FrameSource>()>;

    // `open` gives the sound from its beginning, for each round. Some seconds of it are read before
    // the constructor returns. Throws what `open` and the sound throw.
    SoundFeed(Open open, bool loops);
    ~SoundFeed();
    SoundFeed(const SoundFeed&) = delete;
    SoundFeed& operator=(const SoundFeed&) = delete;

    int channels() const { return queue_->channels(); }
    std::int64_t expectedFrames() const { return expectedFrames_; } // 0 when not known

    // Fills up to `frames` frames, interleaved, and answers how many there were.
    int read(float* interleaved, int frames);

    // Whether everything has been read.
    bool isFinished() const;

    // Throws what the sound threw while it was read, if it did; it counts as finished then.
    void rethrow() const;

private:
    void feed();
    bool fill();

    Open open_;
    bool loops_;
    std::unique_ptr<FrameSource> source_;
    std::int64_t expectedFrames_;
    std::unique_ptr<FrameQueue> queue_;
    std::vector<float> chunk_;
    std::exception_ptr fault_;
    std::atomic<bool> ended_{false};
    std::atomic<bool> leaving_{false};
    std::thread thread_;
};

} // namespace tvhost
