// tvhost beside a real sound server that has no sound card.
#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/host/play/JackRecorder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstring>
#include <memory>

#include <unistd.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class Play : public testing::Test {
protected:
    Process::Options on(const std::string& server) const {
        Process::Options options;
        options.environment = {server, "PULSE_SERVER=unix:" + folder.file("none"),
                               "ASAN_OPTIONS=detect_leaks=0"};
        return options;
    }

    const TemporaryFolder folder;
    const std::string input = folder.file("in.wav");
};

class PlayByJack : public Play {
protected:
    PlayByJack() { writeSound(input, noise(2, 30000, 44100, 0.4f, 3)); }

    std::vector<std::string> play(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = {"play", input,      "--server",
                                              "jack", "--device", JackRecorder::kName};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }
    // Runs to the file's end.
    ProcessResult run(const std::vector<std::string>& more) const {
        return runTvhost(play(more), on(server.environment()));
    }
    std::vector<float> rendered(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = {"render", input, folder.file("out.wav")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ProcessResult result = runTvhost(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return readSound(folder.file("out.wav")).samples;
    }
    // Whether `part` was recorded, from its beginning, sample by sample.
    void expectRecorded(const std::vector<float>& part) const {
        const std::vector<float> sound = recorder.sound();
        ASSERT_GE(sound.size(), part.size());
        const auto differs = std::mismatch(part.begin(), part.end(), sound.begin()).first;
        EXPECT_EQ(differs - part.begin(), static_cast<std::ptrdiff_t>(part.size()));
    }

    const JackServer server{44100};
    const JackRecorder recorder{server};
};

} // namespace

TEST_F(PlayByJack, SoundsAsRenderedSampleBySample) {
    const std::vector<std::string> settings = {"--program", "Walking Shadow", "--set", "MIX=0.7"};
    const ProcessResult result = run(settings);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith(input + ": "));
    EXPECT_THAT(result.out, HasSubstr(" s at 44100 Hz by JACK, peak "));
    expectRecorded(rendered(settings));
}

TEST_F(PlayByJack, PlaysAMonoEffectOnBothSides) {
    EXPECT_EQ(run({"--plugin", testPlugin("Mono")}).status, 0);
    std::vector<float> both;
    for (const float sample : rendered({"--plugin", testPlugin("Mono")})) {
        both.insert(both.end(), 2, sample);
    }
    expectRecorded(both);
}

TEST_F(PlayByJack, LoopsWithoutAGapUntilStopped) {
    Process process =
        startTvhost(play({"--plugin", testPlugin("Gain"), "--loop"}), on(server.environment()));
    std::vector<float> twice = readSound(input).samples;
    twice.insert(twice.end(), twice.begin(), twice.end());
    for (int i = 0; i < 1500 && recorder.sound().size() < twice.size(); ++i) {
        usleep(20000);
    }
    kill(process.id(), SIGINT);
    const ProcessResult result = process.wait();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    expectRecorded(twice);
}

TEST_F(PlayByJack, TellsSamplesThatAreNotNumbersAndPlaysSilenceThere) {
    const ProcessResult result = run({"--plugin", testPlugin("NotANumber")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("tvhost: warning: "));
    EXPECT_THAT(result.err, HasSubstr("no finite number"));
    for (const float sample : recorder.sound()) {
        ASSERT_TRUE(std::abs(sample) < 10.0f);
    }
}

TEST_F(PlayByJack, KeepsWhatWasSet) {
    const std::string preset = folder.file("kept.fxp");
    EXPECT_EQ(run({"--plugin", testPlugin("Gain"), "--set", "Gain=0.5", "--save", preset}).status,
              0);
    EXPECT_THAT(runTvhost({"preset", "show", preset}).out, HasSubstr("  0  0.500000\n"));
}

TEST_F(PlayByJack, FadesOutWhenStopped) {
    SoundFile loud = silence(2, 30000);
    std::fill(loud.samples.begin(), loud.samples.end(), 0.5f);
    writeSound(input, loud);
    Process process =
        startTvhost(play({"--plugin", testPlugin("Gain"), "--loop"}), on(server.environment()));
    for (int i = 0; i < 1500 && recorder.sound().empty(); ++i) {
        usleep(20000);
    }
    kill(process.id(), SIGTERM);
    EXPECT_EQ(process.wait().status, 0);
    const std::vector<float> sound = recorder.sound();
    for (std::size_t i = 2; i < sound.size(); ++i) {
        ASSERT_LT(std::abs(sound[i] - sound[i - 2]), 0.01f) << i;
    }
}

TEST_F(PlayByJack, ListsDevices) {
    const ProcessResult result = runTvhost({"play", "--devices"}, on(server.environment()));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("recorder"));
}

TEST_F(PlayByJack, RefusesADeviceThatIsNotThere) {
    const ProcessResult result = runTvhost(
        {"play", input, "--server", "jack", "--device", "nowhere"}, on(server.environment()));
    EXPECT_EQ(result.status, 2);
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr("with a device \"nowhere\""));
}

TEST_F(Play, SaysThatTheServerHasGone) {
    writeSound(input, noise(2, 30000, 44100, 0.4f, 3));
    auto server = std::make_unique<JackServer>(44100);
    Process process =
        startTvhost({"play", input, "--plugin", testPlugin("Gain"), "--loop", "--server", "jack"},
                    on(server->environment()));
    usleep(1500000);
    server.reset();
    const ProcessResult result = process.wait();
    EXPECT_EQ(result.status, 2);
    // The library has its own word to say before.
    ASSERT_FALSE(result.errorLines().empty());
    EXPECT_EQ(result.errorLines().back(),
              "tvhost: JACK has gone or closed the stream; give a --server that stays");
}

TEST_F(Play, SoundsByPulseAudioAsItIs) {
    // A recorder of PulseAudio misses the first moments of what it records.
    const SoundFile sound = noise(2, 30000, 44100, 0.4f, 3);
    SoundFile late = silence(2, 44100);
    late.samples.insert(late.samples.end(), sound.samples.begin(), sound.samples.end());
    writeSound(input, late);
    const std::string socket = folder.file("native");
    const std::string recording = folder.file("recording.raw");
    Process::Options options;
    options.environment = {"PULSE_SERVER=unix:" + socket,
                           "PULSE_RUNTIME_PATH=" + folder.file("run"),
                           "HOME=" + folder.path().string(),
                           "JACK_DEFAULT_SERVER=none-here",
                           "DISPLAY",
                           "DBUS_SESSION_BUS_ADDRESS",
                           "ASAN_OPTIONS=detect_leaks=0"};
    Process::Options logged = options;
    logged.log = folder.file("server.log");
    const Process server(
        "pulseaudio",
        {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
         "module-null-sink sink_name=nowhere rate=44100 channels=2 format=float32le", "-L",
         "module-native-protocol-unix auth-anonymous=1 socket=" + socket},
        logged);
    for (int i = 0; i < 500 && runProcess("pactl", {"info"}, options).status != 0; ++i) {
        usleep(20000);
    }
    const Process recorder("parec",
                           {"--device=nowhere.monitor", "--format=float32le", "--rate=44100",
                            "--channels=2", "--latency-msec=20", recording},
                           options);
    for (int i = 0;
         i < 500 && (access(recording.c_str(), F_OK) != 0 || readFile(recording).empty()); ++i) {
        usleep(20000);
    }
    const ProcessResult result =
        runTvhost({"play", input, "--plugin", testPlugin("Gain"), "--server", "pulse"}, options);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr(" s at 44100 Hz by PulseAudio, peak "));

    // The recorder writes some time later.
    bool found = false;
    for (int i = 0; i < 100 && !found; ++i) {
        usleep(50000);
        const std::string bytes = readFile(recording);
        std::vector<float> recorded(bytes.size() / sizeof(float));
        std::memcpy(recorded.data(), bytes.data(), recorded.size() * sizeof(float));
        found = std::search(recorded.begin(), recorded.end(), sound.samples.begin(),
                            sound.samples.end()) != recorded.end();
    }
    EXPECT_TRUE(found);
}

TEST_F(Play, CountsTheBlocksThatTheEffectTookTooLongFor) {
    writeSound(input, noise(2, 60000, 44100, 0.4f, 3));
    const JackServer server(44100, JackServer::Patience::kNone);
    const ProcessResult result =
        runTvhost({"play", input, "--plugin", testPlugin("Sleepy"), "--server", "jack"},
                  on(server.environment()));
    EXPECT_EQ(result.status, 0) << result.err;
    // What the server tells is one, and what the clock tells another.
    EXPECT_THAT(result.out, testing::ContainsRegex("[1-9][0-9]* underruns?, "));
    EXPECT_THAT(result.out, testing::ContainsRegex(", [1-9][0-9]* blocks? too late"));
}

TEST_F(Play, WaitsForAnEchoAsLongAsItIsTold) {
    // Echoes four seconds apart.
    SoundFile click = silence(2, 1000);
    click.at(0, 0) = click.at(0, 1) = 0.5f;
    writeSound(input, click);
    const JackServer server(44100);
    const auto secondsOf = [&](const std::string& gap) {
        const ProcessResult result = runTvhost({"play", input, "--plugin", testPlugin("Late"),
                                                "--server", "jack", "--longest-gap", gap},
                                               on(server.environment()));
        EXPECT_EQ(result.status, 0) << result.err;
        return std::stod(result.out.substr(input.size() + 2));
    };
    EXPECT_NEAR(secondsOf("1"), 1.0, 0.2);
    EXPECT_NEAR(secondsOf("0.3"), 0.3, 0.2);
}

TEST_F(Play, RefusesToPlayWithoutAServer) {
    writeSound(input, noise(2, 100, 44100, 0.4f, 3));
    for (const char* name : {"jack", "pulse"}) {
        const ProcessResult result =
            runTvhost({"play", input, "--server", name}, on("JACK_DEFAULT_SERVER=none-here"));
        EXPECT_EQ(result.status, 2);
        ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
        EXPECT_THAT(result.err, HasSubstr(std::string("there is no sound server ") + name));
    }
}
