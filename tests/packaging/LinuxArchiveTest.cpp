// The Linux archive of a release.
#include "tests/packaging/PackagingRun.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/TemporaryFolder.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <regex>

namespace {

namespace fs = std::filesystem;

const std::string kBuild = TVDELAY_BUILD_FOLDER;
const std::string kExecutable = "Contents/x86_64-linux/TvDelay.so";

// The archive of what is built, made once and unpacked.
class LinuxArchive : public testing::Test {
protected:
    // Not ahead of the suite, where a failure would count as tests that are skipped.
    void SetUp() override {
        if (folder()) {
            return;
        }
        auto packed = std::make_unique<TemporaryFolder>();
        const ProcessResult result = runPackaging("linux.sh", {kBuild, packed->path()});
        ASSERT_EQ(result.status, 0) << result.err;
        folder() = std::move(packed);
        const ProcessResult unpacked =
            runProcess("tar", {"xf", archive(), "-C", folder()->path().string()});
        ASSERT_EQ(unpacked.status, 0) << unpacked.err;
    }
    static void TearDownTestSuite() { folder().reset(); }

    static std::unique_ptr<TemporaryFolder>& folder() {
        static std::unique_ptr<TemporaryFolder> folder;
        return folder;
    }

    static std::string name() {
        const std::string file = fs::path(archive()).filename();
        return file.substr(0, file.size() - std::string(".tar.gz").size());
    }

    static std::string archive() {
        for (const std::string& entry : folder()->entries()) {
            if (entry.find(".tar.gz") != std::string::npos) {
                return folder()->file(entry);
            }
        }
        throw std::runtime_error("no archive");
    }

    static std::string unpacked(const std::string& file) {
        return folder()->file(name() + "/" + file);
    }
};

} // namespace

TEST_F(LinuxArchive, IsNamedAfterVersionAndSystem) {
    EXPECT_THAT(name(),
                testing::MatchesRegex("TvDelay-" + packagedVersion() + "-[a-z]+[0-9.]*-x86_64"));
}

TEST_F(LinuxArchive, HoldsTheBundleTheHostAndTheirTexts) {
    const auto files = filesIn(archive(), name());
    expectTheBundle(files, kBuild + "/TvDelay.vst", kExecutable, kExecutable);
    EXPECT_EQ(files.at("tvhost").permissions, 0755u);
    EXPECT_EQ(files.at("LICENSE").content, readFile(TVDELAY_SOURCE_FOLDER "/LICENSE"));
    EXPECT_EQ(files.count("README"), 1u);
}

TEST_F(LinuxArchive, TellsNothingOfWhoPackedItAndWhen) {
    expectNothingOfWhoPackedIt(archive());
}

TEST_F(LinuxArchive, HasTheSameBytesForTheSameBuild) {
    const TemporaryFolder other;
    ASSERT_EQ(runPackaging("linux.sh", {kBuild, other.path()}).status, 0);
    EXPECT_TRUE(readFile(other.file(name() + ".tar.gz")) == readFile(archive()));
}

TEST_F(LinuxArchive, HoldsABundleThatLoads) {
    const LoadedPlugin plugin(unpacked("TvDelay.vst/" + kExecutable));
    AEffect* const effect = plugin.entry()(plainHost);
    ASSERT_NE(effect, nullptr);
    EXPECT_EQ(effect->uniqueID, packFourCharacters('T', 'v', 'D', 'y'));
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

TEST_F(LinuxArchive, HoldsAHostThatFindsTheBundleBesideIt) {
    Process::Options options;
    options.environment = {"HOME=/nonexistent"};
    const ProcessResult result = runProcess(unpacked("tvhost"), {"info"}, options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, testing::HasSubstr("Tarnvale"));
}

// That which counts calls has to come along.
TEST_F(LinuxArchive, HoldsAHostThatChecksWhatABlockDoes) {
    Process::Options options;
    options.environment = {"HOME=/nonexistent"};
    const ProcessResult result =
        runProcess(unpacked("tvhost"), {"check", "--only", "no-lock-in-block"}, options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, testing::HasSubstr("1 check: 1 passed"));
}

TEST_F(LinuxArchive, TellsThePackagesThatItNeeds) {
    const std::string page = readFile(unpacked("README"));
    EXPECT_EQ(page.find('@'), std::string::npos);
    for (const char* const package : {"libstdc++6", "libx11-6", "libsndfile1"}) {
        EXPECT_THAT(page, testing::HasSubstr(package));
    }
    EXPECT_THAT(page, testing::ContainsRegex("libgnustep-gui0[.][0-9]+ "));
    EXPECT_THAT(page, testing::ContainsRegex("gnustep-back0[.][0-9]+-cairo"));
}

TEST_F(LinuxArchive, InstallsByTheLinesOfItsPage) {
    const TemporaryFolder home;
    fs::create_directories(home.path() / ".vst/TvDelay.vst/Contents/Resources");
    writeFile(home.file(".vst/TvDelay.vst/Contents/Resources/old.png"), "");
    const std::string page = readFile(unpacked("README"));
    const std::size_t start = page.find("    mkdir -p");
    ASSERT_NE(start, std::string::npos);
    Process::Options options;
    options.environment = {"HOME=" + home.path().string()};
    options.folder = folder()->file(name());
    const ProcessResult result =
        runShell("set -e\n" + page.substr(start, page.find("\n\n", start) - start), options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_FALSE(fs::exists(home.path() / ".vst/TvDelay.vst/Contents/Resources/old.png"));
    EXPECT_TRUE(fs::exists(home.path() / ".vst/TvDelay.vst" / kExecutable));
}

TEST_F(LinuxArchive, RefusesWhatIsNotABuild) {
    const TemporaryFolder dist;
    expectPackagingRefusal("linux.sh", {});
    expectPackagingRefusal("linux.sh", {kBuild});
    expectPackagingRefusal("linux.sh", {dist.path(), dist.path()});
    expectPackagingRefusal("linux.sh", {kBuild, archive() + "/below-a-file"});
    EXPECT_THAT(dist.entries(), testing::IsEmpty());
}
