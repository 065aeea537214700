// The macOS archive of a release.
#include "tests/packaging/PackagingRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>

namespace {

namespace fs = std::filesystem;

const std::string kBundle = TVDELAY_MACOS_BUNDLE;
const std::string kCheck = fs::path(kBundle).parent_path() / "mac-check/mac-check";

std::string archiveName() {
    return "TvDelay-" + packagedVersion() + "-macos-x86_64";
}

void package(const std::string& bundle, const std::string& folder) {
    const ProcessResult result = runPackaging("macos.sh", {bundle, kCheck, folder});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, folder + "/" + archiveName() + ".zip\n");
}

// The archive of the built bundle, made once.
class MacosArchive : public testing::Test {
protected:
    // Not ahead of the suite, where a failure would count as tests that are skipped.
    void SetUp() override {
        if (!folder()) {
            folder() = std::make_unique<TemporaryFolder>();
            package(kBundle, folder()->path());
        }
    }
    static void TearDownTestSuite() { folder().reset(); }

    static std::unique_ptr<TemporaryFolder>& folder() {
        static std::unique_ptr<TemporaryFolder> folder;
        return folder;
    }
    static std::string archive() { return folder()->file(archiveName() + ".zip"); }
    static std::string page() { return filesIn(archive(), archiveName()).at("README.txt").content; }
};

// The indented lines under a heading, up to the next text.
std::vector<std::string> commandsUnder(const std::string& heading, const std::string& page) {
    std::istringstream lines(page.substr(page.find("\n" + heading + "\n")));
    const std::string indent = "    ";
    std::vector<std::string> commands;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(indent, 0) == 0) {
            commands.push_back(line.substr(indent.size()));
        } else if (!commands.empty()) {
            break;
        }
    }
    return commands;
}

} // namespace

TEST_F(MacosArchive, HoldsTheBundleTheCheckAndItsTexts) {
    const auto files = filesIn(archive(), archiveName());
    expectTheBundle(files, kBundle, "Contents/MacOS/TvDelay");
    ASSERT_EQ(files.count("mac-check"), 1u);
    EXPECT_TRUE(files.at("mac-check").content == readFile(kCheck));
    EXPECT_EQ(files.at("mac-check").permissions, 0755u);
    EXPECT_EQ(page(), readFile(TVDELAY_SOURCE_FOLDER "/packaging/README.macos"));
    EXPECT_EQ(files.at("LICENSE").content, readFile(TVDELAY_SOURCE_FOLDER "/LICENSE"));
}

TEST_F(MacosArchive, HasAPageThatStandsAlone) {
    for (const char* const elsewhere : {"](", "./dev", "docs/", "http", ".md"}) {
        EXPECT_THAT(page(), testing::Not(testing::HasSubstr(elsewhere)));
    }
    for (const char* const needed :
         {"com.apple.quarantine", "notarised", "Rosetta", "./mac-check", "When it does not load"}) {
        EXPECT_THAT(page(), testing::HasSubstr(needed));
    }
}

// But for the mark of a download, which only a Mac knows.
TEST_F(MacosArchive, ReplacesAnOlderBundleAsItsPageSays) {
    const TemporaryFolder folder;
    for (const auto& [name, entry] : filesIn(archive(), archiveName())) {
        const fs::path file = folder.path() / "unpacked" / name;
        fs::create_directories(file.parent_path());
        writeFile(file, entry.content);
    }
    const fs::path installed = folder.path() / "home/Library/Audio/Plug-Ins/VST/TvDelay.vst";
    fs::create_directories(installed / "Contents/Resources");
    writeFile(installed / "Contents/Resources/old.png", "");
    Process::Options options;
    options.environment = {"HOME=" + folder.file("home")};
    options.folder = folder.file("unpacked");
    const std::vector<std::string> commands = commandsUnder("Installing", page());
    ASSERT_EQ(commands.size(), 4u);
    EXPECT_EQ(commands[0], "xattr -dr com.apple.quarantine .");
    for (std::size_t i = 1; i < commands.size(); ++i) {
        const ProcessResult result = runShell(commands[i], options);
        EXPECT_EQ(result.status, 0) << result.err;
    }
    EXPECT_FALSE(fs::exists(installed / "Contents/Resources/old.png"));
    EXPECT_TRUE(readFile(installed / "Contents/MacOS/TvDelay") ==
                readFile(kBundle + "/Contents/MacOS/TvDelay"));
}

TEST_F(MacosArchive, TellsNothingOfWhoPackedItAndWhen) {
    expectNothingOfWhoPackedIt(archive());
}

TEST_F(MacosArchive, HasTheSameBytesForTheSameBundle) {
    const TemporaryFolder other;
    copyAsAnotherWould(kBundle, other.path() / "macos.vst");
    package(other.file("macos.vst"), other.file("dist"));
    EXPECT_TRUE(readFile(other.file("dist/" + archiveName() + ".zip")) == readFile(archive()));
}

TEST_F(MacosArchive, RefusesWhatIsNotABundle) {
    const TemporaryFolder dist;
    expectPackagingRefusal("macos.sh", {});
    expectPackagingRefusal("macos.sh", {kBundle, kCheck});
    expectPackagingRefusal("macos.sh", {dist.file("none"), kCheck, dist.path()});
    expectPackagingRefusal("macos.sh", {kBundle, dist.file("none"), dist.path()});
    expectPackagingRefusal("macos.sh", {kBundle, kBundle + "/Contents/PkgInfo", dist.path()});
    expectPackagingRefusal("macos.sh", {kBundle, kCheck, archive() + "/below-a-file"});
    EXPECT_THAT(dist.entries(), testing::IsEmpty());
}
