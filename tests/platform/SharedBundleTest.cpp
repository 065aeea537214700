// Effects that are made and ended on several threads share one bundle object.
#include "tests/platform/CoreFoundationObjects.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 4;

// Begins the work on all threads at about the same moment.
void onThreads(const std::function<void()>& work) {
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&] {
            ++ready;
            while (ready < kThreads) {
                std::this_thread::yield();
            }
            work();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace

TEST(SharedBundle, NoOwnerIsLostOrInventedAmongThreads) {
    int ends = 0;
    auto* const object = new CountedObject(&ends);
    onThreads([object] {
        for (int round = 0; round < 200000; ++round) {
            CFRetain(static_cast<CFObject*>(object));
            CFRelease(static_cast<CFObject*>(object));
        }
    });
    EXPECT_EQ(ends, 0);
    CFRelease(static_cast<CFObject*>(object));
    EXPECT_EQ(ends, 1);
}

TEST(SharedBundle, ThreadsFindTheObjectThatLives) {
    const CFBundleRef owned = bundleAt("/");
    std::atomic<int> others{0};
    onThreads([&] {
        for (int round = 0; round < 5000; ++round) {
            const CFBundleRef found = bundleAt("/");
            others += found != owned ? 1 : 0;
            CFRelease(found);
        }
    });
    EXPECT_EQ(others, 0);
    CFRelease(owned);
}

TEST(SharedBundle, ThreadsMakeAndEndItInTurns) {
    std::atomic<int> missing{0};
    onThreads([&] {
        for (int round = 0; round < 20000; ++round) {
            const CFBundleRef found = bundleAt("/");
            if (found == nullptr) {
                ++missing;
            } else {
                CFRelease(found);
            }
        }
    });
    EXPECT_EQ(missing, 0);
}
