// Input that stops the audio thread at a chosen sample until another thread has done something.
#pragma once

#include <cstddef>
#include <functional>

// One at a time.
class TrappedInput {
public:
    // Room for `frames` samples, all zero. From `trapFrame` on they can't be read: the first read
    // there has `meanwhile` run on a thread of its own, waits for its end and then goes on, with
    // all samples readable.
    TrappedInput(std::size_t frames, std::size_t trapFrame, std::function<void()> meanwhile);
    ~TrappedInput();
    TrappedInput(const TrappedInput&) = delete;
    TrappedInput& operator=(const TrappedInput&) = delete;

    // To be filled before the trap is armed.
    float* samples() { return samples_; }
    void arm();
    bool sprung() const;

private:
    struct Waiting;

    float* samples_;
    char* memory_;
    std::size_t size_;
    std::size_t readable_; // bytes before the trap
    Waiting* waiting_;
};
