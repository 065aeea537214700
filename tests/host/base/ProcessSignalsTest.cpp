#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include <unistd.h>

using testing::HasSubstr;

namespace {

class ProcessSignals : public testing::TestWithParam<int> {
protected:
    ProcessSignals() {
        writeSound(folder.file("in.wav"), noise(2, 44100, 44100, 0.5f, 1));
        writeFile(folder.file("out.wav"), "older");
    }

    std::vector<std::string> arguments(const char* plugin) const {
        return {"render", folder.file("in.wav"), folder.file("out.wav"), "--plugin",
                testPlugin(plugin)};
    }

    void expectOnlyTheOlderFile() const {
        EXPECT_EQ(folder.entries(), (std::vector<std::string>{"in.wav", "out.wav"}));
        EXPECT_EQ(readFile(folder.file("out.wav")), "older");
    }

    TemporaryFolder folder;
};

} // namespace

TEST_P(ProcessSignals, RemovesUnfinishedOutputEvenWhileThePluginIsStuck) {
    const TemporaryFolder elsewhere;
    Process::Options options;
    options.environment = {"STUCK_SIGN=" + elsewhere.file("stuck")};
    Process run = startTvhost(arguments("Stuck"), options);
    while (elsewhere.entries().empty()) {
        usleep(1000);
    }
    kill(run.id(), GetParam());
    const ProcessResult result = run.wait();
    EXPECT_EQ(result.signal, GetParam());
    EXPECT_EQ(result.out, "");
    expectOnlyTheOlderFile();
}

INSTANTIATE_TEST_SUITE_P(Signals, ProcessSignals,
                         testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGKILL));

TEST_F(ProcessSignals, RemovesUnfinishedOutputWhenThePluginCrashes) {
    const ProcessResult result = runTvhost(arguments("Crashing"));
    EXPECT_EQ(result.signal, SIGABRT);
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr("plug-in"));
    expectOnlyTheOlderFile();
}
