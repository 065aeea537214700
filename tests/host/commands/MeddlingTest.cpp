// Plug-ins that do to the process what is their host's alone.
#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>

using testing::HasSubstr;
using testing::Not;

namespace {

class MeddlingPlugin : public testing::Test {
protected:
    MeddlingPlugin() { writeSound(folder.file("in.wav"), noise(2, 3000, 44100, 0.5f, 1)); }

    ProcessResult run(const std::string& deed, std::vector<std::string> arguments) const {
        Process::Options options;
        options.environment = {"MEDDLE=" + deed};
        options.folder = folder.path().string();
        arguments.insert(arguments.end(), {"--plugin", testPlugin("Meddling")});
        return runTvhost(arguments, options);
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(MeddlingPlugin, ThatPrintsLeavesStandardOutputToTheAnswer) {
    Process::Options options;
    options.environment = {"MEDDLE=print"};
    const ProcessResult result = runTvhost({"info", "--json", testPlugin("Meddling")}, options);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(nlohmann::json::parse(result.out).at("effectName"), "Meddling");
    EXPECT_EQ(result.err, "loaded, enjoy\n");
}

TEST_F(MeddlingPlugin, ThatChangesTheFolderChangesNoNames) {
    const ProcessResult result = run("folder", {"render", "in.wav", "out.wav"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(readSound(folder.file("out.wav")).frames(), 3000u);
}

TEST_F(MeddlingPlugin, ThatEndsTheProgramIsAFailure) {
    writeFile(folder.file("out.wav"), "older");
    const ProcessResult result = run("exit", {"render", "in.wav", "out.wav"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "tvhost: the plug-in ended the program; nothing was written; give one "
                          "that leaves that to its host\n");
    EXPECT_EQ(readFile(folder.file("out.wav")), "older");
    EXPECT_EQ(folder.entries().size(), 2u);
}

TEST_F(MeddlingPlugin, ThatCrashesAsItIsClosedDoesNotUnsayWhatWasWritten) {
    const ProcessResult result = run("crash", {"render", "in.wav", "out.wav"});
    EXPECT_EQ(result.signal, SIGABRT);
    EXPECT_THAT(result.out, HasSubstr("out.wav: 0.068 s"));
    EXPECT_THAT(result.err, HasSubstr("after the output was written"));
    EXPECT_THAT(result.err, Not(HasSubstr("nothing was written")));
    EXPECT_EQ(readSound(folder.file("out.wav")).frames(), 3000u);
}
