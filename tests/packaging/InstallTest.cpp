// The script that puts the Linux bundle where hosts look for it.
#include "tests/packaging/PackagingRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

const std::string kLinuxBundle = TVDELAY_BUILD_FOLDER "/TvDelay.vst";

} // namespace

TEST(Install, PutsTheBundleIntoTheHomeFolder) {
    TemporaryFolder home;
    const ProcessResult result = runPackaging("install.sh", {kLinuxBundle}, home.path());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, home.file(".vst/TvDelay.vst") + "\n");
    const std::string inBundle = "TvDelay.vst/Contents/x86_64-linux/TvDelay.so";
    EXPECT_TRUE(readFile(home.file(".vst/" + inBundle)) ==
                readFile(kLinuxBundle + "/Contents/x86_64-linux/TvDelay.so"));
}

TEST(Install, ReplacesAnOlderBundleAsAWhole) {
    TemporaryFolder home;
    const fs::path bundle = home.path() / ".vst/TvDelay.vst";
    fs::create_directories(bundle / "Contents/Resources");
    writeFile(bundle / "Contents/Resources/old.png", "");
    ASSERT_EQ(runPackaging("install.sh", {kLinuxBundle}, home.path()).status, 0);
    EXPECT_FALSE(fs::exists(bundle / "Contents/Resources/old.png"));
    EXPECT_TRUE(fs::exists(bundle / "Contents/Resources/switchon.png"));
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(home.path() / ".vst")) {
        left.push_back(entry.path().filename());
    }
    EXPECT_THAT(left, testing::ElementsAre("TvDelay.vst"));
}

TEST(Install, RefusesWhatIsNoBundle) {
    TemporaryFolder home;
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {}, {home.path()}, {kLinuxBundle, home.path(), "more"}}) {
        const ProcessResult result = runPackaging("install.sh", arguments, home.path());
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_THAT(result.err, testing::StartsWith("install: "));
    }
    EXPECT_THAT(home.entries(), testing::IsEmpty());
}
