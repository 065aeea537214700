// The macOS archive of a release.
#include "tests/packaging/PackagingRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

const std::string kBundle = TVDELAY_MACOS_BUNDLE;

std::string archiveName() {
    return "TvDelay-" + packagedVersion() + "-macos-x86_64";
}

void package(const std::string& bundle, const std::string& folder) {
    const ProcessResult result = runPackaging("macos.sh", {bundle, folder});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, folder + "/" + archiveName() + ".zip\n");
}

// The archive of the built bundle, made once.
class MacosArchive : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder() = std::make_unique<TemporaryFolder>();
        package(kBundle, folder()->path());
    }
    static void TearDownTestSuite() { folder().reset(); }

    static std::unique_ptr<TemporaryFolder>& folder() {
        static std::unique_ptr<TemporaryFolder> folder;
        return folder;
    }
    static std::string archive() { return folder()->file(archiveName() + ".zip"); }
};

} // namespace

TEST_F(MacosArchive, HoldsTheBundleItsTextsAndAnInstallLine) {
    const auto files = filesIn(archive(), archiveName());
    expectTheBundle(files, kBundle, "Contents/MacOS/TvDelay");
    for (const char* const name : {"README.md", "LICENSE"}) {
        ASSERT_EQ(files.count(name), 1u) << name;
        EXPECT_EQ(files.at(name).content,
                  readFile(std::string(TVDELAY_SOURCE_FOLDER) + "/" + name));
    }
    EXPECT_EQ(files.at("INSTALL").content, "mkdir -p ~/Library/Audio/Plug-Ins/VST && "
                                           "cp -R TvDelay.vst ~/Library/Audio/Plug-Ins/VST/\n");
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
    expectPackagingRefusal("macos.sh", {kBundle});
    expectPackagingRefusal("macos.sh", {dist.file("none"), dist.path()});
    expectPackagingRefusal("macos.sh", {kBundle, archive() + "/below-a-file"});
    EXPECT_THAT(dist.entries(), testing::IsEmpty());
}
