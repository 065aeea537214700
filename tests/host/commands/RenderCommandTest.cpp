#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

class Render : public testing::Test {
protected:
    std::string file(const std::string& name) const { return folder.file(name); }

    ProcessResult render(const std::string& in, const std::string& out, const std::string& plugin,
                         const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments = {"render", file(in), file(out), "--plugin",
                                              testPlugin(plugin)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTvhost(arguments);
    }

    // Renders and reads the result; the run must succeed without a word on standard error.
    SoundFile rendered(const SoundFile& input, const std::string& plugin,
                       const std::vector<std::string>& more = {}) const {
        writeSound(file("in.wav"), input);
        const ProcessResult result = render("in.wav", "out.wav", plugin, more);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        return readSound(file("out.wav"));
    }

    TemporaryFolder folder;
};

SoundFile click(int channel, int rate = 44100, std::size_t frames = 100) {
    SoundFile sound = silence(2, frames, rate);
    sound.at(0, channel) = 0.5f;
    return sound;
}

} // namespace

TEST_F(Render, PassesEverySampleThroughUnchanged) {
    const SoundFile input = noise(2, 10000, 44100, 0.9f, 1);
    const SoundFile output = rendered(input, "Gain", {"--tail", "0"});
    EXPECT_EQ(output.rate, 44100);
    EXPECT_EQ(output.channels, 2);
    EXPECT_EQ(output.samples, input.samples);
}

TEST_F(Render, SetsProgramsAndParametersInOrder) {
    const SoundFile input = noise(2, 1000, 44100, 0.9f, 2);
    const auto gainOf = [&](const std::vector<std::string>& options) {
        return rendered(input, "Gain", options).at(500, 0) / input.at(500, 0);
    };
    EXPECT_FLOAT_EQ(gainOf({"--program", "Half"}), 0.5f);
    EXPECT_FLOAT_EQ(gainOf({"--program", "808"}), 0.25f);
    EXPECT_FLOAT_EQ(gainOf({"--program", "1"}), 0.5f);
    EXPECT_FLOAT_EQ(gainOf({"--set", "gain=0.125"}), 0.125f);
    EXPECT_FLOAT_EQ(gainOf({"--set", "0=0.125", "--program", "Half"}), 0.125f);
    EXPECT_FLOAT_EQ(gainOf({"--set", "0=0.125", "--set", "Gain=0.75"}), 0.75f);
}

TEST_F(Render, WritesWhatGoesBeyondFullScaleAsItIs) {
    SoundFile input = silence(2, 100);
    for (std::size_t i = 0; i < 100; ++i) {
        input.at(i, 0) = 3.0f;
    }
    const SoundFile output = rendered(input, "Gain", {"--tail", "0"});
    EXPECT_EQ(output.at(50, 0), 3.0f);
}

TEST_F(Render, FollowsEveryRateOfTheInput) {
    for (const int rate : {8000, 22050, 44100, 48000, 96000, 192000}) {
        const SoundFile output = rendered(click(0, rate), "Delay", {"--tail", "0.15"});
        EXPECT_EQ(output.rate, rate);
        EXPECT_EQ(output.at(static_cast<std::size_t>(rate / 10), 1), 0.5f) << rate;
    }
}

TEST_F(Render, RunsTheEffectAtTheRateAskedFor) {
    const SoundFile output = rendered(click(0), "Delay", {"--rate", "96000", "--tail", "0.15"});
    EXPECT_EQ(output.rate, 96000);
    EXPECT_EQ(output.peakFrame(0), 0u);
    EXPECT_EQ(output.peakFrame(1), 9600u);
}

TEST_F(Render, GivesTheSameWhateverTheBlockSize) {
    const SoundFile input = noise(2, 20000, 44100, 0.9f, 3);
    const std::vector<std::string> changes = {"--automate", "Feedback=0.01:0.9,0.10001:0.2",
                                              "--automate", "Time=0.2:0.013"};
    writeSound(file("in.wav"), input);
    std::vector<std::string> files;
    for (const char* block : {"1", "7", "64", "512", "8192", "65536"}) {
        std::vector<std::string> options = {"--block", block, "--rate", "48000"};
        options.insert(options.end(), changes.begin(), changes.end());
        ASSERT_EQ(render("in.wav", "out.wav", "Delay", options).status, 0);
        files.push_back(readFile(file("out.wav")));
    }
    for (const std::string& contents : files) {
        EXPECT_TRUE(contents == files.front());
    }
    EXPECT_GT(files.front().size(), 100000u);
}

TEST_F(Render, FeedsAMonoFileIntoBothInputs) {
    SoundFile input = silence(1, 100);
    input.at(3, 0) = 0.5f;
    const SoundFile output = rendered(input, "Gain", {"--tail", "0"});
    EXPECT_EQ(output.channels, 2);
    EXPECT_EQ(output.at(3, 0), 0.5f);
    EXPECT_EQ(output.at(3, 1), 0.5f);
}

TEST_F(Render, WritesAsManyChannelsAsTheEffectGives) {
    SoundFile input = silence(1, 100);
    input.at(3, 0) = 0.5f;
    EXPECT_EQ(rendered(input, "Mono").channels, 1);
    const SoundFile stereo = rendered(input, "MonoToStereo");
    EXPECT_EQ(stereo.channels, 2);
    EXPECT_EQ(stereo.at(3, 0), 0.5f);
    EXPECT_EQ(stereo.at(3, 1), -0.25f);
}

TEST_F(Render, GivesAMonoEffectTheMeanOfBothChannelsAndSaysSo) {
    SoundFile input = silence(2, 100);
    input.at(3, 0) = 0.5f;
    input.at(3, 1) = 0.25f;
    writeSound(file("in.wav"), input);
    const ProcessResult result = render("in.wav", "out.wav", "Mono");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, AllOf(HasSubstr("warning"), HasSubstr("mean")));
    EXPECT_EQ(result.errorLines().size(), 1u);
    EXPECT_EQ(readSound(file("out.wav")).at(3, 0), 0.375f);
}

TEST_F(Render, EndsBehindTheLastEchoThatIsHeard) {
    // Echo n of 0.5 has a level of 2^-n; the 14th is the last above -90 dBFS.
    const SoundFile output = rendered(click(0), "Delay");
    EXPECT_EQ(output.frames(), 14u * 4410u + 1u);
    EXPECT_EQ(output.at(14 * 4410, 1), std::pow(2.0f, -14.0f));
}

TEST_F(Render, DoesNotTakeTheGapOfALongDelayForTheEnd) {
    const SoundFile output = rendered(click(0), "Delay", {"--program", "Long"});
    // A quarter each 0.9 s: 0.5, 0.125, ... the seventh is the last above -90 dBFS.
    EXPECT_EQ(output.frames(), 7u * 39690u + 1u);
    const SoundFile second = rendered(click(0), "Delay", {"--program", "Long", "--set", "Time=1"});
    EXPECT_EQ(second.frames(), 7u * 44100u + 1u);
}

TEST_F(Render, EndsAnEndlessEchoAfterAMinuteAndSaysSo) {
    writeSound(file("in.wav"), click(0));
    const ProcessResult result = render("in.wav", "out.wav", "Delay", {"--program", "Forever"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "tvhost: warning: the tail was still heard when it was cut after 60 s; "
                          "--tail makes it longer\n");
    // The last echo within 60 s of the input's end.
    EXPECT_EQ(readSound(file("out.wav")).frames(), 300u * 8820u + 1u);
}

TEST_F(Render, WaitsForEchoesAsFarApartAsTheLongestGap) {
    EXPECT_EQ(rendered(click(0), "Delay", {"--program", "Long", "--longest-gap", "0.85"}).frames(),
              100u);
    EXPECT_EQ(rendered(click(0), "Delay", {"--program", "Long", "--longest-gap", "0.9"}).frames(),
              7u * 39690u + 1u);
}

TEST_F(Render, TakesTheLatencyOffAndSaysSo) {
    const SoundFile input = noise(2, 5000, 44100, 0.5f, 3);
    EXPECT_EQ(rendered(input, "Late").samples, input.samples);
    const ProcessResult result = render("in.wav", "out.wav", "Late", {"--block", "64"});
    EXPECT_THAT(result.out, HasSubstr(", latency of 100 samples (2.3 ms) taken off\n"));
    EXPECT_EQ(readSound(file("out.wav")).samples, input.samples);
}

TEST_F(Render, TakesOffALatencyThatSettingsChange) {
    const SoundFile input = noise(2, 200, 44100, 0.5f, 3);
    EXPECT_EQ(rendered(input, "Late", {"--set", "More=1"}).samples, input.samples);
    const ProcessResult result = render("in.wav", "out.wav", "Late", {"--set", "More=1"});
    EXPECT_THAT(result.out, HasSubstr("latency of 300 samples"));
}

TEST_F(Render, LeavesTheLatencyInWhenAsked) {
    SoundFile input = silence(2, 1000);
    input.at(0, 0) = 0.5f;
    const SoundFile output = rendered(input, "Late", {"--no-compensation"});
    EXPECT_EQ(output.frames(), 1000u);
    EXPECT_EQ(output.peakFrame(0), 100u);
}

TEST_F(Render, PutsTheTailAfterTheInputWhateverTheLatency) {
    const SoundFile input = noise(2, 1000, 44100, 0.5f, 4);
    const SoundFile output = rendered(input, "Late", {"--tail", "0.01"});
    EXPECT_EQ(output.frames(), 1000u + 441u);
}

TEST_F(Render, GivesEachChannelItsInputAndTheRestSilence) {
    writeSound(file("in.wav"), noise(2, 300, 44100, 0.5f, 5));
    const SoundFile input = readSound(file("in.wav"));
    const ProcessResult result = render("in.wav", "out.wav", "SideChain");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "tvhost: warning: Side Chain takes 3 channels, so input 3 got silence\n");
    const SoundFile output = readSound(file("out.wav"));
    ASSERT_EQ(output.channels, 4);
    ASSERT_EQ(output.frames(), 300u);
    for (std::size_t i = 0; i < 300; ++i) {
        EXPECT_EQ(output.at(i, 0), input.at(i, 0));
        EXPECT_EQ(output.at(i, 1), input.at(i, 1));
        EXPECT_EQ(output.at(i, 2), 0.0f);
    }
}

TEST_F(Render, RendersSixChannelsAsTheyAre) {
    const SoundFile input = noise(6, 2000, 48000, 0.5f, 6);
    EXPECT_EQ(rendered(input, "Surround", {"--tail", "0"}).samples, input.samples);
}

TEST_F(Render, SaysWhichChannelsAreLeftOut) {
    writeSound(file("in.wav"), noise(6, 300, 44100, 0.5f, 7));
    const ProcessResult result = render("in.wav", "out.wav", "Gain");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "tvhost: warning: Gain takes 2 channels, so channels 3 to 6 of the input "
                          "were left out\n");
}

TEST_F(Render, TakesPluginsOfTheOlderEntry) {
    const SoundFile input = noise(2, 300, 44100, 0.5f, 8);
    EXPECT_EQ(rendered(input, "OldEntry").samples, input.samples);
}

TEST_F(Render, NamesTheOutputInOneLineWhateverItIsCalled) {
    writeSound(file("in.wav"), click(0));
    const ProcessResult result = render("in.wav", "two\nlines.wav", "Gain");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1);
}

TEST_F(Render, AddsNoTailWhereNothingIsHeard) {
    EXPECT_EQ(rendered(click(0), "Gain").frames(), 100u);
    EXPECT_EQ(rendered(silence(2, 777), "Delay").frames(), 777u);
}

TEST_F(Render, GivesTheTailAskedForToTheFrame) {
    EXPECT_EQ(rendered(click(0), "Delay", {"--tail", "0"}).frames(), 100u);
    EXPECT_EQ(rendered(click(0), "Delay", {"--tail", "0.5"}).frames(), 100u + 22050u);
    EXPECT_EQ(rendered(click(0), "Gain", {"--tail", "2"}).frames(), 100u + 88200u);
}

TEST_F(Render, StepsAutomatedValuesOnTheSample) {
    SoundFile input = silence(2, 44100);
    std::fill(input.samples.begin(), input.samples.end(), 0.5f);
    const SoundFile output =
        rendered(input, "Gain", {"--automate", "Gain=0.1:0.5,0.25:0", "--automate", "0=0.5:0.75"});
    for (std::size_t i = 0; i < output.frames(); ++i) {
        const float gain = i < 4410 ? 1.0f : i < 11025 ? 0.5f : i < 22050 ? 0.0f : 0.75f;
        ASSERT_EQ(output.at(i, 0), 0.5f * gain) << i;
        ASSERT_EQ(output.at(i, 1), 0.5f * gain) << i;
    }
}

TEST_F(Render, SetsValuesAtTheStartBeforeTheFirstSample) {
    SoundFile input = silence(2, 10);
    input.at(0, 0) = 1.0f;
    EXPECT_EQ(rendered(input, "Gain", {"--set", "Gain=1", "--automate", "Gain=0:0.25"}).at(0, 0),
              0.25f);
}

TEST_F(Render, WaitsForChangesThatBringSoundBack) {
    const SoundFile output = rendered(click(0), "Gain", {"--automate", "Shift = Up=3:0.5,3.5:0"});
    ASSERT_EQ(output.frames(), 154350u);
    EXPECT_EQ(output.at(132299, 0), 0.0f);
    EXPECT_EQ(output.at(132300, 0), 0.5f);
}

TEST_F(Render, WarnsOfChangesBehindTheEnd) {
    writeSound(file("in.wav"), click(0));
    const ProcessResult result =
        render("in.wav", "out.wav", "Gain", {"--tail", "0", "--automate", "Gain=0:1,5:0,6:0"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, AllOf(HasSubstr("2 --automate points"), HasSubstr("--tail")));
    EXPECT_EQ(result.errorLines().size(), 1u);
}

TEST_F(Render, ReportsLengthPeakAndSpeedInOneLine) {
    SoundFile input = silence(2, 44100);
    input.at(100, 1) = -0.5f;
    writeSound(file("in.wav"), input);
    const ProcessResult result = render("in.wav", "out.wav", "Gain");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, AllOf(HasSubstr(file("out.wav") + ": 1.000 s, peak -6.0 dBFS, "),
                                  testing::EndsWith("x real time\n")));
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1);
}

TEST_F(Render, ReportsThePeakOfSilence) {
    writeSound(file("in.wav"), silence(2, 100));
    EXPECT_THAT(render("in.wav", "out.wav", "Gain").out, HasSubstr("peak -inf dBFS"));
}

TEST_F(Render, ShowsABarOnATerminalAndTakesItAway) {
    writeSound(file("in.wav"), noise(2, 44100 * 5, 44100, 0.5f, 4));
    Process::Options options;
    options.errorOnTerminal = true;
    const ProcessResult result = runTvhost(
        {"render", file("in.wav"), file("out.wav"), "--plugin", testPlugin("Delay")}, options);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, AllOf(HasSubstr("[####"), HasSubstr("50 %"), HasSubstr("0:04"),
                                  HasSubstr("echoes dying away"), Not(HasSubstr("\n"))));
    // The line's last state is blank.
    const std::size_t before = result.err.rfind('\r', result.err.size() - 2);
    EXPECT_EQ(result.err.find_first_not_of(" \r", before), std::string::npos);
}

TEST_F(Render, TakesTheBarAwayBeforeAMessage) {
    writeSound(file("in.wav"), noise(2, 44100, 44100, 0.5f, 4));
    Process::Options options;
    options.errorOnTerminal = true;
    const ProcessResult result = runTvhost(
        {"render", file("in.wav"), file("out.wav"), "--plugin", testPlugin("NotANumber")}, options);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("\rtvhost: NotANumber produced"));
}

TEST_F(Render, WritesEveryFormatByItsExtension) {
    struct Row {
        const char* extension;
        int type;
        int subtype;
        double tolerance; // of a sample; negative where only the sound's length and level are kept
    };
    const Row rows[] = {
        {"wav", SF_FORMAT_WAV, SF_FORMAT_FLOAT, 0.0},
        {"WAV", SF_FORMAT_WAV, SF_FORMAT_FLOAT, 0.0},
        {"aiff", SF_FORMAT_AIFF, SF_FORMAT_FLOAT, 0.0},
        {"aif", SF_FORMAT_AIFF, SF_FORMAT_FLOAT, 0.0},
        {"caf", SF_FORMAT_CAF, SF_FORMAT_FLOAT, 0.0},
        {"w64", SF_FORMAT_W64, SF_FORMAT_FLOAT, 0.0},
        {"rf64", SF_FORMAT_RF64, SF_FORMAT_FLOAT, 0.0},
        {"au", SF_FORMAT_AU, SF_FORMAT_FLOAT, 0.0},
        {"flac", SF_FORMAT_FLAC, SF_FORMAT_PCM_24, 2e-7},
        {"ogg", SF_FORMAT_OGG, SF_FORMAT_VORBIS, -1.0},
        {"oga", SF_FORMAT_OGG, SF_FORMAT_VORBIS, -1.0},
        {"opus", SF_FORMAT_OGG, SF_FORMAT_OPUS, -1.0},
        {"mp3", SF_FORMAT_MPEG, SF_FORMAT_MPEG_LAYER_III, -1.0},
    };
    SoundFile input = silence(2, 48000, 48000);
    for (std::size_t i = 0; i < input.frames(); ++i) {
        for (int c = 0; c < 2; ++c) {
            input.at(i, c) = static_cast<float>(
                0.5 * std::sin(2.0 * M_PI * 440.0 * static_cast<double>(i) / 48000.0));
        }
    }
    writeSound(file("in.wav"), input);
    for (const Row& row : rows) {
        const std::string out = std::string("out.") + row.extension;
        const ProcessResult result = render("in.wav", out, "Gain", {"--tail", "0"});
        EXPECT_EQ(result.status, 0) << row.extension << result.err;
        EXPECT_EQ(result.err, "") << row.extension;
        const SoundFile output = readSound(file(out));
        EXPECT_EQ(output.format & SF_FORMAT_TYPEMASK, row.type) << row.extension;
        EXPECT_EQ(output.format & SF_FORMAT_SUBMASK, row.subtype) << row.extension;
        EXPECT_EQ(output.rate, 48000);
        if (row.tolerance < 0.0) {
            EXPECT_NEAR(static_cast<double>(output.frames()), 48000.0, 3000.0) << row.extension;
            const float peak = std::abs(output.at(output.peakFrame(0, 24000), 0));
            EXPECT_NEAR(peak, 0.5f, 0.05f) << row.extension;
            continue;
        }
        ASSERT_EQ(output.frames(), 48000u) << row.extension;
        for (std::size_t i = 0; i < output.samples.size(); ++i) {
            ASSERT_NEAR(output.samples[i], input.samples[i], row.tolerance) << row.extension;
        }
    }
}

TEST_F(Render, ReadsEveryUsualFormat) {
    const int formats[] = {SF_FORMAT_WAV | SF_FORMAT_PCM_16,  SF_FORMAT_WAV | SF_FORMAT_PCM_24,
                           SF_FORMAT_WAV | SF_FORMAT_PCM_U8,  SF_FORMAT_AIFF | SF_FORMAT_PCM_16,
                           SF_FORMAT_FLAC | SF_FORMAT_PCM_16, SF_FORMAT_WAV | SF_FORMAT_DOUBLE};
    for (const int format : formats) {
        SoundFile input = noise(2, 3000, 44100, 0.9f, 5);
        input.format = format;
        writeSound(file("in"), input);
        const SoundFile exact = readSound(file("in"));
        ASSERT_EQ(render("in", "out.wav", "Gain", {"--tail", "0"}).status, 0);
        EXPECT_EQ(readSound(file("out.wav")).samples, exact.samples);
    }
}

TEST_F(Render, TellsOfClippingWhereTheFormatCannotHoldTheSound) {
    SoundFile input = silence(2, 1000);
    input.at(10, 0) = 1.5f;
    input.at(20, 1) = -2.0f;
    input.at(30, 1) = 1.0f;
    writeSound(file("in.wav"), input);
    const ProcessResult result = render("in.wav", "out.flac", "Gain");
    EXPECT_EQ(result.status, 0);
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, AllOf(HasSubstr("warning: 2 samples"), HasSubstr("FLAC")));
    EXPECT_THAT(result.out, HasSubstr("peak 6.0 dBFS"));
    const SoundFile output = readSound(file("out.flac"));
    EXPECT_NEAR(output.at(10, 0), 1.0f, 1e-6f);
    EXPECT_NEAR(output.at(20, 1), -1.0f, 1e-6f);
    EXPECT_NEAR(output.at(30, 1), 1.0f, 1e-6f);
    EXPECT_EQ(output.at(40, 1), 0.0f);
}

TEST_F(Render, MayReplaceItsInput) {
    const SoundFile input = noise(2, 5000, 44100, 0.5f, 6);
    writeSound(file("in.wav"), input);
    ASSERT_EQ(render("in.wav", "in.wav", "Gain", {"--program", "Half"}).status, 0);
    const SoundFile output = readSound(file("in.wav"));
    ASSERT_EQ(output.frames(), input.frames());
    for (std::size_t i = 0; i < input.samples.size(); ++i) {
        ASSERT_EQ(output.samples[i], 0.5f * input.samples[i]);
    }
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"in.wav"});
}

TEST_F(Render, GivesEqualFilesForEqualRuns) {
    writeSound(file("in.wav"), noise(2, 5000, 44100, 0.5f, 7));
    for (const char* extension : {".wav", ".aiff", ".flac", ".caf", ".w64", ".au"}) {
        ASSERT_EQ(render("in.wav", std::string("one") + extension, "Delay").status, 0);
        ASSERT_EQ(render("in.wav", std::string("two") + extension, "Delay").status, 0);
        EXPECT_TRUE(readFile(file(std::string("one") + extension)) ==
                    readFile(file(std::string("two") + extension)))
            << extension;
    }
}

// Whatever mix of settings, blocks and changes: the answer is that of the effect's formula.
TEST_F(Render, AgreesWithADirectComputationForRandomSettings) {
    const std::uint64_t seed = randomSeed(20261121);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 12; ++round) {
        const int rate = static_cast<int>(dice.between(8000, 96000));
        const auto frames = static_cast<std::size_t>(dice.between(1, 6000));
        const float time = dice.within(0.0f, 0.05f);
        const float feedback = dice.within(0.0f, 0.9f);
        const float gainChange = dice.within(0.0f, 1.0f);
        const auto changeFrame = static_cast<std::size_t>(dice.between(0, 8000));
        const SoundFile input =
            noise(2, frames, rate, 0.9f, static_cast<unsigned>(dice.between(0, 1000000)));
        char number[3][64];
        std::snprintf(number[0], sizeof number[0], "Time=%.9g", static_cast<double>(time));
        std::snprintf(number[1], sizeof number[1], "Feedback=%.9g", static_cast<double>(feedback));
        std::snprintf(number[2], sizeof number[2], "Dry=%.12g:%.9g",
                      static_cast<double>(changeFrame) / rate, static_cast<double>(gainChange));
        const SoundFile output =
            rendered(input, "Delay",
                     {"--set", number[0], "--set", number[1], "--automate", number[2], "--tail",
                      "0.25", "--block", std::to_string(dice.between(1, 3000))});
        const auto tail = static_cast<std::size_t>(std::llround(0.25 * rate));
        ASSERT_EQ(output.frames(), frames + tail);

        const auto length =
            static_cast<std::size_t>(std::max(1L, std::lround(time * static_cast<float>(rate))));
        std::vector<float> lines[2] = {std::vector<float>(length), std::vector<float>(length)};
        for (std::size_t i = 0; i < frames + tail; ++i) {
            const float dry = i < changeFrame ? 1.0f : gainChange;
            const std::size_t at = i % length;
            float in[2];
            float tap[2];
            for (int c = 0; c < 2; ++c) {
                in[c] = i < frames ? input.at(i, c) : 0.0f;
                tap[c] = lines[c][at];
                lines[c][at] = in[c] + feedback * tap[c];
            }
            ASSERT_NEAR(output.at(i, 0), in[0] * dry + tap[1], 1e-5f) << "frame " << i;
            ASSERT_NEAR(output.at(i, 1), in[1] * dry + tap[0], 1e-5f) << "frame " << i;
        }
    }
}
