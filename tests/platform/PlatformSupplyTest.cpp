// What Linux is supplied with for the sound library: queues, strings and the alert.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFUserNotification.h>
#include <dispatch/dispatch.h>

#include "platform/linux/CFString.h"

namespace {

// Counts up to a goal on some threads, and waits for it on another.
class Countdown {
public:
    explicit Countdown(int goal) : left_(goal) {}

    void hit() {
        const std::lock_guard<std::mutex> lock(mutex_);
        --left_;
        changed_.notify_all();
    }

    void wait() {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this] { return left_ <= 0; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int left_;
};

// A string that releases itself.
class OwnString {
public:
    OwnString(const char* text, CFStringEncoding encoding)
        : string_(CFStringCreateWithCString(kCFAllocatorDefault, text, encoding)) {}
    ~OwnString() {
        if (string_ != nullptr) {
            CFRelease(string_);
        }
    }
    OwnString(const OwnString&) = delete;
    OwnString& operator=(const OwnString&) = delete;

    CFStringRef get() const { return string_; }
    std::string utf8() const { return string_->utf8; }

private:
    CFStringRef string_;
};

std::string shownAlert(CFStringRef header, CFStringRef message) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(0, CFUserNotificationDisplayAlert(20.0, kCFUserNotificationPlainAlertLevel, nullptr,
                                                nullptr, nullptr, header, message, CFSTR("OK"),
                                                nullptr, nullptr, nullptr));
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(DispatchQueues, AreFourAndTheSameAtEachCall) {
    std::vector<dispatch_queue_t> queues;
    for (const int priority : {2, 0, -2, -32768}) {
        queues.push_back(dispatch_get_global_queue(priority, 0));
        EXPECT_NE(queues.back(), nullptr);
        EXPECT_EQ(queues.back(), dispatch_get_global_queue(priority, 0));
    }
    std::sort(queues.begin(), queues.end());
    EXPECT_EQ(std::unique(queues.begin(), queues.end()), queues.end());
    EXPECT_EQ(dispatch_get_global_queue(1, 0), nullptr);
}

TEST(DispatchQueues, RunEveryBlockOnAnotherThread) {
    constexpr int kCount = 1000;
    Countdown done(kCount);
    Countdown* const left = &done;
    std::atomic<int> sum{0};
    std::atomic<int>* const total = &sum;
    const std::thread::id caller = std::this_thread::get_id();
    for (int i = 1; i <= kCount; ++i) {
        dispatch_async(dispatch_get_global_queue(i % 2 == 0 ? 2 : 0, 0), ^{
            if (std::this_thread::get_id() != caller) {
                *total += i;
            }
            left->hit();
        });
    }
    done.wait();
    EXPECT_EQ(sum, kCount * (kCount + 1) / 2);
}

TEST(DispatchQueues, RunSeveralBlocksAtATime) {
    Countdown first(1);
    Countdown second(1);
    Countdown done(2);
    Countdown* const firstStarted = &first;
    Countdown* const secondStarted = &second;
    Countdown* const left = &done;
    dispatch_async(dispatch_get_global_queue(2, 0), ^{
        firstStarted->hit();
        secondStarted->wait();
        left->hit();
    });
    dispatch_async(dispatch_get_global_queue(2, 0), ^{
        secondStarted->hit();
        firstStarted->wait();
        left->hit();
    });
    done.wait(); // forever, if one had to end for the other to begin
}

TEST(DispatchQueues, HigherPriorityIsServedFirst) {
    // Every worker is kept busy until the blocks to be ordered are waiting.
    const int workers = static_cast<int>(std::max(2u, std::thread::hardware_concurrency()));
    Countdown started(workers);
    Countdown release(1);
    Countdown done(workers + 20);
    Countdown* const isStarted = &started;
    Countdown* const isReleased = &release;
    Countdown* const left = &done;
    for (int i = 0; i < workers; ++i) {
        dispatch_async(dispatch_get_global_queue(0, 0), ^{
            isStarted->hit();
            isReleased->wait();
            left->hit();
        });
    }
    started.wait();

    std::mutex mutex;
    std::vector<char> order;
    std::mutex* const lock = &mutex;
    std::vector<char>* const list = &order;
    Countdown highDone(10);
    Countdown* const highLeft = &highDone;
    for (int i = 0; i < 10; ++i) {
        dispatch_async(dispatch_get_global_queue(-2, 0), ^{
            highLeft->wait(); // every high block is under way by now, as no worker takes a low one
                              // before
            left->hit();
        });
        dispatch_async(dispatch_get_global_queue(2, 0), ^{
            {
                const std::lock_guard<std::mutex> guard(*lock);
                list->push_back('h');
            }
            highLeft->hit();
            left->hit();
        });
    }
    release.hit();
    done.wait(); // forever, if low blocks had taken all workers first
    EXPECT_EQ(order.size(), 10u);
}

TEST(CFStrings, AreDecodedFromTheirEncoding) {
    EXPECT_EQ(OwnString("plain", kCFStringEncodingMacRoman).utf8(), "plain");
    EXPECT_EQ(OwnString("", kCFStringEncodingMacRoman).utf8(), "");
    EXPECT_EQ(OwnString("\x8a\xa5\xdb", kCFStringEncodingMacRoman).utf8(), "ä•€");
    EXPECT_EQ(OwnString("ä•€", kCFStringEncodingUTF8).utf8(), "ä•€");
    EXPECT_EQ(OwnString("plain", kCFStringEncodingASCII).utf8(), "plain");
}

TEST(CFStrings, EveryByteIsMacRoman) {
    for (int byte = 1; byte < 256; ++byte) {
        const char text[] = {static_cast<char>(byte), '\0'};
        const OwnString string(text, kCFStringEncodingMacRoman);
        ASSERT_NE(string.get(), nullptr) << byte;
        EXPECT_FALSE(string.utf8().empty());
    }
}

TEST(CFStrings, TextThatTheEncodingCantHoldGivesNone) {
    EXPECT_EQ(OwnString("\xff", kCFStringEncodingUTF8).get(), nullptr);
    EXPECT_EQ(OwnString("\xff", kCFStringEncodingASCII).get(), nullptr);
    EXPECT_EQ(OwnString("plain", 0x12345678).get(), nullptr);
}

TEST(CFStrings, LiteralIsOneObject) {
    CFStringRef strings[2];
    for (CFStringRef& string : strings) {
        string = CFSTR("literal");
    }
    EXPECT_EQ(strings[0], strings[1]);
    EXPECT_EQ(strings[0]->utf8, "literal");
}

TEST(CFAlert, IsOneLineOnStandardError) {
    EXPECT_EQ(shownAlert(CFSTR("Header"), CFSTR("message")), "Header: message\n");
    EXPECT_EQ(shownAlert(CFSTR("Header"), nullptr), "Header\n");
    EXPECT_EQ(shownAlert(CFSTR("Header"), CFSTR("two\nlines")), "Header: two lines\n");
}

TEST(CFAlert, NobodyAnswers) {
    CFOptionFlags response = kCFUserNotificationDefaultResponse;
    testing::internal::CaptureStderr();
    CFUserNotificationDisplayAlert(20.0, kCFUserNotificationPlainAlertLevel, nullptr, nullptr,
                                   nullptr, CFSTR("Header"), nullptr, CFSTR("OK"), nullptr, nullptr,
                                   &response);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(response, static_cast<CFOptionFlags>(kCFUserNotificationCancelResponse));
}
