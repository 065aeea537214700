#include "tests/soak/AudioThread.h"

#include "tests/support/Dice.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <time.h>

namespace {

constexpr std::int64_t kSecond = 1000000000;

std::int64_t now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return time.tv_sec * kSecond + time.tv_nsec;
}

void sleepUntil(std::int64_t time) {
    const timespec until{time / kSecond, time % kSecond};
    clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr);
}

void raise(std::atomic<std::int64_t>& highest, std::int64_t value) {
    highest = std::max<std::int64_t>(highest, value); // one thread writes
}

} // namespace

AudioThread::AudioThread(AEffect* effect) : effect_(effect), thread_([this] { run(); }) {}

AudioThread::~AudioThread() {
    ending_ = true;
    thread_.join();
}

AudioReport AudioThread::report() const {
    const std::int64_t blocks = blocks_;
    return {blocks,
            nonFinite_,
            worst_,
            worstOnCore_,
            late_,
            blocks == 0 ? 0.0 : static_cast<double>(totalOnCore_) / static_cast<double>(blocks)};
}

void AudioThread::run() {
    std::array<float, kFrames> inLeft;
    std::array<float, kFrames> inRight;
    std::array<float, kFrames> outLeft{};
    std::array<float, kFrames> outRight{};
    float* inputs[2] = {inLeft.data(), inRight.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    Dice dice(1);
    std::int64_t next = now(CLOCK_MONOTONIC);
    while (!ending_) {
        for (std::size_t i = 0; i < inLeft.size(); ++i) {
            inLeft[i] = dice.within(-1.0f, 1.0f);
            inRight[i] = dice.within(-1.0f, 1.0f);
        }
        const std::int64_t begin = now(CLOCK_MONOTONIC);
        const std::int64_t beginOnCore = now(CLOCK_THREAD_CPUTIME_ID);
        effect_->processReplacing(effect_, inputs, outputs, kFrames);
        const std::int64_t onCore = now(CLOCK_THREAD_CPUTIME_ID) - beginOnCore;
        const std::int64_t taken = now(CLOCK_MONOTONIC) - begin;
        raise(worst_, taken);
        raise(worstOnCore_, onCore);
        totalOnCore_ += onCore;
        late_ += taken > kDeadline ? 1 : 0;
        const auto isFinite = [](float sample) { return std::isfinite(sample); };
        nonFinite_ += std::all_of(outLeft.begin(), outLeft.end(), isFinite) &&
                              std::all_of(outRight.begin(), outRight.end(), isFinite)
                          ? 0
                          : 1;
        ++blocks_;
        // A block that comes late doesn't make the next ones hurry: a sound card drops it.
        next = std::max(next + kDeadline, now(CLOCK_MONOTONIC) - kDeadline);
        sleepUntil(next);
    }
}
