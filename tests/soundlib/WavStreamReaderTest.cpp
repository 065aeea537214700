#include "soundlib/WavStreamReader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <type_traits>

#include "soundlib/WavStreamReaderMaker.h"
#include "tests/soundlib/StreamFixture.h"

namespace {

constexpr bool kForeground = false;

} // namespace

TEST(WavStreamReader, HasItsFieldsInOrder) {
    const WavStreamReader reader{};
    const void* const fields[] = {&reader.startedFlag,    &reader.streamFlagA,
                                  &reader.streamFlagB,    &reader.info,
                                  &reader.streamCounterA, &reader.streamCounterB,
                                  &reader.streamCounterC, &reader.firstBuffer,
                                  &reader.secondBuffer,   &reader.streamCounterD,
                                  &reader.stream,         &reader.reopenPending,
                                  &reader.filling,        &reader.firstThread,
                                  &reader.secondThread,   &reader.threadAttributes};
    for (std::size_t i = 1; i < std::size(fields); ++i) {
        EXPECT_LT(fields[i - 1], fields[i]) << i;
    }
    EXPECT_FALSE(std::is_polymorphic_v<WavStreamReader>);
}

TEST(WavStreamReader, OneFillIs32768Samples) {
    EXPECT_EQ(wavReadLength, 32768);
    EXPECT_TRUE((std::is_same_v<decltype(wavReadLength), const std::int32_t>));
}

TEST(WavStreamReader, StartBindsResetsAndFillsTheFirstBuffer) {
    StreamFixture fixture;
    const std::string bytes = fixture.writeRandomFile("a", 3 * kFillBytes, 44);
    WavStreamReader& reader = fixture.reader;
    reader.streamFlagA = reader.streamFlagB = true;
    reader.streamCounterA = reader.streamCounterB = 7;
    reader.streamCounterC = reader.streamCounterD = 7;
    reader.start(&fixture.info, kForeground);
    EXPECT_TRUE(reader.startedFlag);
    EXPECT_FALSE(reader.streamFlagA);
    EXPECT_FALSE(reader.streamFlagB);
    EXPECT_EQ(reader.info, &fixture.info);
    EXPECT_EQ(reader.streamCounterA, 0);
    EXPECT_EQ(reader.streamCounterB, 0);
    EXPECT_EQ(reader.streamCounterC, 0);
    EXPECT_EQ(reader.streamCounterD, 0);
    EXPECT_FALSE(reader.reopenPending);
    EXPECT_FALSE(reader.filling);
    EXPECT_TRUE(reader.stream.is_open());
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 44));
    EXPECT_EQ(bytesOf(fixture.second), filledFrom("", 0));
}

TEST(WavStreamReader, StartReadsItsFlagOnEntry) {
    StreamFixture fixture;
    const std::string bytes = fixture.writeRandomFile("a", 1000, 0);
    fixture.reader.startedFlag = false; // becomes true in between
    fixture.reader.start(&fixture.info, fixture.reader.startedFlag);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 0)); // at once, so in the foreground
}

// Lengths around one and two fills, each from several offsets.
TEST(WavStreamReader, FillsDeliverTheFileAsOneSequenceWhateverItsLength) {
    const std::size_t lengths[] = {0,
                                   1,
                                   2,
                                   45,
                                   kFillBytes - 1,
                                   kFillBytes,
                                   kFillBytes + 1,
                                   2 * kFillBytes - 1,
                                   2 * kFillBytes,
                                   2 * kFillBytes + 1,
                                   3 * kFillBytes + 4711};
    for (const std::size_t length : lengths) {
        for (const std::int32_t offset : {0, 1, 44, 1000}) {
            SCOPED_TRACE(std::to_string(length) + " from " + std::to_string(offset));
            StreamFixture fixture;
            const std::string bytes = fixture.writeRandomFile("a", length, offset);
            fixture.reader.start(&fixture.info, kForeground);
            std::size_t position = static_cast<std::size_t>(offset);
            for (int turn = 0; turn < 6; ++turn) {
                const std::vector<std::int16_t>& buffer =
                    turn % 2 == 0 ? fixture.first : fixture.second;
                ASSERT_EQ(bytesOf(buffer), filledFrom(bytes, position)) << "turn " << turn;
                position += kFillBytes;
                fixture.markBuffers();
                if (turn % 2 == 0) {
                    fixture.reader.fillSecondBuffer(kForeground);
                } else {
                    fixture.reader.fillFirstBuffer(kForeground);
                }
                ASSERT_FALSE(fixture.reader.filling);
            }
        }
    }
}

TEST(WavStreamReader, OrderOfTheFillsDecidesWhichPieceLandsWhere) {
    StreamFixture fixture;
    const std::string bytes = fixture.writeRandomFile("a", 5 * kFillBytes, 0);
    fixture.reader.start(&fixture.info, kForeground);
    fixture.reader.fillFirstBuffer(kForeground);
    fixture.reader.fillFirstBuffer(kForeground);
    fixture.reader.fillSecondBuffer(kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 2 * kFillBytes));
    EXPECT_EQ(bytesOf(fixture.second), filledFrom(bytes, 3 * kFillBytes));
}

TEST(WavStreamReader, FileEndingInsideAFillFailsTheStreamUntilTheNextStart) {
    StreamFixture fixture;
    const std::string bytes = fixture.writeRandomFile("a", 1000, 0);
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_TRUE(fixture.reader.stream.fail());
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 0));
    fixture.markBuffers();
    fixture.reader.fillSecondBuffer(kForeground);
    fixture.reader.fillFirstBuffer(kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("", 0));
    EXPECT_EQ(bytesOf(fixture.second), filledFrom("", 0));
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 0));
}

TEST(WavStreamReader, FileEndingExactlyAtAFillFailsAtTheNextOne) {
    StreamFixture fixture;
    fixture.writeRandomFile("a", kFillBytes, 0);
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_TRUE(fixture.reader.stream.good());
    fixture.reader.fillSecondBuffer(kForeground);
    EXPECT_TRUE(fixture.reader.stream.fail());
    EXPECT_EQ(bytesOf(fixture.second), filledFrom("", 0));
}

TEST(WavStreamReader, PathThatDoesNotOpenIsTriedAgainByStartOnly) {
    StreamFixture fixture;
    fixture.info.path = fixture.folder.file("missing");
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_FALSE(fixture.reader.reopenPending);
    EXPECT_FALSE(fixture.reader.filling);
    EXPECT_TRUE(fixture.reader.stream.fail());
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("", 0));

    const std::string bytes = fixture.writeRandomFile("missing", 1000, 0);
    fixture.reader.fillFirstBuffer(kForeground);
    fixture.reader.fillSecondBuffer(kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("", 0));
    EXPECT_EQ(bytesOf(fixture.second), filledFrom("", 0));

    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 0));
}

TEST(WavStreamReader, OffsetBehindTheEndDeliversNothing) {
    StreamFixture fixture;
    fixture.writeRandomFile("a", 1000, 2000);
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("", 0));
    EXPECT_FALSE(fixture.reader.filling);
}

TEST(WavStreamReader, NegativeOffsetDeliversNothing) {
    StreamFixture fixture;
    fixture.writeRandomFile("a", 1000, -1);
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("", 0));
    EXPECT_TRUE(fixture.reader.stream.fail());
}

TEST(WavStreamReader, OffsetIsWidenedForTheSeek) {
    StreamFixture fixture;
    fixture.writeRandomFile("a", 0, 0x7ffffff0);
    std::error_code error;
    std::filesystem::resize_file(fixture.info.path, 0x7ffffff0u, error); // a hole
    if (error) {
        GTEST_SKIP() << "no files of 2 GiB in the temporary folder";
    }
    std::ofstream(fixture.info.path, std::ios::binary | std::ios::app)
        << "the samples across the border of 2 GiB";
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("the samples across the border of 2 GiB", 0));
}

TEST(WavStreamReader, SecondBufferReadsOnInTheOldFileUntilTheFirstHasOpenedTheNewOne) {
    StreamFixture fixture;
    const std::string oldBytes = fixture.writeRandomFile("old", 4 * kFillBytes, 10);
    WavFileInfo oldInfo = fixture.info;
    fixture.reader.start(&oldInfo, kForeground);
    // What a start in the background leaves until its thread runs.
    const std::string newBytes = fixture.writeRandomFile("new", 4 * kFillBytes + 1, 20);
    fixture.reader.info = &fixture.info;
    fixture.reader.reopenPending = true;
    fixture.reader.fillSecondBuffer(kForeground);
    EXPECT_EQ(bytesOf(fixture.second), filledFrom(oldBytes, 10 + kFillBytes));
    EXPECT_TRUE(fixture.reader.reopenPending);
    fixture.reader.fillFirstBuffer(kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(newBytes, 20));
    fixture.reader.fillSecondBuffer(kForeground);
    EXPECT_EQ(bytesOf(fixture.second), filledFrom(newBytes, 20 + kFillBytes));
}

TEST(WavStreamReader, StartAgainReadsFromTheOffsetAgain) {
    StreamFixture fixture;
    const std::string bytes = fixture.writeRandomFile("a", 3 * kFillBytes, 10);
    for (int round = 0; round < 3; ++round) {
        fixture.reader.start(&fixture.info, kForeground);
        EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 10));
        fixture.reader.fillSecondBuffer(kForeground);
        EXPECT_EQ(bytesOf(fixture.second), filledFrom(bytes, 10 + kFillBytes));
    }
}

TEST(WavStreamReader, OffsetIsReadWhenTheFileIsOpenedOnly) {
    StreamFixture fixture;
    const std::string bytes = fixture.writeRandomFile("a", 3 * kFillBytes, 10);
    fixture.reader.start(&fixture.info, kForeground);
    fixture.info.dataOffset = 0;
    fixture.reader.fillFirstBuffer(kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom(bytes, 10 + kFillBytes));
}

TEST(WavStreamReader, SeekToANegativeOffsetFails) {
    StreamFixture fixture;
    fixture.writeRandomFile("a", 3 * kFillBytes, -7);
    fixture.reader.start(&fixture.info, kForeground);
    EXPECT_EQ(bytesOf(fixture.first), filledFrom("", 0));
    EXPECT_TRUE(fixture.reader.stream.fail());
    EXPECT_FALSE(fixture.reader.stream.eof()); // as after a seek beyond the end
}

TEST(WavStreamReader, FileStaysOpenAfterTheLastFill) {
    StreamFixture fixture;
    fixture.writeRandomFile("a", 100, 0);
    fixture.reader.start(&fixture.info, kForeground);
    fixture.reader.fillSecondBuffer(kForeground);
    EXPECT_TRUE(fixture.reader.stream.is_open());
}

TEST(WavStreamReaderMaker, MakesAReaderThatIsReadyForStart) {
    StreamFixture fixture;
    const std::string bytes = fixture.writeRandomFile("a", 2 * kFillBytes, 0);
    const std::unique_ptr<WavStreamReader, decltype(&destroyWavStreamReader)> reader(
        makeWavStreamReader(), destroyWavStreamReader);
    EXPECT_FALSE(reader->startedFlag);
    EXPECT_EQ(reader->firstBuffer[wavReadLength - 1], 0);
    int state = PTHREAD_CREATE_JOINABLE;
    pthread_attr_getdetachstate(&reader->threadAttributes, &state);
    EXPECT_EQ(state, PTHREAD_CREATE_DETACHED);
    reader->start(&fixture.info, kForeground);
    reader->fillSecondBuffer(kForeground);
    EXPECT_EQ(0, std::memcmp(reader->firstBuffer, bytes.data(), kFillBytes));
    EXPECT_EQ(0, std::memcmp(reader->secondBuffer, bytes.data() + kFillBytes, kFillBytes));
}

TEST(WavStreamReaderMaker, DestroyingNothingIsAllowed) {
    destroyWavStreamReader(nullptr);
}
