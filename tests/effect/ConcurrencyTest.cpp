// Threads on one instance without any lock, as hosts have them. What these runs give is not the
// same each time; what they must not give is. AddressSanitizer watches the memory.
#include "effect/VstXSynth.h"

#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kBlocks = 20000;
constexpr VstInt32 kFrames = 256;

// Noise through the effect while `meddle` is called again and again on another thread. Returns the
// number of samples that came out infinite or as no numbers.
std::size_t wildSamples(VstXSynth& effect, const std::function<void(Dice&)>& meddle) {
    std::atomic<bool> meddling{false};
    std::atomic<bool> done{false};
    std::thread other([&] {
        Dice dice(11);
        while (!done) {
            meddle(dice);
            meddling = true;
        }
    });
    while (!meddling) {
        std::this_thread::yield();
    }
    Dice dice(12);
    std::vector<float> left(kFrames);
    std::vector<float> right(kFrames);
    float* channels[2] = {left.data(), right.data()};
    std::size_t wild = 0;
    for (int block = 0; block < kBlocks; ++block) {
        for (std::size_t i = 0; i < kFrames; ++i) {
            left[i] = dice.within(-1.0f, 1.0f);
            right[i] = dice.within(-1.0f, 1.0f);
        }
        effect.processReplacing(channels, channels, kFrames);
        for (std::size_t i = 0; i < kFrames; ++i) {
            wild += std::isfinite(left[i]) && std::isfinite(right[i]) ? 0 : 1;
        }
    }
    done = true;
    other.join();
    return wild;
}

} // namespace

TEST(Concurrency, ParametersOfAnotherThreadLeaveTheOutputFinite) {
    VstXSynth effect(plainHost);
    EXPECT_EQ(wildSamples(effect,
                          [&](Dice& dice) {
                              effect.setParameter(static_cast<VstInt32>(dice.between(0, 8)),
                                                  dice.within(0.0f, 0.9f));
                          }),
              0u);
}

TEST(Concurrency, ShortDelaysOfAnotherThreadLeaveTheOutputFinite) {
    VstXSynth effect(plainHost);
    EXPECT_EQ(wildSamples(effect,
                          [&](Dice& dice) {
                              effect.setParameter(kDelay,
                                                  dice.oneIn(2) ? dice.within(-0.1f, 0.01f) : 1.0f);
                          }),
              0u);
}

TEST(Concurrency, ProgramsOfAnotherThreadLeaveTheOutputFinite) {
    VstXSynth effect(plainHost);
    EXPECT_EQ(wildSamples(effect,
                          [&](Dice& dice) {
                              effect.setProgram(static_cast<VstInt32>(dice.between(0, 25)));
                              char name[32];
                              effect.getProgramName(name);
                              effect.setProgramName(name);
                          }),
              0u);
}

TEST(Concurrency, ResumesAndRatesOfAnotherThreadLeaveTheOutputFinite) {
    VstXSynth effect(plainHost);
    static constexpr float kRates[] = {44100.0f, 48000.0f, 96000.0f, 192000.0f};
    EXPECT_EQ(wildSamples(effect,
                          [&](Dice& dice) {
                              if (dice.oneIn(3)) {
                                  effect.setSampleRate(dice.pick(kRates));
                              }
                              effect.resume();
                              effect.suspend();
                              for (VstInt32 index = 0; index < 9; ++index) {
                                  char text[16];
                                  effect.getParameterDisplay(index, text);
                              }
                          }),
              0u);
}

TEST(Concurrency, InstancesOnTheirOwnThreadsDoNotMeet) {
    constexpr std::size_t kThreads = 4;
    const auto render = [](VstXSynth& effect, std::size_t number) {
        effect.setProgram(static_cast<VstInt32>(number * 5));
        Dice dice(number);
        std::vector<float> left(kFrames);
        std::vector<float> right(kFrames);
        std::vector<float> all;
        float* channels[2] = {left.data(), right.data()};
        for (int block = 0; block < 200; ++block) {
            for (std::size_t i = 0; i < kFrames; ++i) {
                left[i] = right[i] = dice.within(-1.0f, 1.0f);
            }
            effect.processReplacing(channels, channels, kFrames);
            all.insert(all.end(), left.begin(), left.end());
            all.insert(all.end(), right.begin(), right.end());
        }
        return all;
    };
    // Made and ended on this thread: an editor belongs to the host's user-interface thread.
    std::vector<std::unique_ptr<VstXSynth>> effects;
    effects.reserve(kThreads);
    for (std::size_t number = 0; number < kThreads; ++number) {
        effects.push_back(std::make_unique<VstXSynth>(plainHost));
    }
    std::vector<std::vector<float>> together(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (std::size_t number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] { together[number] = render(*effects[number], number); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::size_t number = 0; number < kThreads; ++number) {
        VstXSynth alone(plainHost);
        EXPECT_EQ(together[number], render(alone, number)) << number;
    }
}
