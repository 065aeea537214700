#include "soundlib/WavPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include <sndfile.hh>
#include <sys/resource.h>

#include "soundlib/LiveField.h"
#include "tests/soundlib/WavBytes.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using Loading = WavPlayer::Loading;

struct Heard {
    std::vector<float> left;
    std::vector<float> right;
};

// Writes random samples with libsndfile.
std::string writeFile(const TemporaryFolder& folder, int channels, sf_count_t frames,
                      int container = SF_FORMAT_WAV) {
    Dice dice(static_cast<std::uint64_t>(frames));
    std::vector<short> samples(static_cast<std::size_t>(channels * frames));
    for (short& sample : samples) {
        sample = static_cast<short>(dice.bits());
    }
    std::string path = folder.file("a.wav");
    SndfileHandle file(path, SFM_WRITE, container | SF_FORMAT_PCM_16, channels, 44100);
    file.writef(samples.data(), frames);
    return path;
}

// What libsndfile reads, as the two channels that are heard.
Heard expected(const std::string& path) {
    SndfileHandle file(path);
    const auto channels = static_cast<std::size_t>(file.channels());
    std::vector<float> samples(static_cast<std::size_t>(file.frames()) * channels);
    file.readf(samples.data(), file.frames());
    Heard heard;
    for (std::size_t i = 0; i < samples.size(); i += channels) {
        heard.left.push_back(samples[i]);
        heard.right.push_back(samples[i + (channels > 1 ? 1 : 0)]);
    }
    return heard;
}

// Renders in blocks of `blockSize` to the end and leaves out the silence of late pieces and
// behind the last frame.
Heard play(WavPlayer& player, std::int32_t blockSize) {
    Heard heard;
    std::vector<float> left(static_cast<std::size_t>(blockSize));
    std::vector<float> right(left.size());
    float* outputs[] = {left.data(), right.data()};
    std::int32_t late = 0;
    while (player.isPlaying()) {
        player.render(outputs, blockSize);
        const std::int32_t lateNow = player.reader().streamCounterD - late;
        late += lateNow;
        heard.left.insert(heard.left.end(), left.begin(), left.end() - lateNow);
        heard.right.insert(heard.right.end(), right.begin(), right.end() - lateNow);
        if (lateNow > 0) {
            std::this_thread::yield();
        }
    }
    const auto frames = static_cast<std::size_t>(player.format().frames);
    EXPECT_GE(heard.left.size(), frames);
    EXPECT_TRUE(std::all_of(heard.left.begin() + static_cast<std::ptrdiff_t>(frames),
                            heard.left.end(), [](float sample) { return sample == 0.0f; }));
    heard.left.resize(frames);
    heard.right.resize(frames);
    return heard;
}

} // namespace

class WavPlaying : public testing::TestWithParam<Loading> {};

TEST_P(WavPlaying, IsWhatLibsndfileReadsWhateverTheLength) {
    const TemporaryFolder folder;
    for (const int channels : {1, 2, 3, 7}) {
        const sf_count_t fill = wavReadLength / channels;
        for (const sf_count_t frames : {sf_count_t{0}, sf_count_t{1}, fill - 1, fill, fill + 1,
                                        2 * fill, 2 * fill + 1, 5 * fill + 777}) {
            SCOPED_TRACE(std::to_string(channels) + " channels, " + std::to_string(frames));
            const std::string path = writeFile(folder, channels, frames);
            WavPlayer player;
            ASSERT_EQ(player.open(path, GetParam()), WavHeaderError::kNone);
            const Heard heard = play(player, 441);
            const Heard whole = expected(path);
            ASSERT_EQ(heard.left, whole.left);
            ASSERT_EQ(heard.right, whole.right);
            EXPECT_FALSE(player.isPlaying());
        }
    }
}

TEST_P(WavPlaying, BlocksMayHaveAnySize) {
    const TemporaryFolder folder;
    const std::string path = writeFile(folder, 2, 100000);
    const Heard whole = expected(path);
    for (const std::int32_t blockSize : {1, 64, 32768, 1000000}) {
        WavPlayer player;
        ASSERT_EQ(player.open(path, GetParam()), WavHeaderError::kNone);
        ASSERT_EQ(play(player, blockSize).left, whole.left);
    }
}

TEST_P(WavPlaying, BuffersTakeTurnsAndTheFlagsAndCountersTellIt) {
    const TemporaryFolder folder;
    const std::string path = writeFile(folder, 1, 3 * wavReadLength + 10);
    WavPlayer player;
    ASSERT_EQ(player.open(path, GetParam()), WavHeaderError::kNone);
    const WavStreamReader& reader = player.reader();
    EXPECT_TRUE(reader.startedFlag);
    EXPECT_EQ(reader.streamCounterA, 0);
    EXPECT_EQ(reader.streamCounterB, 0);
    EXPECT_EQ(reader.streamCounterD, 0);

    std::vector<float> block(static_cast<std::size_t>(wavReadLength));
    float* outputs[] = {block.data(), block.data()};
    std::int32_t played = 0;
    for (const std::int32_t frames : {100, wavReadLength - 100, 1}) {
        player.render(outputs, frames); // both buffers were full, so nothing is late
        played += frames;
        ASSERT_EQ(reader.streamCounterD, 0);
        // The step to the next buffer is made with its first sample.
        ASSERT_EQ(reader.streamCounterB, (played - 1) / wavReadLength);
        ASSERT_EQ(reader.streamCounterA, (played - 1) % wavReadLength + 1);
    }
    EXPECT_EQ(reader.streamCounterB, 1); // secondBuffer plays
    while (player.isPlaying()) {
        player.render(outputs, 4096);
    }
    EXPECT_EQ(reader.streamCounterB, 3);
    EXPECT_EQ(reader.streamCounterC, 4); // pieces loaded
    EXPECT_FALSE(reader.startedFlag);
}

TEST_P(WavPlaying, FileCutWhileItPlaysEndsEarly) {
    const TemporaryFolder folder;
    const std::string path = writeFile(folder, 2, 300000);
    WavPlayer player;
    ASSERT_EQ(player.open(path, GetParam()), WavHeaderError::kNone);
    std::filesystem::resize_file(path, 44 + 4 * 50000 + 3);
    std::vector<float> block(300001);
    float* outputs[] = {block.data(), block.data()};
    while (player.isPlaying()) {
        player.render(outputs, 100);
        std::this_thread::yield();
    }
    EXPECT_LE(player.reader().streamCounterC, 8); // of the 19 pieces of the whole
}

TEST_P(WavPlaying, FrameThatTheCutFileEndsInIsNotHeard) {
    const TemporaryFolder folder;
    FormatBytes threeChannels;
    threeChannels.channels = 3;
    threeChannels.blockAlign = 6;
    const std::string path =
        folder.write("a.wav", wavOf(chunk("fmt ", threeChannels.bytes()) +
                                    chunk("data", std::string(240000, '\x11'))));
    WavPlayer player;
    ASSERT_EQ(player.open(path, GetParam()), WavHeaderError::kNone);
    // Two pieces are loaded and end inside a frame, of which the third has one sample more.
    std::filesystem::resize_file(path, 44 + (2 * wavReadLength + 1) * 2);
    std::ptrdiff_t heard = 0;
    while (player.isPlaying()) {
        float left[100];
        float right[100];
        float* outputs[] = {left, right};
        player.render(outputs, 100);
        heard += std::count(left, left + 100, static_cast<float>(0x1111) / 32768.0f);
        std::this_thread::yield();
    }
    EXPECT_GE(heard, 2 * wavReadLength / 3);
    EXPECT_LE(heard, (2 * wavReadLength + 4096) / 3); // a stream may have read ahead
}

TEST_P(WavPlaying, CloseInTheMiddleAndOpenAgain) {
    const TemporaryFolder folder;
    const std::string path = writeFile(folder, 2, 200000);
    WavPlayer player;
    std::vector<float> left(5000);
    std::vector<float> right(5000);
    float* outputs[] = {left.data(), right.data()};
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(player.open(path, GetParam()), WavHeaderError::kNone);
        player.render(outputs, 5000);
        player.close();
        EXPECT_FALSE(player.isPlaying());
        player.render(outputs, 5000);
        EXPECT_EQ(left, std::vector<float>(5000));
    }
    ASSERT_EQ(player.open(path, GetParam()), WavHeaderError::kNone);
    EXPECT_EQ(play(player, 512).left, expected(path).left);
}

TEST(WavPlayer, NothingWakesWhileNobodyPlays) {
    const TemporaryFolder folder;
    WavPlayer player;
    ASSERT_EQ(player.open(writeFile(folder, 2, 300000), Loading::kOwnThread),
              WavHeaderError::kNone);
    while (!readLive(player.reader().streamFlagB)) {
        std::this_thread::yield();
    }
    const auto turns = [] {
        rusage usage;
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_nvcsw;
    };
    const long before = turns();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_LE(turns() - before, 10); // this thread's own sleep, and what the system adds
}

INSTANTIATE_TEST_SUITE_P(Loading, WavPlaying,
                         testing::Values(Loading::kInRender, Loading::kOwnThread),
                         [](const auto& info) {
                             return info.param == Loading::kInRender ? "InRender" : "OwnThread";
                         });

TEST(WavPlayer, RendersSilenceBeforeAFileIsOpen) {
    WavPlayer player;
    float left = 1.0f;
    float right = 1.0f;
    float* outputs[] = {&left, &right};
    player.render(outputs, 1);
    EXPECT_EQ(left, 0.0f);
    EXPECT_EQ(right, 0.0f);
    EXPECT_FALSE(player.isPlaying());
    EXPECT_EQ(player.reader().streamCounterD, 0);
}

TEST(WavPlayer, EmptyBlockChangesNothing) {
    const TemporaryFolder folder;
    WavPlayer player;
    ASSERT_EQ(player.open(writeFile(folder, 2, 100), Loading::kInRender), WavHeaderError::kNone);
    float* outputs[] = {nullptr, nullptr};
    player.render(outputs, 0);
    player.render(outputs, -1);
    EXPECT_EQ(player.reader().streamCounterA, 0);
    EXPECT_TRUE(player.isPlaying());
}

TEST(WavPlayer, FullScaleIsOne) {
    const TemporaryFolder folder;
    FormatBytes mono;
    mono.channels = 1;
    mono.blockAlign = 2;
    const std::string data = little16(0x8000) + little16(0x7fff) + little16(0) + little16(0xffff);
    WavPlayer player;
    ASSERT_EQ(
        player.open(folder.write("a.wav", wavOf(chunk("fmt ", mono.bytes()) + chunk("data", data))),
                    Loading::kInRender),
        WavHeaderError::kNone);
    float left[4];
    float right[4];
    float* outputs[] = {left, right};
    player.render(outputs, 4);
    EXPECT_EQ(left[0], -1.0f);
    EXPECT_EQ(left[1], 32767.0f / 32768.0f);
    EXPECT_EQ(left[2], 0.0f);
    EXPECT_EQ(left[3], -1.0f / 32768.0f);
    EXPECT_TRUE(std::equal(left, left + 4, right));
}

TEST(WavPlayer, ChunksBehindTheSamplesAreNotPlayed) {
    const TemporaryFolder folder;
    const std::string data(400, '\x11');
    const std::string path =
        folder.write("a.wav", wavOf(chunk("fmt ", FormatBytes().bytes()) + chunk("data", data) +
                                    chunk("LIST", std::string(4000, '\x22'))));
    WavPlayer player;
    ASSERT_EQ(player.open(path, Loading::kInRender), WavHeaderError::kNone);
    EXPECT_EQ(player.format().frames, 100);
    std::vector<float> left(200);
    std::vector<float> right(200);
    float* outputs[] = {left.data(), right.data()};
    player.render(outputs, 200);
    EXPECT_EQ(left[99], static_cast<float>(0x1111) / 32768.0f);
    EXPECT_EQ(left[100], 0.0f);
    EXPECT_FALSE(player.isPlaying());
    EXPECT_EQ(player.reader().streamCounterD, 0); // the end isn't late
}

TEST(WavPlayer, FileOfAnotherKindLeavesThePlayerClosed) {
    const TemporaryFolder folder;
    WavPlayer player;
    ASSERT_EQ(player.open(writeFile(folder, 2, 1000), Loading::kOwnThread), WavHeaderError::kNone);
    EXPECT_TRUE(player.isPlaying());
    EXPECT_EQ(player.open(folder.write("b", "something else"), Loading::kOwnThread),
              WavHeaderError::kNotWave);
    EXPECT_FALSE(player.isPlaying());
    EXPECT_EQ(player.open(folder.file("missing"), Loading::kOwnThread),
              WavHeaderError::kCannotRead);
    EXPECT_FALSE(player.isPlaying());
}
