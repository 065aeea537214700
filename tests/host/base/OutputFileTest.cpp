#include "host/base/OutputFile.h"

#include "host/base/UserError.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace tvhost;

namespace {

void put(const OutputFile& file, const std::string& text) {
    ASSERT_EQ(write(file.descriptor(), text.data(), text.size()),
              static_cast<ssize_t>(text.size()));
}

mode_t permissionsOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

} // namespace

TEST(OutputFile, AppearsWhenItIsCommitted) {
    TemporaryFolder folder;
    OutputFile file(folder.file("out.wav"));
    put(file, "sound");
    EXPECT_TRUE(folder.entries().empty()) << "kill -9 would leave it behind";
    file.commit();
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"out.wav"});
    EXPECT_EQ(readFile(folder.file("out.wav")), "sound");
}

TEST(OutputFile, LeavesNothingWithoutACommit) {
    TemporaryFolder folder;
    writeFile(folder.file("out.wav"), "older");
    {
        OutputFile file(folder.file("out.wav"));
        put(file, "half");
        EXPECT_EQ(readFile(folder.file("out.wav")), "older");
    }
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"out.wav"});
    EXPECT_EQ(readFile(folder.file("out.wav")), "older");
}

TEST(OutputFile, GoesWhenASignalHandlerSaysSo) {
    TemporaryFolder folder;
    OutputFile file(folder.file("out.wav"), OutputFile::Until::kTemporary);
    EXPECT_EQ(folder.entries().size(), 1u);
    removeUnfinishedOutput();
    EXPECT_TRUE(folder.entries().empty());
    removeUnfinishedOutput();
}

TEST(OutputFile, DoesWithATemporaryFileWhereItMust) {
    TemporaryFolder folder;
    writeFile(folder.file("out.wav"), "older");
    {
        OutputFile file(folder.file("out.wav"), OutputFile::Until::kTemporary);
        put(file, "half");
        EXPECT_EQ(readFile(folder.file("out.wav")), "older");
        EXPECT_EQ(folder.entries().size(), 2u);
    }
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"out.wav"});
    OutputFile file(folder.file("out.wav"), OutputFile::Until::kTemporary);
    put(file, "newer");
    file.commit();
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"out.wav"});
    EXPECT_EQ(readFile(folder.file("out.wav")), "newer");
}

TEST(OutputFile, ReplacesAnOlderFile) {
    TemporaryFolder folder;
    writeFile(folder.file("out.wav"), "older");
    OutputFile file(folder.file("out.wav"));
    put(file, "newer");
    file.commit();
    EXPECT_TRUE(outputWasWritten());
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"out.wav"});
    EXPECT_EQ(readFile(folder.file("out.wav")), "newer");
}

TEST(OutputFile, StaysOnceItIsCommitted) {
    TemporaryFolder folder;
    OutputFile file(folder.file("out.wav"));
    file.commit();
    removeUnfinishedOutput();
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"out.wav"});
}

TEST(OutputFile, GetsThePermissionsOfAnyNewFileOrOfTheOlderOne) {
    TemporaryFolder folder;
    const mode_t mask = umask(027);
    OutputFile(folder.file("new")).commit();
    umask(mask);
    EXPECT_EQ(permissionsOf(folder.file("new")), 0640u);

    writeFile(folder.file("older"), "");
    chmod(folder.file("older").c_str(), 0604);
    OutputFile(folder.file("older")).commit();
    EXPECT_EQ(permissionsOf(folder.file("older")), 0604u);
}

TEST(OutputFile, ReplacesTheFileBehindALink) {
    TemporaryFolder folder;
    fs::create_directory(folder.path() / "elsewhere");
    writeFile(folder.file("elsewhere/real"), "older");
    fs::create_symlink("elsewhere/real", folder.path() / "link");
    OutputFile file(folder.file("link"));
    put(file, "newer");
    file.commit();
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link"));
    EXPECT_EQ(readFile(folder.file("elsewhere/real")), "newer");
}

TEST(OutputFile, RefusesTargetsThatCannotBeWritten) {
    TemporaryFolder folder;
    EXPECT_THROW(OutputFile(folder.file("no/such/folder/out")), UserError);
    EXPECT_THROW(OutputFile(folder.path().string()), UserError);
    EXPECT_THROW(OutputFile("/dev/null"), UserError);
    EXPECT_THROW(OutputFile(folder.file(std::string(300, 'n'))), UserError);
    fs::create_symlink("nowhere/at/all", folder.path() / "dangling");
    EXPECT_THROW(OutputFile(folder.file("dangling")), UserError);
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"dangling"});
    writeFile(folder.file("plain"), "");
    EXPECT_THROW(OutputFile(folder.file("plain/out")), UserError);
}

TEST(OutputFile, TakesTheLongestNameTheSystemAllows) {
    TemporaryFolder folder;
    const std::string name(255, 'n');
    OutputFile(folder.file(name)).commit();
    EXPECT_EQ(folder.entries(), std::vector<std::string>{name});
}
