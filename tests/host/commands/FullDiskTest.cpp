// A disk with room for a part of a render only: a limit on a file's size stands for it, which fails
// a write at any byte as a full disk does.
#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using testing::HasSubstr;

namespace {

class FullDisk : public testing::TestWithParam<const char*> {
protected:
    FullDisk() { writeSound(folder.file("in.wav"), noise(2, 30000, 48000, 0.5f, 1)); }

    ProcessResult render(const std::string& name, long room = -1) const {
        Process::Options options;
        options.largestFile = room;
        return runTvhost({"render", folder.file("in.wav"), folder.file(name), "--plugin",
                          testPlugin("Gain"), "--tail", "0"},
                         options);
    }

    TemporaryFolder folder;
};

} // namespace

TEST_P(FullDisk, KeepsTheOlderFileAndSaysSo) {
    const std::string name = std::string("out.") + GetParam();
    ASSERT_EQ(render(name).status, 0);
    const std::string whole = readFile(folder.file(name));
    const long size = static_cast<long>(whole.size());
    for (const long room : {0L, 1L, 30L, 2000L, size / 3, size / 2, size - 9000, size - 4097,
                            size - 700, size - 20, size - 1}) {
        if (room < 0) {
            continue;
        }
        writeFile(folder.file(name), "older");
        const ProcessResult result = render(name, room);
        EXPECT_EQ(result.status, 2) << room << " of " << size;
        EXPECT_EQ(result.out, "") << room << " of " << size;
        ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
        EXPECT_THAT(result.err, HasSubstr("cannot be written: File too large; give a file in a "
                                          "folder with room for it"));
        EXPECT_EQ(readFile(folder.file(name)), "older") << room << " of " << size;
        EXPECT_EQ(folder.entries().size(), 2u);
    }
}

TEST_P(FullDisk, IsNoneWhenAllFits) {
    const std::string name = std::string("out.") + GetParam();
    ASSERT_EQ(render(name).status, 0);
    const long size = static_cast<long>(readFile(folder.file(name)).size());
    EXPECT_EQ(render(name, size + 1).status, 0);
    EXPECT_EQ(static_cast<long>(readFile(folder.file(name)).size()), size);
}

INSTANTIATE_TEST_SUITE_P(Formats, FullDisk,
                         testing::Values("wav", "aiff", "flac", "ogg", "opus", "mp3", "caf", "w64",
                                         "rf64", "au"),
                         [](const auto& test) { return std::string(test.param); });
