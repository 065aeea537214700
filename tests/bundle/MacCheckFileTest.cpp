// The program that checks the bundle on Macs, as a file.
#include "tests/bundle/AppKitSelectors.h"
#include "tests/bundle/MacBundle.h"
#include "tests/bundle/ObjcMetadata.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

namespace {

constexpr std::uint32_t kIntel64 = 0x01000007;
constexpr std::uint32_t kProgram = 2;
constexpr std::uint32_t kTwoLevelNamespace = 0x80;
constexpr std::uint32_t kMayLieAnywhere = 0x200000;
constexpr std::uint32_t kWritableAndExecutable = 2 | 4;

} // namespace

TEST(MacCheckFile, IsAProgramFor64BitIntelAndMacOs109) {
    const MachOFile& code = macCheckCode();
    EXPECT_EQ(code.processor(), kIntel64);
    EXPECT_EQ(code.fileType(), kProgram);
    EXPECT_EQ(code.deploymentTarget(), "10.9");
    EXPECT_NE(code.flags() & kTwoLevelNamespace, 0u);
    EXPECT_NE(code.flags() & kMayLieAnywhere, 0u);
    EXPECT_NE(code.entryPoint(), 0u);
    EXPECT_NE(std::filesystem::status(macCheck()).permissions() &
                  std::filesystem::perms::owner_exec,
              std::filesystem::perms::none);
}

TEST(MacCheckFile, SaysOfEachNameWhichLibraryHasIt) {
    ASSERT_FALSE(macCheckCode().binds().empty());
    for (const MachOFile::Bind& bind : macCheckCode().binds()) {
        EXPECT_FALSE(bind.library.empty()) << bind.symbol;
        EXPECT_FALSE(bind.weak) << bind.symbol;
    }
}

TEST(MacCheckFile, LinksNothingThatTheBundleDoesNot) {
    std::set<std::string> known;
    for (const MachOFile::Library& library : macBundleCode().libraries()) {
        known.insert(library.path + " " + library.compatibilityVersion);
    }
    for (const MachOFile::Library& library : macCheckCode().libraries()) {
        EXPECT_EQ(known.count(library.path + " " + library.compatibilityVersion), 1u)
            << library.path;
    }
}

TEST(MacCheckFile, HasNoMemoryBothWritableAndExecutable) {
    for (const MachOFile::Segment& segment : macCheckCode().segments()) {
        EXPECT_NE(segment.protection & kWritableAndExecutable, kWritableAndExecutable)
            << segment.name;
    }
}

TEST(MacCheckFile, HasNoClassesAndSendsWhatMacOs109AnswersOrTheBundle) {
    const ObjcMetadata own(macCheckCode());
    EXPECT_TRUE(own.classes().empty());
    std::set<std::string> answered;
    for (const AppKitSelector& each : appKitSelectors()) {
        answered.insert(each.selector);
    }
    ASSERT_GT(own.sentSelectors().size(), 20u);
    for (const std::string& selector : own.sentSelectors()) {
        EXPECT_EQ(answered.count(selector), 1u) << selector;
    }
}

TEST(MacCheckFile, TellsNothingOfWhereItWasBuilt) {
    const std::string bytes = readFile(macCheck());
    EXPECT_THAT(bytes, testing::Not(testing::HasSubstr(TVDELAY_SOURCE_FOLDER)));
}
