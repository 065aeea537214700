// The product's plug-in, driven by tvhost as by any other host.
#include "host/measure/EffectMeasurement.h"
#include "tests/host/SoundFile.h"
#include "tests/host/Tvhost.h"
#include "tests/support/Dice.h"
#include "tests/support/FactoryTable.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <utility>

using namespace tvhost;
using testing::HasSubstr;

namespace {

const char* const kParameterNames[] = {"Delay",      "FeedBack",     "lowPass",
                                       "highPass",   "lowPass Type", "highPass Type",
                                       "Left/Right", "Pan Depth",    "MIX"};

struct Change {
    std::size_t frame;
    int parameter;
    float value;
};

// What the effect is to do: a program if not negative, then changes; those at frame 0 before any
// sound.
struct Job {
    int program = -1;
    std::vector<Change> sets;
    std::vector<Change> automation; // in order of frames
};

std::string number(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

class TvDelay : public testing::Test {
protected:
    // Runs tvhost on the bundle, found beside it without being named.
    SoundFile rendered(const SoundFile& input, const Job& job,
                       std::vector<std::string> more = {}) const {
        writeSound(folder.file("in.wav"), input);
        std::vector<std::string> arguments = {"render", folder.file("in.wav"),
                                              folder.file("out.wav")};
        if (job.program >= 0) {
            arguments.insert(arguments.end(), {"--program", std::to_string(job.program)});
        }
        for (const Change& set : job.sets) {
            arguments.insert(arguments.end(),
                             {"--set", std::string(kParameterNames[set.parameter]) + "=" +
                                           number(static_cast<double>(set.value))});
        }
        for (const Change& change : job.automation) {
            arguments.insert(
                arguments.end(),
                {"--automate", std::string(kParameterNames[change.parameter]) + "=" +
                                   number(static_cast<double>(change.frame) / input.rate) + ":" +
                                   number(static_cast<double>(change.value))});
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ProcessResult result = runTvhost(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return readSound(folder.file("out.wav"));
    }

    // The same by the reference, `frames` long.
    static SoundFile expected(const SoundFile& input, const Job& job, std::size_t frames) {
        ReferenceDelay effect;
        std::vector<float> channels[2];
        for (int c = 0; c < 2; ++c) {
            channels[c].resize(frames);
            for (std::size_t i = 0; i < std::min(frames, input.frames()); ++i) {
                channels[c][i] = input.at(i, input.channels == 1 ? 0 : c);
            }
        }
        const auto process = [&](std::size_t from, std::size_t to) {
            float* pointers[] = {channels[0].data() + from, channels[1].data() + from};
            effect.process(pointers, pointers, static_cast<std::int32_t>(to - from));
        };
        effect.setSampleRate(static_cast<float>(input.rate));
        effect.resume();
        // What the effect hears before it is played.
        std::vector<float> quiet(512);
        float* quietChannels[] = {quiet.data(), quiet.data()};
        std::vector<float> unheard[] = {quiet, quiet};
        float* unheardChannels[] = {unheard[0].data(), unheard[1].data()};
        effect.process(quietChannels, unheardChannels, 512);
        if (job.program >= 0) {
            effect.setProgram(job.program);
        }
        for (const Change& set : job.sets) {
            effect.setParameter(set.parameter, set.value);
        }
        std::size_t done = 0;
        for (const Change& change : job.automation) {
            const std::size_t until = std::min(change.frame, frames);
            process(done, until);
            done = until;
            effect.setParameter(change.parameter, change.value);
        }
        process(done, frames);
        SoundFile output = silence(2, frames, input.rate);
        for (std::size_t i = 0; i < frames; ++i) {
            for (int c = 0; c < 2; ++c) {
                output.at(i, c) = channels[c][i];
            }
        }
        return output;
    }

    TemporaryFolder folder;
};

std::int64_t delayLength(float delay, int rate) {
    return static_cast<std::int64_t>((static_cast<float>(rate) + -1.0f) * delay);
}

SoundFile impulse(int channel, int rate) {
    SoundFile sound = silence(2, 1000, rate);
    sound.at(0, channel) = 1.0f;
    return sound;
}

} // namespace

TEST_F(TvDelay, FirstEchoComesAfterTheDelayOnTheOtherSideAtTheProgramsLevel) {
    for (const int rate : {44100, 48000, 96000}) {
        for (int program = 0; program < 26; ++program) {
            const FactoryRow& row = kFactoryTable[program];
            const auto length = static_cast<std::size_t>(delayLength(row.delayTime, rate));
            if (rate == 44100) {
                EXPECT_EQ(static_cast<std::int64_t>(length), row.lengthAt44100);
            }
            // Without filters an echo is one sample.
            const Job job{program, {{0, 2, 0.0f}, {0, 3, 0.0f}}, {}};
            const int source = program % 2;
            const SoundFile output = rendered(impulse(source, rate), job, {"--tail", "1"});
            const int opposite = 1 - source;
            const double balance = row.leftRight;
            const double gainToRight = balance < 0.5 ? balance + balance : 1.0;
            const double gainToLeft = balance > 0.5 ? 2.0 - (balance + balance) : 1.0;
            const double level = row.mix * (opposite == 1 ? gainToRight : gainToLeft);
            EXPECT_EQ(output.at(0, source), 1.0f) << row.name;
            EXPECT_EQ(output.peakFrame(opposite), length) << row.name << " at " << rate;
            EXPECT_NEAR(output.at(length, opposite), level, 1e-5) << row.name;
            EXPECT_NEAR(output.at(2 * length, opposite), level * static_cast<double>(row.feedBack),
                        1e-5)
                << row.name;
        }
    }
}

TEST_F(TvDelay, EveryProgramSoundsAsTheReferenceBitForBit) {
    for (const int rate : {44100, 48000, 96000}) {
        for (int program = 0; program < 26; ++program) {
            const SoundFile input =
                noise(2, 20000, rate, 0.9f, static_cast<unsigned>(program + rate));
            const Job job{program, {}, {}};
            const SoundFile output = rendered(input, job, {"--tail", "1"});
            ASSERT_EQ(output.frames(), 20000u + static_cast<std::size_t>(rate));
            EXPECT_TRUE(output.samples == expected(input, job, output.frames()).samples)
                << kFactoryTable[program].name << " at " << rate;
        }
    }
}

TEST_F(TvDelay, RandomSettingsAndChangesSoundAsTheReferenceBitForBit) {
    const std::uint64_t seed = randomSeed(81);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    for (int round = 0; round < 15; ++round) {
        const int rates[] = {22050, 44100, 48000, 88200, 96000, 192000};
        const SoundFile input = noise(
            static_cast<int>(dice.between(1, 2)), static_cast<std::size_t>(dice.between(1, 60000)),
            dice.pick(rates), 0.9f, static_cast<unsigned>(dice.between(0, 1000000)));
        const auto parameter = [&] { return static_cast<int>(dice.between(0, 8)); };
        const auto value = [&] {
            // Delays short enough to be heard within the file.
            return dice.oneIn(4) ? 0.0f : dice.within(0.0f, 0.3f);
        };
        Job job;
        job.program = static_cast<int>(dice.between(-1, 25));
        for (std::int64_t i = dice.between(0, 5); i > 0; --i) {
            job.sets.push_back({0, parameter(), value()});
        }
        for (std::int64_t i = dice.between(0, 8); i > 0; --i) {
            job.automation.push_back({static_cast<std::size_t>(dice.between(
                                          0, static_cast<std::int64_t>(input.frames()))),
                                      parameter(), value()});
        }
        std::stable_sort(job.automation.begin(), job.automation.end(),
                         [](const Change& a, const Change& b) { return a.frame < b.frame; });
        const SoundFile output = rendered(
            input, job, {"--tail", "0.5", "--block", std::to_string(dice.between(1, 20000))});
        ASSERT_EQ(output.frames(),
                  input.frames() + static_cast<std::size_t>(std::llround(0.5 * input.rate)));
        ASSERT_TRUE(output.samples == expected(input, job, output.frames()).samples)
            << "round " << round;
    }
}

TEST_F(TvDelay, GivesTheSameFileWhateverTheBlockSize) {
    const SoundFile input = noise(2, 30000, 48000, 0.9f, 9);
    const Job job{14, {}, {{5000, 8, 0.3f}, {12345, 0, 0.02f}, {20001, 7, 1.0f}}};
    rendered(input, job, {"--block", "1"});
    const std::string first = readFile(folder.file("out.wav"));
    for (const char* block : {"7", "64", "8192"}) {
        rendered(input, job, {"--block", block});
        EXPECT_TRUE(readFile(folder.file("out.wav")) == first) << block;
    }
}

// At a new rate the effect writes its low-pass switch anew in its first block; what is set must be
// set after that.
TEST_F(TvDelay, ASwitchThatIsSetHoldsAtAnyRate) {
    for (const int rate : {44100, 48000, 96000}) {
        const SoundFile input = noise(2, 10000, rate, 0.5f, 10);
        const Job inside{0, {{0, 4, 1.0f}}, {}};
        const Job behind{0, {{0, 4, 0.0f}}, {}};
        EXPECT_TRUE(rendered(input, inside, {"--tail", "0.5"}).samples !=
                    rendered(input, behind, {"--tail", "0.5"}).samples)
            << rate;
    }
}

TEST_F(TvDelay, TailEndsWhereTheEchoesHaveDiedAway) {
    for (const int program : {0, 3, 11, 19, 21}) {
        const SoundFile input = noise(2, 5000, 44100, 0.5f, 11);
        const Job job{program, {}, {}};
        const SoundFile output = rendered(input, job);
        const std::size_t longest = 5000 + 60 * 44100;
        const SoundFile whole = expected(input, job, longest);
        std::size_t last = 0;
        for (std::size_t i = 0; i < longest; ++i) {
            for (int c = 0; c < 2; ++c) {
                if (std::abs(whole.at(i, c)) >= std::pow(10.0f, -90.0f / 20.0f)) {
                    last = i;
                }
            }
        }
        EXPECT_EQ(output.frames(), last + 1) << kFactoryTable[program].name;
    }
}

TEST_F(TvDelay, InfoTellsTheEffectAndItsPrograms) {
    const ProcessResult result = runTvhost({"info", "--json"});
    ASSERT_EQ(result.status, 0) << result.err;
    const auto json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["uniqueId"], "TvDy");
    EXPECT_EQ(json["effectName"], "TvDelay");
    EXPECT_EQ(json["productName"], "Tarnvale's Delay");
    EXPECT_EQ(json["vendorName"], "Tarnvale Music");
    EXPECT_EQ(json["vendorVersion"], 1000);
    EXPECT_EQ(json["version"], 1);
    EXPECT_EQ(json["category"], "effect");
    EXPECT_EQ(json["inputs"], 2);
    EXPECT_EQ(json["outputs"], 2);
    EXPECT_EQ(json["flags"]["hasEditor"], true);
    EXPECT_EQ(json["flags"]["canReplacing"], true);
    EXPECT_EQ(json["flags"]["programChunks"], false);
    EXPECT_EQ(json["flags"]["isSynth"], false);
    ASSERT_EQ(json["parameters"].size(), 9u);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(json["parameters"][i]["name"], kParameterNames[i]);
    }
    EXPECT_EQ(json["parameters"][0]["display"], "3526");
    EXPECT_EQ(json["parameters"][0]["label"], "samples");
    EXPECT_EQ(json["parameters"][0]["value"].get<float>(), kFactoryTable[0].delayTime);
    EXPECT_EQ(json["parameters"][5]["display"], "");
    ASSERT_EQ(json["programs"].size(), 26u);
    for (std::size_t i = 0; i < 26; ++i) {
        EXPECT_EQ(json["programs"][i]["name"], kFactoryTable[i].name);
    }
}

TEST_F(TvDelay, InfoPrintsOneLineForEachParameterAndProgram) {
    const ProcessResult result = runTvhost({"info"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("\n  5  highPass Type  0.000000            on/off\n"));
    EXPECT_THAT(result.out, HasSubstr("\n  20  Repeat After Me\n"));
}

TEST_F(TvDelay, MeasurementFindsTheEchoesOfEachProgramCrossed) {
    const auto module = std::make_shared<const PluginModule>(TVDELAY_PLUGIN);
    for (int program = 0; program < 26; ++program) {
        const FactoryRow& row = kFactoryTable[program];
        const EffectMeasurement measurement(module,
                                            {std::to_string(program), {"lowpass=0", "highpass=0"}});
        EXPECT_EQ(measurement.programName(), row.name);
        for (int input = 0; input < 2; ++input) {
            const EchoAnalysis& crossed = measurement.echoes(input, 1 - input);
            EXPECT_FALSE(crossed.hasDirect());
            ASSERT_GE(crossed.echoCount(), 5u) << row.name;
            for (std::size_t i = 0; i < 5; ++i) {
                EXPECT_EQ(crossed.echo(i).frame,
                          row.lengthAt44100 * static_cast<std::int64_t>(i + 1))
                    << row.name;
            }
            EXPECT_NEAR(crossed.echo(4).level / crossed.echo(0).level,
                        std::pow(static_cast<double>(row.feedBack), 4.0), 1e-4)
                << row.name;
            const EchoAnalysis& straight = measurement.echoes(input, input);
            EXPECT_TRUE(straight.hasDirect());
            EXPECT_EQ(straight.echoCount(), 0u) << row.name;
        }
    }
}

// As shipped, the filters move each echo a few samples and smear it a little.
TEST_F(TvDelay, MeasurementFindsFilteredEchoesWhereTheyAre) {
    const auto module = std::make_shared<const PluginModule>(TVDELAY_PLUGIN);
    for (int program = 0; program < 26; ++program) {
        const FactoryRow& row = kFactoryTable[program];
        const EffectMeasurement measurement(module, {std::to_string(program), {}});
        const EchoAnalysis& crossed = measurement.echoes(0, 1);
        ASSERT_GE(crossed.echoCount(), 2u) << row.name;
        EXPECT_GE(crossed.echo(0).frame, row.lengthAt44100) << row.name;
        EXPECT_LE(crossed.echo(0).frame, row.lengthAt44100 + 40) << row.name;
        EXPECT_NEAR(static_cast<double>(crossed.echo(1).frame),
                    2.0 * static_cast<double>(row.lengthAt44100), 90.0)
            << row.name;
    }
}

TEST_F(TvDelay, PlotsOneProgramAndAll) {
    for (const char* name : {"one.svg", "one.png"}) {
        EXPECT_EQ(runTvhost({"plot", folder.file(name), "--program", "Canyon"}).status, 0);
    }
    for (const char* name : {"all.svg", "all.png"}) {
        EXPECT_EQ(runTvhost({"plot", folder.file(name), "--all"}).status, 0);
    }
    for (const char* name : {"one.svg", "one.png", "all.svg", "all.png"}) {
        EXPECT_GT(std::filesystem::file_size(folder.file(name)), 50000u) << name;
    }
}
