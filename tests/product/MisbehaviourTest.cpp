// Hosts that do what they should not, as far as it is defined what then happens.
#include "tests/product/BuiltPlugin.h"

#include "tests/support/Dice.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <thread>
#include <vector>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

class Misbehaviour : public BuiltPlugin {
protected:
    Misbehaviour() { unsetenv("DISPLAY"); } // an editor that opens has nowhere to go
};

void processNoise(const Instance& instance, std::int32_t frames) {
    Dice dice(5);
    std::vector<float> left(static_cast<std::size_t>(frames));
    std::vector<float> right(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        left[i] = dice.within(-1.0f, 1.0f);
        right[i] = dice.within(-1.0f, 1.0f);
    }
    float* channels[2] = {left.data(), right.data()};
    instance->processReplacing(instance.record(), channels, channels, frames);
}

} // namespace

TEST_F(Misbehaviour, ValuesOutOfEveryRangeDoNotHurt) {
    for (const float value : {std::nanf(""), kInfinity, -kInfinity, 1e30f, -1e30f, -1.0f, 100.0f}) {
        for (VstInt32 index = 1; index < 9; ++index) {
            const Instance instance(plugin);
            instance.set(index, value);
            processNoise(instance, 5000);
            const float kept = instance.get(index);
            if (index == 4 || index == 5) {
                EXPECT_EQ(kept, std::isnan(value) ? 0.0f : 1.0f) << index;
            } else {
                EXPECT_TRUE(kept == value || (std::isnan(kept) && std::isnan(value))) << index;
            }
        }
    }
}

TEST_F(Misbehaviour, DelaysThatAreNoLengthAtAllAreOneSampleLong) {
    for (const float value : {std::nanf(""), kInfinity, -kInfinity, 1e30f, -1e30f, -1.0f}) {
        const Instance instance(plugin);
        instance.set(2, 0.0f);
        instance.set(3, 0.0f);
        instance.set(1, 0.0f);
        instance.set(0, value);
        float left[4] = {0.5f, 0.0f, 0.0f, 0.0f};
        float right[4] = {};
        float* channels[2] = {left, right};
        instance->processReplacing(instance.record(), channels, channels, 4);
        EXPECT_EQ(std::vector<float>(right, right + 4),
                  (std::vector<float>{0.0f, 0.5f, 0.0f, 0.0f}))
            << value;
    }
}

TEST_F(Misbehaviour, RatesOutOfEveryRangeDoNotHurt) {
    const Instance instance(plugin);
    instance.set(0, 0.5f);
    for (const float rate : {0.0f, -44100.0f, 1.0f, std::nanf(""), -kInfinity, kInfinity}) {
        instance.ask(effSetSampleRate, 0, 0, nullptr, rate);
        processNoise(instance, 1000);
    }
    instance.ask(effSetSampleRate, 0, 0, nullptr, 44100.0f);
    processNoise(instance, 1000);
    EXPECT_EQ(instance.text(effGetParamDisplay, 0), "22049");
}

TEST_F(Misbehaviour, EmptyAndNegativeBlocksTouchNothing) {
    const Instance instance(plugin);
    float sample = 0.25f;
    float* channels[2] = {&sample, &sample};
    for (const VstInt32 frames : {0, -1, -8192, std::numeric_limits<VstInt32>::min()}) {
        instance->processReplacing(instance.record(), channels, channels, frames);
        EXPECT_EQ(sample, 0.25f) << frames;
    }
}

TEST_F(Misbehaviour, IndicesOutOfRangeAreIgnored) {
    const Instance instance(plugin);
    for (const VstInt32 index : {-1, 9, 1 << 30, std::numeric_limits<VstInt32>::min()}) {
        instance.set(index, 0.5f);
        EXPECT_EQ(instance.get(index), 0.0f);
    }
    EXPECT_EQ(instance.get(0), 0.0799773261f);
    EXPECT_EQ(instance.get(8), 1.0f);
}

TEST_F(Misbehaviour, ClosingWithTheEditorOpenIsFine) {
    Instance instance(plugin);
    EXPECT_EQ(instance.ask(effEditOpen), 1);
    instance.set(8, 0.5f);
    instance.ask(effSetProgram, 0, 7);
    instance.ask(effEditIdle);
    EXPECT_EQ(instance.close(), 1);
}

TEST_F(Misbehaviour, OpeningTwiceAndClosingTwiceIsFine) {
    const Instance instance(plugin);
    instance.ask(effEditClose);
    EXPECT_EQ(instance.ask(effEditOpen), 1);
    EXPECT_EQ(instance.ask(effEditOpen), 1);
    instance.ask(effEditClose);
    instance.ask(effEditClose);
    instance.ask(effOpen);
    instance.ask(effOpen);
}

TEST_F(Misbehaviour, MainsMayChangeInAnyOrder) {
    const Instance instance(plugin);
    for (const VstIntPtr value : {0, 0, 1, 1, 0, 1, -1, 2}) {
        EXPECT_EQ(instance.ask(effMainsChanged, 0, value), 0);
        processNoise(instance, 100);
    }
}

TEST_F(Misbehaviour, ProgramsOfAnotherThreadWhileBlocksRunDoNotHurt) {
    const Instance instance(plugin);
    std::atomic<bool> changing{false};
    std::atomic<bool> done{false};
    std::thread other([&] {
        Dice dice(21);
        while (!done) {
            instance.ask(effSetProgram, 0, dice.between(-1, 26));
            instance.set(static_cast<VstInt32>(dice.between(0, 8)), dice.within(0.0f, 0.9f));
            instance.text(effGetParamDisplay, static_cast<VstInt32>(dice.between(0, 8)));
            changing = true;
        }
    });
    while (!changing) {
        std::this_thread::yield();
    }
    std::vector<float> left(512);
    std::vector<float> right(512);
    float* channels[2] = {left.data(), right.data()};
    bool finite = true;
    for (int block = 0; block < 4000; ++block) {
        for (std::size_t i = 0; i < left.size(); ++i) {
            left[i] = right[i] = static_cast<float>(i % 64) / 64.0f - 0.5f;
        }
        instance->processReplacing(instance.record(), channels, channels, 512);
        for (std::size_t i = 0; i < left.size(); ++i) {
            finite = finite && std::isfinite(left[i]) && std::isfinite(right[i]);
        }
    }
    done = true;
    other.join();
    EXPECT_TRUE(finite);
}
