// tvhost play with live sound: what another program sends comes out processed.
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/host/play/JackFeeder.h"
#include "tests/host/play/JackRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include <unistd.h>

using testing::ContainsRegex;

TEST(PlayInput, SendsWhatComesInThroughTheEffect) {
    const JackServer server(44100);
    const JackRecorder recorder(server);
    const JackFeeder feeder(server);
    Process::Options options;
    options.environment = {server.environment(), "ASAN_OPTIONS=detect_leaks=0"};
    Process process =
        startTvhost({"play", "--input", "--server", "jack", "--device", JackRecorder::kName,
                     "--plugin", testPlugin("Gain"), "--set", "Gain=0.5"},
                    options);
    ASSERT_TRUE(feeder.connectTo("tvhost"));
    constexpr std::size_t kFrames = 40000;
    for (int i = 0; i < 1500 && recorder.sound().size() < 2 * kFrames; ++i) {
        usleep(20000);
    }
    kill(process.id(), SIGINT);
    const ProcessResult result = process.wait();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, ContainsRegex(" s at 44100 Hz by JACK, peak -1[0-9.]* dBFS, "));

    // The channels are connected one after the other; from then on it is all there.
    const std::vector<float> sound = recorder.sound();
    ASSERT_GE(sound.size(), 2 * kFrames);
    constexpr std::size_t kBegin = 8192;
    const float first = sound[2 * kBegin];
    std::uint64_t place = 0;
    while (place < 2000000 &&
           (JackFeeder::sampleAt(place, 0) * 0.5f != first ||
            JackFeeder::sampleAt(place + 1, 0) * 0.5f != sound[2 * kBegin + 2])) {
        ++place;
    }
    for (std::size_t i = kBegin; i < kFrames; ++i, ++place) {
        ASSERT_EQ(sound[2 * i], JackFeeder::sampleAt(place, 0) * 0.5f) << i;
        ASSERT_EQ(sound[2 * i + 1], JackFeeder::sampleAt(place, 1) * 0.5f) << i;
    }
}
