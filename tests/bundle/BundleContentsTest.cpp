// What else is in the macOS bundle: its metadata and its pictures.
#include "editor/BundleIdentifier.h"
#include "tests/bundle/MacBundle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

class InfoPlist : public testing::Test {
protected:
    InfoPlist() {
        const std::string text = contentOf(macBundle() + "/Contents/Info.plist");
        plist_from_xml(text.data(), static_cast<std::uint32_t>(text.size()), &root_);
    }
    ~InfoPlist() override { plist_free(root_); }

    void SetUp() override { ASSERT_EQ(plist_get_node_type(root_), PLIST_DICT); }

    // Empty when there is no such text.
    std::string text(const char* key) const {
        char* value = nullptr;
        plist_get_string_val(plist_dict_get_item(root_, key), &value);
        const std::string copy = value == nullptr ? "" : value;
        std::free(value);
        return copy;
    }

    bool isTrue(const char* key) const {
        std::uint8_t value = 0;
        plist_get_bool_val(plist_dict_get_item(root_, key), &value);
        return value != 0;
    }

private:
    plist_t root_ = nullptr;
};

std::string version() {
    const std::string text = contentOf(std::string(TVDELAY_SOURCE_FOLDER) + "/VERSION");
    return text.substr(0, text.find('\n'));
}

std::set<std::string> picturesIn(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".png") {
            names.insert(entry.path().filename());
        }
    }
    return names;
}

std::set<std::string> expectedPictures() {
    std::set<std::string> names = {"bmp00130.png", "bmp00131.png",  "delaybackground.png",
                                   "loadback.png", "switchoff.png", "switchon.png"};
    for (int frame = 0; frame < 128; ++frame) {
        names.insert("fxknob" + std::to_string(frame) + ".png");
    }
    return names;
}

} // namespace

TEST_F(InfoPlist, NamesTheBundle) {
    EXPECT_EQ(text("CFBundleIdentifier"), "com.tarnvalemusic.TvDelay");
    EXPECT_EQ(text("CFBundleIdentifier"), kBundleIdentifier); // by which the code looks for it
    EXPECT_EQ(text("CFBundleName"), "TvDelay");
    EXPECT_EQ(text("CFBundleInfoDictionaryVersion"), "6.0");
}

TEST_F(InfoPlist, NamesAnExecutableThatIsThere) {
    EXPECT_EQ(text("CFBundleExecutable"), "TvDelay");
    const std::filesystem::path executable =
        macBundle() + "/Contents/MacOS/" + text("CFBundleExecutable");
    EXPECT_TRUE(std::filesystem::is_regular_file(executable));
    EXPECT_NE(std::filesystem::status(executable).permissions() &
                  std::filesystem::perms::owner_exec,
              std::filesystem::perms::none);
}

TEST_F(InfoPlist, TellsTheVersion) {
    ASSERT_THAT(version(), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_EQ(text("CFBundleShortVersionString"), version());
    EXPECT_EQ(text("CFBundleVersion"), version());
}

TEST_F(InfoPlist, AsksForMacOs109) {
    EXPECT_EQ(text("LSMinimumSystemVersion"), macBundleCode().deploymentTarget());
}

TEST_F(InfoPlist, TakesFullResolution) {
    EXPECT_TRUE(isTrue("NSHighResolutionCapable"));
}

TEST_F(InfoPlist, AgreesWithPkgInfo) {
    EXPECT_EQ(text("CFBundlePackageType"), "BNDL");
    EXPECT_EQ(text("CFBundleSignature"), "TvDy");
    EXPECT_EQ(contentOf(macBundle() + "/Contents/PkgInfo"),
              text("CFBundlePackageType") + text("CFBundleSignature"));
}

TEST(BundleContents, HasEveryPictureAndNothingElse) {
    EXPECT_EQ(picturesIn(macBundle() + "/Contents/Resources"), expectedPictures());
}

TEST(BundleContents, HasThePicturesAsTheyAre) {
    const std::string sources = std::string(TVDELAY_SOURCE_FOLDER) + "/resources/";
    for (const std::string& name : expectedPictures()) {
        EXPECT_TRUE(contentOf(macBundle() + "/Contents/Resources/" + name) ==
                    contentOf(sources + name))
            << name;
    }
}
