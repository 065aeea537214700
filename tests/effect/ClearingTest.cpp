// A clearing of the lines that another thread is in the midst of when a block runs.
#include "effect/VstXSynth.h"
#include "tests/effect/SynthRun.h"
#include "tests/effect/TrappedInput.h"
#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <signal.h>
#include <sys/mman.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kLineBytes = VstXSynth::kDelayCapacity * sizeof(float);

// A delay line whose first samples can't be written before `release`: who tries to waits.
class HeldLine {
public:
    HeldLine() {
        void* const memory =
            mmap(nullptr, kLineBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        samples_ = static_cast<float*>(memory);
        current = this;
    }
    ~HeldLine() {
        sigaction(SIGSEGV, &before_, nullptr);
        munmap(samples_, kLineBytes);
    }
    HeldLine(const HeldLine&) = delete;
    HeldLine& operator=(const HeldLine&) = delete;

    float* samples() { return samples_; }

    void hold() {
        struct sigaction action = {};
        action.sa_sigaction = onFault;
        action.sa_flags = SA_SIGINFO;
        sigaction(SIGSEGV, &action, &before_);
        mprotect(samples_, kPage, PROT_READ);
    }
    void waitForAWriter() const {
        while (!reached_) {
            sched_yield();
        }
    }
    void release() { released_ = true; }

private:
    static constexpr std::size_t kPage = 4096;
    static HeldLine* current;

    static void onFault(int signal, siginfo_t* info, void*) {
        HeldLine& line = *current;
        const auto* const first = reinterpret_cast<const char*>(line.samples_);
        const auto* const address = static_cast<const char*>(info->si_addr);
        if (address < first || address >= first + kPage) {
            sigaction(signal, &line.before_, nullptr); // a real fault comes again
            return;
        }
        line.reached_ = true;
        while (!line.released_) {
            sched_yield();
        }
        mprotect(line.samples_, kPage, PROT_READ | PROT_WRITE);
    }

    float* samples_;
    struct sigaction before_ = {};
    std::atomic<bool> reached_{false};
    std::atomic<bool> released_{false};
};

HeldLine* HeldLine::current = nullptr;

// How many old samples are in the right line when `clear` is half done at the beginning of a block
// and done within it.
std::ptrdiff_t oldSamplesLeft(const std::function<void(VstXSynth&)>& clear, std::int64_t position) {
    constexpr std::size_t kFrames = 1500;
    VstXSynth effect(plainHost);
    setPlainEchoes(effect, 40000, 1.0f);
    HeldLine right;
    float* const own = effect.delayBufferRight;
    effect.delayBufferRight = right.samples();
    std::fill_n(effect.delayBufferRight, VstXSynth::kDelayCapacity, 0.5f);
    effect.delayPosition = position;

    right.hold();
    std::thread clearing([&] { clear(effect); });
    right.waitForAWriter();
    effect.delayPosition = position; // where a write of the delay has rewound it

    TrappedInput input(kFrames, 700, [&] {
        right.release();
        clearing.join();
    });
    std::vector<float> silence(kFrames);
    std::vector<float> outLeft(kFrames);
    std::vector<float> outRight(kFrames);
    float* inputs[2] = {input.samples(), silence.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    input.arm();
    effect.processReplacing(inputs, outputs, kFrames);
    EXPECT_TRUE(input.sprung());
    const std::ptrdiff_t left =
        VstXSynth::kDelayCapacity -
        std::count(right.samples(), right.samples() + VstXSynth::kDelayCapacity, 0.0f);
    effect.delayBufferRight = own;
    return left;
}

} // namespace

// The sample in hand is the one that may come back.
TEST(Clearing, ResumeMeetingABlockLeavesNoMoreThanOneOldSample) {
    EXPECT_LE(oldSamplesLeft([](VstXSynth& effect) { effect.resume(); }, 5000), 1);
}

TEST(Clearing, DelayWriteMeetingABlockLeavesNoMoreThanOneOldSample) {
    EXPECT_LE(oldSamplesLeft([](VstXSynth& effect) { setPlainEchoes(effect, 40000, 1.0f); }, 5000),
              1);
}
