// The host's audio thread: blocks of 64 frames at the pace of a sound card of 48 kHz.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <atomic>
#include <cstdint>
#include <thread>

// What the thread has seen so far. Times in nanoseconds.
struct AudioReport {
    std::int64_t blocks;
    std::int64_t nonFiniteBlocks;  // with an infinity or a not-a-number in the output
    std::int64_t worstBlock;       // from call to return, with all that the system did meanwhile
    std::int64_t worstBlockOnCore; // what the thread itself took of a core for one block
    std::int64_t lateBlocks;       // that took longer than a block lasts, as worstBlock counts
    double meanBlockOnCore;
};

class AudioThread {
public:
    static constexpr VstInt32 kFrames = 64;
    static constexpr double kRate = 48000.0;
    static constexpr std::int64_t kDeadline = 1333333; // nanoseconds that a block lasts

    explicit AudioThread(AEffect* effect);
    ~AudioThread(); // ends the thread
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    // Any thread.
    AudioReport report() const;

private:
    void run();

    AEffect* effect_;
    std::atomic<bool> ending_{false};
    std::atomic<std::int64_t> blocks_{0};
    std::atomic<std::int64_t> nonFinite_{0};
    std::atomic<std::int64_t> worst_{0};
    std::atomic<std::int64_t> worstOnCore_{0};
    std::atomic<std::int64_t> late_{0};
    std::atomic<std::int64_t> totalOnCore_{0};
    std::thread thread_;
};
