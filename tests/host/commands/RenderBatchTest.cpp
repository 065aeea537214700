// Several sounds rendered in one call.
#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sndfile.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include <unistd.h>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace {

class RenderBatch : public testing::Test {
protected:
    RenderBatch() {
        fs::create_directory(folder.path() / "wet");
        fs::create_directory(folder.path() / "dry");
    }

    std::string file(const std::string& name) const { return folder.file(name); }

    std::vector<std::string> arguments(const std::vector<std::string>& inputs,
                                       const std::string& plugin,
                                       const std::vector<std::string>& more = {}) const {
        std::vector<std::string> all = {"render"};
        for (const std::string& input : inputs) {
            all.push_back(file(input));
        }
        all.insert(all.end(), {"--out-folder", file("wet"), "--plugin", testPlugin(plugin)});
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    std::vector<std::string> written() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder.path() / "wet")) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    TemporaryFolder folder;
};

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> all;
    for (std::size_t begin = 0, end; (end = text.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
        all.push_back(text.substr(begin, end - begin));
    }
    return all;
}

} // namespace

TEST_F(RenderBatch, WritesEachUnderItsOwnName) {
    std::vector<std::string> inputs;
    for (int i = 0; i < 5; ++i) {
        inputs.push_back("dry/take " + std::to_string(i) + ".wav");
        writeSound(file(inputs.back()), noise(2, 3000, 44100, 0.5f, static_cast<unsigned>(i)));
    }
    SoundFile flac = noise(2, 3000, 48000, 0.5f, 9);
    flac.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
    writeSound(file("other.flac"), flac);
    inputs.push_back("other.flac");
    const ProcessResult result =
        runTvhost(arguments(inputs, "Gain", {"--set", "Gain=0.5", "--tail", "0", "--jobs", "3"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(lines(result.out).size(), 6u) << result.out;
    for (const std::string& input : inputs) {
        const std::string output = file("wet/" + fs::path(input).filename().string());
        EXPECT_THAT(result.out, HasSubstr(output + ": 0.06"));
        const SoundFile before = readSound(file(input));
        const SoundFile after = readSound(output);
        EXPECT_EQ(after.rate, before.rate);
        ASSERT_EQ(after.samples.size(), before.samples.size());
        EXPECT_NEAR(after.at(1000, 1), before.at(1000, 1) * 0.5f, 1e-6);
    }
    EXPECT_EQ(written().size(), 6u);
}

TEST_F(RenderBatch, TellsOfTheOneThatFailsAndMakesTheOthers) {
    writeSound(file("a.wav"), noise(2, 3000, 44100, 0.5f, 1));
    writeFile(file("b.wav"), "This is no sound at all, although it is called one.");
    writeSound(file("d.wav"), noise(3, 3000, 44100, 0.5f, 1));
    const ProcessResult result = runTvhost(arguments({"a.wav", "b.wav", "c.wav", "d.wav"}, "Gain"));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(lines(result.out).size(), 2u);
    EXPECT_THAT(result.errorLines(),
                UnorderedElementsAre(
                    AllOf(StartsWith("tvhost: " + file("b.wav") + " cannot be read as sound"),
                          HasSubstr("give WAV")),
                    "tvhost: there is no file " + file("c.wav") + "; give a sound file to read",
                    "tvhost: warning: " + file("d.wav") +
                        ": Gain takes 2 channels, so channel 3 of the input was left out"));
    EXPECT_THAT(written(), UnorderedElementsAre("a.wav", "d.wav"));
}

TEST_F(RenderBatch, OutlivesAPluginThatCrashes) {
    writeSound(file("long.wav"), noise(2, 3000, 44100, 0.5f, 1));
    writeSound(file("other.wav"), noise(2, 3000, 44100, 0.5f, 1));
    const ProcessResult result = runTvhost(arguments({"long.wav", "other.wav"}, "Crashing"));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.errorLines(),
                UnorderedElementsAre("tvhost: " + file("long.wav") + ": crashed (Aborted)",
                                     "tvhost: " + file("other.wav") + ": crashed (Aborted)"));
    EXPECT_THAT(written(), IsEmpty());
}

TEST_F(RenderBatch, SaysSoWhenThePluginCrashesAfterItsOutputWasWritten) {
    writeSound(file("a.wav"), noise(2, 3000, 44100, 0.5f, 1));
    writeFile(file("wet/a.wav"), "older");
    Process::Options options;
    options.environment = {"MEDDLE=crash"};
    const ProcessResult result = runTvhost(arguments({"a.wav"}, "Meddling"), options);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tvhost: " + file("a.wav") + ": crashed (Aborted), after " +
                              file("wet/a.wav") + " was written\n");
    EXPECT_EQ(readSound(file("wet/a.wav")).samples, readSound(file("a.wav")).samples);
}

TEST_F(RenderBatch, SeesThatLinksLeadTwoNamesToOneFile) {
    for (const char* name : {"a.wav", "b.wav"}) {
        writeSound(file(name), noise(2, 300, 44100, 0.5f, 1));
    }
    writeFile(file("wet/a.wav"), "older");
    fs::create_symlink(file("wet/a.wav"), file("wet/b.wav"));
    const ProcessResult result = runTvhost(arguments({"a.wav", "b.wav"}, "Gain"));
    EXPECT_EQ(result.status, 2);
    ASSERT_EQ(result.errorLines().size(), 1u);
    EXPECT_THAT(result.err, HasSubstr("would both be written to"));
    EXPECT_EQ(readFile(file("wet/a.wav")), "older");
}

TEST_F(RenderBatch, LeavesNothingHalfWrittenWhenStopped) {
    for (const char* name : {"a.wav", "b.wav"}) {
        writeSound(file(name), silence(2, 44100));
        writeFile(file(std::string("wet/") + name), "older");
    }
    // An hour of silence takes its time.
    Process process = startTvhost(
        arguments({"a.wav", "b.wav"}, "Gain", {"--tail", "3600", "--block", "1", "--jobs", "2"}));
    usleep(300000);
    kill(process.id(), SIGINT);
    EXPECT_EQ(process.wait().signal, SIGINT);
    usleep(300000);
    EXPECT_THAT(written(), UnorderedElementsAre("a.wav", "b.wav"));
    EXPECT_EQ(readFile(file("wet/a.wav")), "older");
    EXPECT_EQ(readFile(file("wet/b.wav")), "older");
}
