// A thread of the host's that writes parameters without a pause worth the name.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <atomic>
#include <cstdint>
#include <thread>

// Writes random values, some two thousand times a second. Feedback stays below what lets echoes
// grow, so that a sample that is no number is a fault and no sound.
class AutomationThread {
public:
    AutomationThread(AEffect* effect, std::uint64_t seed);
    ~AutomationThread(); // ends the thread
    AutomationThread(const AutomationThread&) = delete;
    AutomationThread& operator=(const AutomationThread&) = delete;

    std::int64_t writes() const { return writes_; }

private:
    void run(std::uint64_t seed);

    AEffect* effect_;
    std::atomic<bool> ending_{false};
    std::atomic<std::int64_t> writes_{0};
    std::thread thread_;
};
