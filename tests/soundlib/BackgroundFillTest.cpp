// Fills on a thread of their own. This program stands between the reader and the two calls that
// lead there, so that it knows the thread for certain and can wait for its end.
#include <gtest/gtest.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include <dispatch/dispatch.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "soundlib/LiveField.h"
#include "tests/soundlib/StreamFixture.h"

namespace {

constexpr bool kInBackground = true;

struct Creation {
    pthread_t* handle;
    const pthread_attr_t* attributes;
    void* argument;
    pthread_t creator;
};

struct Wiretap {
    std::mutex mutex;
    std::condition_variable changed;
    const pthread_attr_t* attributes = nullptr; // whose threads are noted
    std::vector<Creation> creations;
    std::vector<dispatch_queue_t> queues;
    std::function<void()> atRequest;
};

Wiretap wiretap;

} // namespace

extern "C" {

int __real_pthread_create(pthread_t* handle, const pthread_attr_t* attributes,
                          void* (*function)(void*), void* argument);
void __real_dispatch_async(dispatch_queue_t queue, dispatch_block_t block);

int __wrap_pthread_create(pthread_t* handle, const pthread_attr_t* attributes,
                          void* (*function)(void*), void* argument) {
    const int result = __real_pthread_create(handle, attributes, function, argument);
    const std::lock_guard<std::mutex> lock(wiretap.mutex);
    if (attributes != nullptr && attributes == wiretap.attributes) {
        wiretap.creations.push_back({handle, attributes, argument, pthread_self()});
        wiretap.changed.notify_all();
    }
    return result;
}

void __wrap_dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    wiretap.queues.push_back(queue);
    if (wiretap.atRequest) {
        wiretap.atRequest();
    }
    __real_dispatch_async(queue, block);
}
}

class BackgroundFill : public testing::Test {
protected:
    BackgroundFill() {
        const std::lock_guard<std::mutex> lock(wiretap.mutex);
        wiretap.attributes = &fixture.reader.threadAttributes;
        wiretap.creations.clear();
        wiretap.queues.clear();
        wiretap.atRequest = nullptr;
    }

    // Waits for the end of the latest fill's thread and gives what it returned. Afterwards
    // everything that the fill wrote can be read.
    void* finishFill() {
        ++fills;
        pthread_t thread;
        {
            std::unique_lock<std::mutex> lock(wiretap.mutex);
            wiretap.changed.wait(lock, [this] { return wiretap.creations.size() == fills; });
            thread = *wiretap.creations.back().handle;
        }
        void* result = nullptr;
        pthread_join(thread, &result);
        return result;
    }

    StreamFixture fixture;
    WavStreamReader& reader = fixture.reader;
    std::size_t fills = 0;
};

TEST_F(BackgroundFill, GoesThroughTheHighQueueToAThreadOfItsOwn) {
    const std::string bytes = fixture.writeRandomFile("a", 3 * kFillBytes, 44);
    reader.start(&fixture.info, kInBackground);
    EXPECT_EQ(finishFill(), &reader);
    reader.fillSecondBuffer(kInBackground);
    EXPECT_EQ(finishFill(), &reader);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 44));
    EXPECT_EQ(bytesOf(fixture.second), filledFrom(bytes, 44 + kFillBytes));

    ASSERT_EQ(wiretap.creations.size(), 2u);
    EXPECT_EQ(wiretap.creations[0].handle, &reader.firstThread);
    EXPECT_EQ(wiretap.creations[1].handle, &reader.secondThread);
    for (const Creation& creation : wiretap.creations) {
        EXPECT_EQ(creation.attributes, &reader.threadAttributes);
        EXPECT_EQ(creation.argument, &reader);
        EXPECT_FALSE(pthread_equal(creation.creator, pthread_self()));
    }
    const dispatch_queue_t high = dispatch_get_global_queue(2, 0);
    EXPECT_EQ(wiretap.queues, (std::vector<dispatch_queue_t>{high, high}));
}

TEST_F(BackgroundFill, ForegroundFillUsesNeitherQueueNorThread) {
    fixture.writeRandomFile("a", 1000, 0);
    reader.start(&fixture.info, false);
    reader.fillSecondBuffer(false);
    EXPECT_TRUE(wiretap.queues.empty());
    EXPECT_TRUE(wiretap.creations.empty());
}

TEST_F(BackgroundFill, StartAsksAfterEverythingButCounterAIsReset) {
    fixture.writeRandomFile("a", 1000, 0);
    reader.streamFlagA = reader.streamFlagB = true;
    reader.streamCounterA = reader.streamCounterB = 7;
    reader.streamCounterC = reader.streamCounterD = 7;
    int requests = 0;
    wiretap.atRequest = [&] {
        ++requests;
        EXPECT_EQ(reader.info, &fixture.info);
        EXPECT_TRUE(reader.startedFlag);
        EXPECT_FALSE(reader.streamFlagA);
        EXPECT_FALSE(reader.streamFlagB);
        EXPECT_EQ(reader.streamCounterB, 0);
        EXPECT_EQ(reader.streamCounterC, 0);
        EXPECT_EQ(reader.streamCounterD, 0);
        EXPECT_TRUE(reader.reopenPending);
        EXPECT_FALSE(reader.filling);
        EXPECT_EQ(reader.streamCounterA, 7);
    };
    reader.start(&fixture.info, kInBackground);
    EXPECT_EQ(requests, 1);
    EXPECT_EQ(reader.streamCounterA, 0);
    finishFill();
    EXPECT_FALSE(reader.reopenPending);
    EXPECT_FALSE(reader.filling);
}

TEST_F(BackgroundFill, StartReadsItsFlagOnEntry) {
    const std::string bytes = fixture.writeRandomFile("a", 1000, 0);
    reader.streamFlagA = true; // becomes false in between
    reader.start(&fixture.info, reader.streamFlagA);
    EXPECT_EQ(finishFill(), &reader);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 0));
}

TEST_F(BackgroundFill, DeliversTheFileAsOneSequenceWhateverItsLength) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, kFillBytes - 1, kFillBytes,
                                     kFillBytes + 1, 2 * kFillBytes, 3 * kFillBytes + 4711}) {
        SCOPED_TRACE(length);
        const std::string bytes = fixture.writeRandomFile("a", length, 3);
        fixture.markBuffers();
        reader.start(&fixture.info, kInBackground);
        std::size_t position = 3;
        for (int turn = 0; turn < 5; ++turn) {
            finishFill();
            ASSERT_FALSE(reader.filling);
            ASSERT_EQ(bytesOf(turn % 2 == 0 ? fixture.first : fixture.second),
                      filledFrom(bytes, position));
            position += kFillBytes;
            fixture.markBuffers();
            if (turn % 2 == 0) {
                reader.fillSecondBuffer(kInBackground);
            } else {
                reader.fillFirstBuffer(kInBackground);
            }
        }
        finishFill();
    }
}

TEST_F(BackgroundFill, ForegroundAndBackgroundFillsShareTheSequence) {
    const std::string bytes = fixture.writeRandomFile("a", 5 * kFillBytes, 0);
    reader.start(&fixture.info, kInBackground);
    finishFill();
    reader.fillSecondBuffer(false);
    EXPECT_EQ(bytesOf(fixture.second), filledFrom(bytes, kFillBytes));
    reader.fillFirstBuffer(kInBackground);
    finishFill();
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 2 * kFillBytes));
}

TEST_F(BackgroundFill, MissingFileLeavesTheBuffersAndEndsTheFill) {
    fixture.info.path = fixture.folder.file("missing");
    reader.start(&fixture.info, kInBackground);
    EXPECT_EQ(finishFill(), &reader);
    EXPECT_FALSE(reader.filling);
    EXPECT_FALSE(reader.reopenPending);
    EXPECT_TRUE(reader.stream.fail());
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("", 0));
}

TEST_F(BackgroundFill, RequestReturnsWhileTheDiskStillBlocks) {
    // Opening a pipe for reading blocks until somebody opens it for writing.
    fixture.info.path = fixture.folder.file("pipe");
    ASSERT_EQ(0, mkfifo(fixture.info.path.c_str(), 0600));
    reader.start(&fixture.info, kInBackground);
    while (!readLive(reader.filling)) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(readLive(reader.filling));
    EXPECT_TRUE(readLive(reader.reopenPending));
    const int writer = open(fixture.info.path.c_str(), O_WRONLY);
    finishFill();
    close(writer);
    EXPECT_FALSE(reader.filling);
    EXPECT_FALSE(reader.reopenPending);
}

TEST_F(BackgroundFill, StartAgainReopensInTheBackground) {
    fixture.writeRandomFile("old", 2 * kFillBytes, 0);
    WavFileInfo oldInfo = fixture.info;
    reader.start(&oldInfo, kInBackground);
    finishFill();
    const std::string newBytes = fixture.writeRandomFile("new", 2 * kFillBytes + 1, 7);
    reader.start(&fixture.info, kInBackground);
    finishFill();
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(newBytes, 7));
}
