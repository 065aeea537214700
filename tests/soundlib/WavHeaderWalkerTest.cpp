#include "soundlib/WavHeaderWalker.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <vector>

#include <sndfile.hh>
#include <sys/stat.h>

#include "tests/soundlib/WavBytes.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/TemporaryFolder.h"

namespace {

const std::string kEightFrames(32, 'x');

struct Walk {
    WavHeaderError error;
    WavFileInfo info;
    WavFormat format;
};

// Walks a file of these bytes.
Walk walk(const std::string& bytes) {
    std::istringstream file(bytes);
    Walk result{WavHeaderError::kNone, {"untouched", -1}, {-1, -1, -1}};
    result.error = walkWavHeader(file, result.info, result.format);
    return result;
}

void expectError(const std::string& bytes, WavHeaderError error) {
    const Walk result = walk(bytes);
    EXPECT_EQ(result.error, error) << describe(result.error);
    EXPECT_EQ(result.info.path, "untouched");
    EXPECT_EQ(result.info.dataOffset, -1);
    EXPECT_EQ(result.format.channels, -1);
    EXPECT_EQ(result.format.sampleRate, -1);
    EXPECT_EQ(result.format.frames, -1);
}

void expectData(const std::string& bytes, std::size_t offset, std::int64_t frames) {
    const Walk result = walk(bytes);
    ASSERT_EQ(result.error, WavHeaderError::kNone) << describe(result.error);
    EXPECT_EQ(result.info.dataOffset, static_cast<std::int32_t>(offset));
    EXPECT_EQ(result.format.frames, frames);
}

std::string plainFormat() {
    return chunk("fmt ", FormatBytes().bytes());
}

} // namespace

TEST(WavHeaderWalker, PlainFile) {
    const Walk result = walk(wavOf(plainFormat() + chunk("data", kEightFrames)));
    ASSERT_EQ(result.error, WavHeaderError::kNone);
    EXPECT_EQ(result.info.dataOffset, 44);
    EXPECT_EQ(result.format.channels, 2);
    EXPECT_EQ(result.format.sampleRate, 44100);
    EXPECT_EQ(result.format.frames, 8);
}

TEST(WavHeaderWalker, StreamLeavesThePathAlone) {
    EXPECT_EQ(walk(wavOf(plainFormat() + chunk("data", kEightFrames))).info.path, "untouched");
}

TEST(WavHeaderWalker, FileAtAPath) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write("a.wav", wavOf(plainFormat() + chunk("data", kEightFrames)));
    WavFileInfo info{};
    WavFormat format{};
    EXPECT_EQ(walkWavHeader(path, info, format), WavHeaderError::kNone);
    EXPECT_EQ(info.path, path);
    EXPECT_EQ(info.dataOffset, 44);
}

TEST(WavHeaderWalker, MissingFileAndFolderCantBeRead) {
    const TemporaryFolder folder;
    WavFileInfo info{"untouched", -1};
    WavFormat format{};
    EXPECT_EQ(walkWavHeader(folder.file("missing"), info, format), WavHeaderError::kCannotRead);
    EXPECT_EQ(walkWavHeader(folder.file(""), info, format), WavHeaderError::kCannotRead);
    EXPECT_EQ(info.path, "untouched");
}

// Opening a pipe that nobody writes to would wait for ever.
TEST(WavHeaderWalker, PipesAndDevicesCantBeRead) {
    const TemporaryFolder folder;
    const std::string pipe = folder.file("pipe.wav");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {pipe, std::string("/dev/zero"), std::string("/dev/null")}) {
        WavFileInfo info{"untouched", -1};
        WavFormat format{};
        EXPECT_EQ(walkWavHeader(path, info, format), WavHeaderError::kCannotRead) << path;
        EXPECT_EQ(info.path, "untouched");
    }
}

TEST(WavHeaderWalker, OtherChunksBeforeBetweenAndBehind) {
    const std::string before = chunk("LIST", "INFOIART") + chunk("bext", std::string(602, 'b'));
    const std::string between = chunk("fact", "1234");
    const std::string bytes = wavOf(before + plainFormat() + between + chunk("data", kEightFrames) +
                                    chunk("smpl", std::string(60, 's')));
    expectData(bytes, 12 + before.size() + 24 + between.size() + 8, 8);
}

TEST(WavHeaderWalker, DataBeforeTheFormat) {
    expectData(wavOf(chunk("data", kEightFrames) + plainFormat()), 20, 8);
}

TEST(WavHeaderWalker, ChunkOfOddSizeIsFollowedByAPadByte) {
    const std::string odd = chunk("note", "abc");
    ASSERT_EQ(odd.size(), 12u);
    expectData(wavOf(odd + plainFormat() + chunk("data", kEightFrames)), 12 + 12 + 24 + 8, 8);
    expectData(wavOf(chunk("data", kEightFrames + "x") + plainFormat()), 20, 8);
}

TEST(WavHeaderWalker, ChunksOfSizeZeroAreSkipped) {
    expectData(
        wavOf(chunk("junk", "") + plainFormat() + chunk("junk", "") + chunk("data", kEightFrames)),
        12 + 8 + 24 + 8 + 8, 8);
}

TEST(WavHeaderWalker, FirstFormatAndFirstDataCount) {
    FormatBytes mono;
    mono.channels = 1;
    mono.blockAlign = 2;
    const Walk result = walk(wavOf(plainFormat() + chunk("fmt ", mono.bytes()) +
                                   chunk("data", kEightFrames) + chunk("data", "ab")));
    ASSERT_EQ(result.error, WavHeaderError::kNone);
    EXPECT_EQ(result.format.channels, 2);
    EXPECT_EQ(result.format.frames, 8);
    const Walk reversed =
        walk(wavOf(chunk("data", "abcd") + chunk("data", kEightFrames) + plainFormat()));
    EXPECT_EQ(reversed.info.dataOffset, 20);
    EXPECT_EQ(reversed.format.frames, 1);
}

TEST(WavHeaderWalker, LongerFormatChunkIsFine) {
    expectData(
        wavOf(chunk("fmt ", FormatBytes().bytes() + little16(0)) + chunk("data", kEightFrames)), 46,
        8);
    expectData(wavOf(chunk("fmt ", FormatBytes().bytes() + std::string(100, 'x')) +
                     chunk("data", kEightFrames)),
               12 + 8 + 116 + 8, 8);
}

TEST(WavHeaderWalker, ExtensibleFormat) {
    expectData(wavOf(chunk("fmt ", FormatBytes().extensible(1)) + chunk("data", kEightFrames)), 68,
               8);
}

TEST(WavHeaderWalker, ExtensibleFormatOfAnotherKindIsNotPcm) {
    expectError(wavOf(chunk("fmt ", FormatBytes().extensible(3)) + chunk("data", kEightFrames)),
                WavHeaderError::kNotPcm);
    std::string foreign = FormatBytes().extensible(1);
    foreign.back() = 'x';
    expectError(wavOf(chunk("fmt ", foreign) + chunk("data", kEightFrames)),
                WavHeaderError::kNotPcm);
}

TEST(WavHeaderWalker, ExtensibleFormatTooShortForItsSubFormatIsBroken) {
    const std::string cut = FormatBytes().extensible(1).substr(0, 38);
    expectError(wavOf(chunk("fmt ", cut) + chunk("data", kEightFrames)),
                WavHeaderError::kBrokenFormatChunk);
}

TEST(WavHeaderWalker, AnyOtherTagIsNotPcm) {
    for (const std::uint32_t tag : {0u, 2u, 3u, 6u, 7u, 17u, 80u, 85u, 0xffffu}) {
        FormatBytes format;
        format.tag = tag;
        expectError(wavOf(chunk("fmt ", format.bytes()) + chunk("data", kEightFrames)),
                    WavHeaderError::kNotPcm);
    }
}

TEST(WavHeaderWalker, AnyOtherSampleSizeIsNot16Bit) {
    for (const std::uint32_t bits : {0u, 8u, 12u, 15u, 17u, 24u, 32u, 65535u}) {
        FormatBytes format;
        format.bits = bits;
        expectError(wavOf(chunk("fmt ", format.bytes()) + chunk("data", kEightFrames)),
                    WavHeaderError::kNot16Bit);
        expectError(wavOf(chunk("fmt ", format.extensible(1)) + chunk("data", kEightFrames)),
                    WavHeaderError::kNot16Bit);
    }
}

TEST(WavHeaderWalker, FormatThatContradictsItselfIsBroken) {
    FormatBytes noChannels;
    noChannels.channels = 0;
    noChannels.blockAlign = 0;
    FormatBytes wrongAlign;
    wrongAlign.blockAlign = 6;
    FormatBytes noRate;
    noRate.sampleRate = 0;
    FormatBytes hugeRate;
    hugeRate.sampleRate = 0x80000000u;
    FormatBytes tooManyChannels;
    tooManyChannels.channels = 32769;
    tooManyChannels.blockAlign = 2; // what is left of it in 16 bits
    for (const FormatBytes& format : {noChannels, wrongAlign, noRate, hugeRate, tooManyChannels}) {
        expectError(wavOf(chunk("fmt ", format.bytes()) + chunk("data", kEightFrames)),
                    WavHeaderError::kBrokenFormatChunk);
    }
}

TEST(WavHeaderWalker, MostChannels) {
    FormatBytes format;
    format.channels = 32767;
    format.blockAlign = 65534;
    const Walk result =
        walk(wavOf(chunk("fmt ", format.bytes()) + chunk("data", std::string(131068, 'x'))));
    ASSERT_EQ(result.error, WavHeaderError::kNone);
    EXPECT_EQ(result.format.channels, 32767);
    EXPECT_EQ(result.format.frames, 2);
}

TEST(WavHeaderWalker, FormatChunkOfLessThan16BytesIsBroken) {
    for (std::size_t size = 0; size < 16; ++size) {
        expectError(wavOf(chunk("fmt ", FormatBytes().bytes().substr(0, size)) +
                          chunk("data", kEightFrames)),
                    WavHeaderError::kBrokenFormatChunk);
    }
}

TEST(WavHeaderWalker, DataLongerThanTheFileEndsWithIt) {
    for (const std::uint32_t claimed : {33u, 1000u, 0x7fffffffu, 0x80000000u, 0xffffffffu}) {
        expectData(wavOf(plainFormat() + chunkClaiming("data", claimed, kEightFrames)), 44, 8);
    }
}

TEST(WavHeaderWalker, IncompleteLastFrameDoesNotCount) {
    expectData(wavOf(plainFormat() + chunk("data", kEightFrames + "abc")), 44, 8);
    expectData(wavOf(plainFormat() + chunkClaiming("data", 36, kEightFrames + "abc")), 44, 8);
}

TEST(WavHeaderWalker, DataOfSizeZeroThatWasNeverClosedRunsToTheEnd) {
    const std::string chunks = plainFormat() + chunkClaiming("data", 0, kEightFrames);
    for (const std::uint32_t riffSize : {0u, 8u, 36u}) {
        expectData(wavClaiming(riffSize, chunks), 44, 8);
    }
}

TEST(WavHeaderWalker, DataOfSizeZeroInACompleteFileIsEmpty) {
    expectData(wavOf(plainFormat() + chunk("data", "")), 44, 0);
    expectData(wavOf(plainFormat() + chunk("data", "") + chunk("LIST", "INFO")), 44, 0);
}

TEST(WavHeaderWalker, RiffSizeOtherwiseDoesNotMatter) {
    const std::string chunks = plainFormat() + chunk("data", kEightFrames);
    for (const std::uint32_t riffSize : {0u, 1u, 50u, 0x7fffffffu, 0xffffffffu}) {
        expectData(wavClaiming(riffSize, chunks), 44, 8);
    }
}

TEST(WavHeaderWalker, OtherContainersAreNotWave) {
    const std::string chunks = plainFormat() + chunk("data", kEightFrames);
    std::string bytes = wavOf(chunks);
    for (const char* id : {"RIFX", "RF64", "FORM", "riff"}) {
        expectError(bytes.replace(0, 4, id), WavHeaderError::kNotWave);
    }
    bytes = wavOf(chunks);
    expectError(bytes.replace(8, 4, "AVI "), WavHeaderError::kNotWave);
}

TEST(WavHeaderWalker, FileCutShortAnywhereInTheHeader) {
    const std::string bytes =
        wavOf(chunk("LIST", "INFOIART") + plainFormat() + chunk("data", kEightFrames));
    const std::size_t formatAt = 12 + 16;
    const std::size_t dataAt = formatAt + 24;
    for (std::size_t size = 0; size < dataAt + 8; ++size) {
        SCOPED_TRACE(size);
        const WavHeaderError expected = size < 12             ? WavHeaderError::kNotWave
                                        : size < formatAt + 8 ? WavHeaderError::kNoFormatChunk
                                        : size < dataAt       ? WavHeaderError::kBrokenFormatChunk
                                                              : WavHeaderError::kNoDataChunk;
        expectError(bytes.substr(0, size), expected);
    }
    for (std::size_t size = dataAt + 8; size <= bytes.size(); ++size) {
        expectData(bytes.substr(0, size), dataAt + 8,
                   static_cast<std::int64_t>((size - dataAt - 8) / 4));
    }
}

TEST(WavHeaderWalker, FileWithoutOneOfTheChunks) {
    expectError(wavOf(""), WavHeaderError::kNoFormatChunk);
    expectError(wavOf(chunk("data", kEightFrames)), WavHeaderError::kNoFormatChunk);
    expectError(wavOf(plainFormat()), WavHeaderError::kNoDataChunk);
    expectError(wavOf(plainFormat() + chunkClaiming("junk", 0xffffffffu, "")),
                WavHeaderError::kNoDataChunk);
}

TEST(WavHeaderWalker, SamplesMustBeginBelow2GiB) {
    const TemporaryFolder folder;
    const std::string path = folder.file("large.wav");
    for (const std::int64_t offset : {0x7ffffffeLL, 0x80000000LL}) {
        // Everything between the header and the data chunk is a hole in the file.
        const std::string header = wavOf(plainFormat());
        const auto junkSize = static_cast<std::uint32_t>(offset - 8 - 8 - 36);
        std::ofstream(path, std::ios::binary) << header << "junk" << little32(junkSize);
        std::error_code error;
        std::filesystem::resize_file(path, static_cast<std::uintmax_t>(offset - 8), error);
        if (error) {
            GTEST_SKIP() << "no files of 2 GiB in the temporary folder";
        }
        std::ofstream(path, std::ios::binary | std::ios::app) << chunk("data", kEightFrames);
        WavFileInfo info{"untouched", -1};
        WavFormat format{};
        const WavHeaderError result = walkWavHeader(path, info, format);
        if (offset > 0x7fffffff) {
            EXPECT_EQ(result, WavHeaderError::kDataTooFar);
            EXPECT_EQ(info.dataOffset, -1);
        } else {
            EXPECT_EQ(result, WavHeaderError::kNone) << describe(result);
            EXPECT_EQ(info.dataOffset, offset);
            EXPECT_EQ(format.frames, 8);
        }
    }
}

TEST(WavHeaderWalker, EveryErrorHasASentenceOfItsOwn) {
    std::set<std::string> sentences;
    for (int i = 0; i <= static_cast<int>(WavHeaderError::kDataTooFar); ++i) {
        sentences.insert(describe(static_cast<WavHeaderError>(i)));
    }
    EXPECT_EQ(sentences.size(), static_cast<std::size_t>(WavHeaderError::kDataTooFar) + 1);
    EXPECT_EQ(sentences.count(""), 0u);
}

TEST(WavHeaderWalker, AlertIsDueForReadableFilesOfAnotherKind) {
    EXPECT_FALSE(isNotWavAlertDue(WavHeaderError::kNone));
    EXPECT_FALSE(isNotWavAlertDue(WavHeaderError::kCannotRead));
    for (const WavHeaderError error :
         {WavHeaderError::kNotWave, WavHeaderError::kNoFormatChunk,
          WavHeaderError::kBrokenFormatChunk, WavHeaderError::kNotPcm, WavHeaderError::kNot16Bit,
          WavHeaderError::kNoDataChunk, WavHeaderError::kDataTooFar}) {
        EXPECT_TRUE(isNotWavAlertDue(error));
    }
}

// Files as another program writes them.
TEST(WavHeaderWalker, TakesWhatLibsndfileWrites) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.wav");
    const std::vector<short> samples(6000, 1234);
    for (const int container : {SF_FORMAT_WAV, SF_FORMAT_WAVEX}) {
        for (const int channels : {1, 2, 3, 6}) {
            {
                SndfileHandle file(path, SFM_WRITE, container | SF_FORMAT_PCM_16, channels, 48000);
                file.setString(SF_STR_TITLE, "odd");
                file.writef(samples.data(), 6000 / channels);
                file.setString(SF_STR_ARTIST, "behind the samples");
            }
            WavFileInfo info{};
            WavFormat format{};
            ASSERT_EQ(walkWavHeader(path, info, format), WavHeaderError::kNone);
            EXPECT_EQ(format.channels, channels);
            EXPECT_EQ(format.sampleRate, 48000);
            EXPECT_EQ(format.frames, 6000 / channels);
        }
    }
}

TEST(WavHeaderWalker, RefusesOtherFormatsThatLibsndfileWrites) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a");
    const std::vector<short> samples(6000, 1234);
    const std::pair<int, WavHeaderError> cases[] = {
        {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, WavHeaderError::kNot16Bit},
        {SF_FORMAT_WAV | SF_FORMAT_PCM_24, WavHeaderError::kNot16Bit},
        {SF_FORMAT_WAVEX | SF_FORMAT_PCM_32, WavHeaderError::kNot16Bit},
        {SF_FORMAT_WAV | SF_FORMAT_FLOAT, WavHeaderError::kNotPcm},
        {SF_FORMAT_WAVEX | SF_FORMAT_DOUBLE, WavHeaderError::kNotPcm},
        {SF_FORMAT_WAV | SF_FORMAT_ULAW, WavHeaderError::kNotPcm},
        {SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, WavHeaderError::kNotPcm},
        {SF_FORMAT_RF64 | SF_FORMAT_PCM_16, WavHeaderError::kNotWave},
        {SF_FORMAT_W64 | SF_FORMAT_PCM_16, WavHeaderError::kNotWave},
        {SF_FORMAT_AIFF | SF_FORMAT_PCM_16, WavHeaderError::kNotWave},
        {SF_FORMAT_FLAC | SF_FORMAT_PCM_16, WavHeaderError::kNotWave},
        {SF_FORMAT_WAV | SF_FORMAT_PCM_16 | SF_ENDIAN_BIG, WavHeaderError::kNotWave},
    };
    for (const auto& [container, error] : cases) {
        {
            SndfileHandle file(path, SFM_WRITE, container, 2, 44100);
            ASSERT_NE(file.rawHandle(), nullptr) << std::hex << container;
            file.writef(samples.data(), 3000);
        }
        WavFileInfo info{};
        WavFormat format{};
        EXPECT_EQ(walkWavHeader(path, info, format), error) << std::hex << container;
    }
}

// Right files built from chunks in random order and number.
TEST(WavHeaderWalker, FindsTheSamplesAmongRandomChunks) {
    const std::uint64_t seed = randomSeed(430);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 3000; ++round) {
        FormatBytes format;
        format.channels = static_cast<std::uint32_t>(dice.between(1, 9));
        format.blockAlign = format.channels * 2;
        const std::string data(static_cast<std::size_t>(dice.between(1, 300)), 'd');
        std::string chunks;
        std::size_t offset = 0;
        bool formatDone = false;
        bool dataDone = false;
        while (!formatDone || !dataDone) {
            if (dice.oneIn(3) && !formatDone) {
                chunks += chunk("fmt ", dice.oneIn(2) ? format.bytes() : format.extensible(1));
                formatDone = true;
            } else if (dice.oneIn(3) && !dataDone) {
                offset = 12 + chunks.size() + 8;
                chunks += chunk("data", data);
                dataDone = true;
            } else {
                chunks +=
                    chunk("junk", std::string(static_cast<std::size_t>(dice.between(0, 40)), 'j'));
            }
        }
        const Walk result = walk(wavOf(chunks));
        ASSERT_EQ(result.error, WavHeaderError::kNone) << "round " << round;
        ASSERT_EQ(result.info.dataOffset, static_cast<std::int32_t>(offset));
        ASSERT_EQ(result.format.channels, static_cast<std::int32_t>(format.channels));
        ASSERT_EQ(result.format.frames, static_cast<std::int64_t>(data.size() / format.blockAlign));
    }
}
