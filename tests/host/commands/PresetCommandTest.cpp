#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::HasSubstr;

namespace {

class PresetCommand : public testing::Test {
protected:
    PresetCommand() { writeSound(input, noise(2, 3000, 44100, 0.5f, 7)); }

    static void run(const std::vector<std::string>& arguments) {
        const ProcessResult result = runTvhost(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
    }
    static std::string show(const std::vector<std::string>& more) {
        std::vector<std::string> arguments = {"preset", "show"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ProcessResult result = runTvhost(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }
    std::string render(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = {"render", input, folder.file("out.wav")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        run(arguments);
        return readFile(folder.file("out.wav"));
    }

    const TemporaryFolder folder;
    const std::string input = folder.file("in.wav");
    const std::string program = folder.file("kept.fxp");
    const std::string bank = folder.file("kept.fxb");
};

} // namespace

TEST_F(PresetCommand, KeepsTheSoundOfAProgramAndItsChanges) {
    const std::vector<std::string> settings = {"--program", "Canyon",        "--set",
                                               "MIX=0.4",   "--set",         "highPass=0.7",
                                               "--set",     "lowPass Type=0"};
    std::vector<std::string> save = {"preset", "save", program};
    save.insert(save.end(), settings.begin(), settings.end());
    run(save);
    EXPECT_EQ(render({"--preset", program}), render(settings));
    EXPECT_NE(render({"--preset", program}), render({"--program", "Canyon"}));
}

TEST_F(PresetCommand, KeepsEveryProgramOfTvDelay) {
    run({"preset", "save", bank});
    const json kept = json::parse(show({bank, "--json"}));
    ASSERT_EQ(kept.at("programs").size(), 26u);
    EXPECT_EQ(kept.at("programs")[25].at("name"), "Punk");
    for (const char* number : {"0", "7", "25"}) {
        SCOPED_TRACE(number);
        run({"preset", "save", bank, "--program", number});
        EXPECT_EQ(render({"--preset", bank}), render({"--program", number}));
    }
}

TEST_F(PresetCommand, IsLoadedAfterTheProgramAndBeforeTheSets) {
    run({"preset", "save", program, "--plugin", testPlugin("Gain"), "--set", "Gain=0.5"});
    const auto gain = testPlugin("Gain");
    EXPECT_EQ(render({"--plugin", gain, "--program", "808", "--preset", program}),
              render({"--plugin", gain, "--set", "Gain=0.5"}));
    EXPECT_EQ(render({"--plugin", gain, "--set", "Gain=0.75", "--preset", program}),
              render({"--plugin", gain, "--set", "Gain=0.75"}));
}

TEST_F(PresetCommand, ShowsWhatAFileHolds) {
    run({"preset", "save", program, "--plugin", testPlugin("Gain"), "--set", "Gain=0.5"});
    EXPECT_EQ(show({program}), "-\n"
                               "  holds    program of 2 parameters\n"
                               "  plug-in  Tst1, record 7\n"
                               "\n"
                               "Parameters (2)\n"
                               "  #     value\n"
                               "  0  0.500000\n"
                               "  1  0.000000\n");
    EXPECT_THAT(show({program, "--plugin", testPlugin("Gain")}),
                HasSubstr("  0  Gain        0.500000     0.50  times\n"));
    const json told = json::parse(show({program, "--json"}));
    EXPECT_EQ(told.at("kind"), "program");
    EXPECT_EQ(told.at("uniqueId"), "Tst1");
    EXPECT_EQ(told.at("programs")[0].at("parameters")[0].at("value"), 0.5);
}

TEST_F(PresetCommand, ShowsABankAndAChunk) {
    run({"preset", "save", bank, "--program", "3"});
    EXPECT_THAT(show({bank}), testing::StartsWith("  holds     bank of 26 programs\n"
                                                  "  plug-in   TvDy, record 1\n"
                                                  "  selected  3\n"
                                                  "\n"
                                                  "Programs (26)\n"
                                                  "   0  SlapBack\n"));
    run({"preset", "save", program, "--plugin", testPlugin("Chunky")});
    EXPECT_EQ(show({program}), "Number 0\n"
                               "  holds    program, a chunk of 4 bytes\n"
                               "  plug-in  Chnk, record 7\n");
}
