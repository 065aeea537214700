#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

TEST(CallLog, HasEveryCallBothWaysAndChangesNothing) {
    TemporaryFolder folder;
    writeSound(folder.file("in.wav"), noise(2, 1000, 44100, 0.5f, 1));
    const std::vector<std::string> render = {
        "render", folder.file("in.wav"), folder.file("out.wav"), "--set", "MIX=0.25", "--tail",
        "0"};
    EXPECT_EQ(runTvhost(render).status, 0);
    const std::string plain = readFile(folder.file("out.wav"));
    std::vector<std::string> logged = render;
    logged.insert(logged.end(), {"--log", folder.file("calls")});
    const ProcessResult result = runTvhost(logged);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(readFile(folder.file("out.wav")), plain);

    const std::string log = readFile(folder.file("calls"));
    std::size_t at = 0;
    for (const char* line :
         {"host    VSTPluginMain\n", "plugin  audioMasterVersion index 0 value 0 opt 0\n",
          "plugin  audioMasterVersion = 2400\n", "host    VSTPluginMain gave an effect\n",
          "host    effOpen index 0 value 0 opt 0\n", "host    effOpen = 0\n",
          "host    effSetSampleRate index 0 value 0 opt 44100\n",
          "host    setParameter index 8 value 0.25\n", "host    processReplacing frames 512\n",
          "host    processReplacing took ", "host    effClose index 0 value 0 opt 0\n"}) {
        const std::size_t found = log.find(line, at);
        ASSERT_NE(found, std::string::npos) << line << "after\n" << log.substr(0, at);
        at = found;
    }
}

TEST(CallLog, TellsWhatThePluginSays) {
    TemporaryFolder folder;
    writeSound(folder.file("in.wav"), noise(2, 100, 44100, 0.5f, 1));
    EXPECT_EQ(runTvhost({"render", folder.file("in.wav"), folder.file("out.wav"), "--plugin",
                         testPlugin("Rude"), "--set", "2=0.5", "--log", folder.file("calls")})
                  .status,
              0);
    const std::string log = readFile(folder.file("calls"));
    EXPECT_THAT(log, HasSubstr("effGetParamName = 1 \"Twin\"\n"));
    EXPECT_THAT(log, HasSubstr("effGetParamName = 1 \"" + std::string(256, 'n') + "\"\n"));
}

TEST(CallLog, IsThereWhenThePluginCrashes) {
    TemporaryFolder folder;
    writeSound(folder.file("in.wav"), noise(2, 2000, 44100, 0.5f, 1));
    const ProcessResult result =
        runTvhost({"render", folder.file("in.wav"), folder.file("out.wav"), "--plugin",
                   testPlugin("Crashing"), "--log", folder.file("calls")});
    EXPECT_NE(result.status, 0);
    EXPECT_THAT(readFile(folder.file("calls")), testing::EndsWith("processReplacing frames 512\n"));
}
