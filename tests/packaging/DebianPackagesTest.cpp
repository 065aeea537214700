// The Debian packages of a release. packaging/try-packages.sh installs them into a fresh system.
#include "tests/packaging/PackagingRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

const std::string kBuild = TVDELAY_BUILD_FOLDER;

// The packages of what is built, made once.
class DebianPackages : public testing::Test {
protected:
    // Not ahead of the suite, where a failure would count as tests that are skipped.
    void SetUp() override {
        if (folder()) {
            return;
        }
        auto packed = std::make_unique<TemporaryFolder>();
        const ProcessResult result = runPackaging("debian.sh", {kBuild, packed->path()});
        ASSERT_EQ(result.status, 0) << result.err;
        folder() = std::move(packed);
    }
    static void TearDownTestSuite() { folder().reset(); }

    static std::unique_ptr<TemporaryFolder>& folder() {
        static std::unique_ptr<TemporaryFolder> folder;
        return folder;
    }

    // By the beginning of its file name.
    static std::string package(const std::string& start) {
        for (const std::string& entry : folder()->entries()) {
            if (entry.rfind(start, 0) == 0) {
                return folder()->file(entry);
            }
        }
        throw std::runtime_error("no package " + start);
    }

    static std::string contents(const std::string& start) {
        return runProcess("dpkg-deb", {"-c", package(start)}).out;
    }

    static std::string field(const std::string& start, const std::string& name) {
        return runProcess("dpkg-deb", {"-f", package(start), name}).out;
    }
};

} // namespace

TEST_F(DebianPackages, PutThePluginAndTheHostInPlace) {
    const std::string files = contents("tvdelay_");
    EXPECT_THAT(files, testing::HasSubstr("./usr/bin/tvhost\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/lib/tvhost/tvhost-watch.so\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/share/man/man1/tvhost.1.gz\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/share/bash-completion/completions/tvhost\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/share/fish/vendor_completions.d/tvhost.fish\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/share/zsh/vendor-completions/_tvhost\n"));
    EXPECT_THAT(files,
                testing::HasSubstr("./usr/lib/vst/TvDelay.vst/Contents/x86_64-linux/TvDelay.so\n"));
    EXPECT_THAT(files,
                testing::HasSubstr("./usr/lib/vst/TvDelay.vst/Contents/Resources/switchon.png\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/share/doc/tvdelay/copyright\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/share/doc/tvdelay/docs/tvhost.md\n"));
    EXPECT_THAT(files, testing::Not(testing::HasSubstr("/include/")));
}

TEST_F(DebianPackages, PutTheLibraryInPlace) {
    const std::string files = contents("tvdelay-soundlib-dev_");
    EXPECT_THAT(files, testing::HasSubstr("./usr/include/tvdelay/soundlib/WavPlayer.h\n"));
    EXPECT_THAT(files, testing::HasSubstr("./usr/lib/libtvdelay_soundlib.a\n"));
    EXPECT_THAT(files,
                testing::HasSubstr(
                    "./usr/lib/cmake/TvDelaySoundLibrary/TvDelaySoundLibraryConfig.cmake\n"));
    EXPECT_THAT(field("tvdelay-soundlib-dev_", "Depends"),
                testing::HasSubstr("libblocksruntime-dev"));
}

TEST_F(DebianPackages, AskForTheBackEndThatShowsTheEditor) {
    EXPECT_THAT(field("tvdelay_", "Depends"),
                testing::ContainsRegex("gnustep-back0[.][0-9]+-cairo"));
}

TEST_F(DebianPackages, TellTheVersionAndTheSystem) {
    for (const char* const start : {"tvdelay_", "tvdelay-soundlib-dev_"}) {
        EXPECT_THAT(field(start, "Version"),
                    testing::MatchesRegex(packagedVersion() + "[+]deb[0-9]+\n"));
    }
}

TEST_F(DebianPackages, HaveTheSameBytesForTheSameBuild) {
    const TemporaryFolder other;
    std::this_thread::sleep_for(std::chrono::seconds(1)); // whose time must not show
    ASSERT_EQ(runPackaging("debian.sh", {kBuild, other.path()}).status, 0);
    EXPECT_EQ(other.entries(), folder()->entries());
    for (const std::string& entry : folder()->entries()) {
        EXPECT_TRUE(readFile(other.file(entry)) == readFile(folder()->file(entry))) << entry;
    }
}

TEST_F(DebianPackages, TellNothingOfWhoPackedThem) {
    const TemporaryFolder unpacked;
    for (const char* const start : {"tvdelay_", "tvdelay-soundlib-dev_"}) {
        runProcess("dpkg-deb", {"-R", package(start), unpacked.file(start)});
    }
    const std::string builder = TVDELAY_SOURCE_FOLDER;
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(unpacked.path())) {
        if (entry.is_regular_file()) {
            EXPECT_EQ(readFile(entry.path()).find(builder), std::string::npos) << entry.path();
            ++files;
        }
    }
    EXPECT_GT(files, 100);
}

TEST_F(DebianPackages, GiveNoCauseForComplaint) {
    const ProcessResult result =
        runProcess("lintian", {"--fail-on", "error,warning", "--allow-root", package("tvdelay_"),
                               package("tvdelay-soundlib-dev_")});
    EXPECT_EQ(result.status, 0) << result.out << result.err;
}

TEST_F(DebianPackages, AreRefusedForWhatIsNotABuild) {
    const TemporaryFolder dist;
    expectPackagingRefusal("debian.sh", {});
    expectPackagingRefusal("debian.sh", {kBuild});
    expectPackagingRefusal("debian.sh", {dist.path(), dist.path()});
    expectPackagingRefusal("try-packages.sh", {});
    expectPackagingRefusal("try-packages.sh", {dist.path()});
    EXPECT_THAT(dist.entries(), testing::IsEmpty());
}
