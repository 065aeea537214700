// The Linux supply of the few macOS services that the editor frame stands on.
#include "tests/platform/CoreFoundationObjects.h"

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

class CoreFoundationTest : public testing::Test {
protected:
    CoreFoundationTest() {
        std::string name = (std::filesystem::temp_directory_path() / "bundleXXXXXX").string();
        folder = mkdtemp(name.data());
        std::filesystem::create_directory(folder + "/One.vst");
        std::filesystem::create_directory(folder + "/Two.vst");
    }
    ~CoreFoundationTest() override { std::filesystem::remove_all(folder); }

    std::string folder;
};

} // namespace

TEST_F(CoreFoundationTest, ObjectLivesAsLongAsItHasOwners) {
    int ends = 0;
    CFObject* const object = new CountedObject(&ends);
    EXPECT_EQ(CFRetain(object), object);
    EXPECT_EQ(CFRetain(object), object);
    CFRelease(object);
    CFRelease(object);
    EXPECT_EQ(ends, 0);
    CFRelease(object);
    EXPECT_EQ(ends, 1);
}

TEST_F(CoreFoundationTest, SameFolderGivesTheSameBundle) {
    const CFBundleRef first = bundleAt(folder + "/One.vst");
    ASSERT_NE(first, nullptr);
    const std::string spellings[] = {folder + "/One.vst", folder + "/One.vst/",
                                     folder + "/./One.vst", folder + "/Two.vst/../One.vst",
                                     folder + "//One.vst"};
    for (const std::string& spelling : spellings) {
        const CFBundleRef again = bundleAt(spelling);
        EXPECT_EQ(again, first) << spelling;
        CFRelease(again);
    }
    CFRelease(first);
}

TEST_F(CoreFoundationTest, LinkToAFolderGivesTheFoldersBundle) {
    std::filesystem::create_directory_symlink(folder + "/One.vst", folder + "/Link.vst");
    const CFBundleRef direct = bundleAt(folder + "/One.vst");
    const CFBundleRef linked = bundleAt(folder + "/Link.vst");
    EXPECT_EQ(direct, linked);
    CFRelease(direct);
    CFRelease(linked);
}

TEST_F(CoreFoundationTest, OtherFoldersGiveOtherBundles) {
    const CFBundleRef one = bundleAt(folder + "/One.vst");
    const CFBundleRef two = bundleAt(folder + "/Two.vst");
    ASSERT_NE(one, nullptr);
    ASSERT_NE(two, nullptr);
    EXPECT_NE(one, two);
    CFRelease(one);
    CFRelease(two);
}

// Each creation counts once: the object ends with the last release, and can be made anew.
TEST_F(CoreFoundationTest, BundleEndsWithItsLastOwner) {
    for (int round = 0; round < 3; ++round) {
        const CFBundleRef first = bundleAt(folder + "/One.vst");
        const CFBundleRef second = bundleAt(folder + "/One.vst");
        ASSERT_EQ(first, second);
        CFRelease(first);
        const CFBundleRef third = bundleAt(folder + "/One.vst");
        ASSERT_EQ(second, third) << "one owner was left";
        CFRelease(second);
        CFRelease(third);
    }
}

TEST_F(CoreFoundationTest, NoFolderGivesNoBundle) {
    EXPECT_EQ(bundleAt(folder + "/Three.vst"), nullptr);
    std::ofstream(folder + "/file") << "not a folder";
    EXPECT_EQ(bundleAt(folder + "/file"), nullptr);
    EXPECT_EQ(bundleAt(folder + "/file/One.vst"), nullptr);
}

TEST_F(CoreFoundationTest, EmptyPathGivesNoAddress) {
    const UInt8 nothing[] = "/";
    EXPECT_EQ(CFURLCreateFromFileSystemRepresentation(nullptr, nothing, 0, true), nullptr);
}

TEST_F(CoreFoundationTest, AddressTakesExactlyTheGivenBytes) {
    const std::string path = folder + "/One.vst";
    const std::string longer = path + "-and-more";
    const CFURLRef url = CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(longer.data()), static_cast<CFIndex>(path.size()),
        true);
    ASSERT_NE(url, nullptr);
    const CFBundleRef bundle = CFBundleCreate(nullptr, url);
    EXPECT_NE(bundle, nullptr);
    CFRelease(url);
    CFRelease(bundle);
}

TEST(Carbon, TicksAreSixtiethsOfASecondOfTheMachinesClock) {
    const auto sixtieths = [] {
        timespec now;
        clock_gettime(CLOCK_MONOTONIC, &now);
        return static_cast<std::int64_t>(now.tv_sec) * 60 + now.tv_nsec * 60 / 1000000000;
    };
    const std::int64_t before = sixtieths();
    const std::uint32_t ticks = TickCount();
    const std::int64_t after = sixtieths();
    EXPECT_LE(ticks - static_cast<std::uint32_t>(before),
              static_cast<std::uint32_t>(after - before));
}

TEST(Carbon, RunningTheEventLoopTakesTheTimeAndTimesOut) {
    EXPECT_EQ(RunCurrentEventLoop(0.0), eventLoopTimedOutErr);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(RunCurrentEventLoop(0.02), eventLoopTimedOutErr);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(20));
}
