// The code of the macOS bundle as a file: what the system's loader will make of it.
#include "tests/bundle/MacBundle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace {

constexpr std::uint32_t kIntel64 = 0x01000007;
constexpr std::uint32_t kBundle = 8;
constexpr std::uint32_t kTwoLevelNamespace = 0x80;
constexpr std::uint32_t kWritableAndExecutable = 2 | 4;

} // namespace

TEST(BundleFile, IsABundleFor64BitIntel) {
    EXPECT_EQ(macBundleCode().processor(), kIntel64);
    EXPECT_EQ(macBundleCode().fileType(), kBundle);
}

TEST(BundleFile, RunsFromMacOs109On) {
    EXPECT_EQ(macBundleCode().deploymentTarget(), "10.9");
}

TEST(BundleFile, ExportsItsEntryAndNothingElse) {
    const auto& exports = macBundleCode().exports();
    ASSERT_EQ(exports.size(), 1u);
    EXPECT_EQ(exports[0].name, "_VSTPluginMain");
}

TEST(BundleFile, SaysOfEachNameWhichLibraryHasIt) {
    EXPECT_NE(macBundleCode().flags() & kTwoLevelNamespace, 0u);
    ASSERT_FALSE(macBundleCode().binds().empty());
    for (const MachOFile::Bind& bind : macBundleCode().binds()) {
        EXPECT_FALSE(bind.library.empty()) << bind.symbol;
        EXPECT_FALSE(bind.weak) << bind.symbol;
    }
}

// With the oldest version that will do, which the system's own of 10.9 and later are.
TEST(BundleFile, LinksTheFrameworksOfItsInterfacesAndTheRuntimes) {
    std::map<std::string, std::string> libraries;
    for (const MachOFile::Library& library : macBundleCode().libraries()) {
        libraries[library.path] = library.compatibilityVersion;
    }
    const std::string frameworks = "/System/Library/Frameworks/";
    const std::map<std::string, std::string> expected = {
        {frameworks + "AppKit.framework/Versions/C/AppKit", "45.0"},
        {frameworks + "Foundation.framework/Versions/C/Foundation", "300.0"},
        {frameworks + "CoreFoundation.framework/Versions/A/CoreFoundation", "150.0"},
        {frameworks + "CoreGraphics.framework/Versions/A/CoreGraphics", "64.0"},
        {frameworks + "QuartzCore.framework/Versions/A/QuartzCore", "1.2"},
        {frameworks + "Carbon.framework/Versions/A/Carbon", "2.0"},
        {frameworks + "CoreServices.framework/Versions/A/CoreServices", "1.0"},
        {"/usr/lib/libc++.1.dylib", "1.0"},
        {"/usr/lib/libobjc.A.dylib", "1.0"},
        {"/usr/lib/libSystem.B.dylib", "1.0"},
    };
    EXPECT_EQ(libraries, expected);
}

TEST(BundleFile, HasNoMemoryBothWritableAndExecutable) {
    for (const MachOFile::Segment& segment : macBundleCode().segments()) {
        EXPECT_NE(segment.protection & kWritableAndExecutable, kWritableAndExecutable)
            << segment.name;
    }
}

TEST(BundleFile, TellsNothingOfWhereItWasBuilt) {
    std::ifstream file(macBundle() + "/Contents/MacOS/TvDelay", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    ASSERT_GT(bytes.size(), 10000u);
    EXPECT_THAT(bytes, testing::Not(testing::HasSubstr(TVDELAY_SOURCE_FOLDER)));
    EXPECT_THAT(bytes, testing::Not(testing::HasSubstr(macBundle())));
}
