#include "host/play/FrameQueue.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace tvhost;

TEST(FrameQueue, GivesFramesInOrderRoundItsEnd) {
    FrameQueue queue(2, 5);
    std::vector<float> out(8);
    float next = 0.0f;
    float expected = 0.0f;
    for (int round = 0; round < 20; ++round) {
        const int count = 1 + round % 4;
        std::vector<float> in;
        in.reserve(static_cast<std::size_t>(2 * count));
        for (int i = 0; i < 2 * count; ++i) {
            in.push_back(next++);
        }
        EXPECT_EQ(queue.writable(), 5);
        queue.write(in.data(), count);
        EXPECT_EQ(queue.readable(), count);
        EXPECT_EQ(queue.writable(), 5 - count);
        queue.read(out.data(), count);
        for (int i = 0; i < 2 * count; ++i) {
            EXPECT_EQ(out[static_cast<std::size_t>(i)], expected++);
        }
    }
}

TEST(FrameQueue, LosesNothingBetweenTwoThreads) {
    constexpr int kFrames = 200000;
    FrameQueue queue(1, 64);
    std::thread writer([&] {
        for (int sent = 0; sent < kFrames;) {
            if (queue.writable() > 0) {
                const auto value = static_cast<float>(sent);
                queue.write(&value, 1);
                ++sent;
            } else {
                std::this_thread::yield();
            }
        }
    });
    int wrong = 0;
    for (int got = 0; got < kFrames;) {
        float value = 0.0f;
        if (queue.readable() > 0) {
            queue.read(&value, 1);
            wrong += value != static_cast<float>(got) ? 1 : 0;
            ++got;
        } else {
            std::this_thread::yield();
        }
    }
    writer.join();
    EXPECT_EQ(wrong, 0);
}
