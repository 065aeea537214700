// The file in the hands of the loader.
#include "tests/product/BuiltPlugin.h"

#include "tests/support/RecordScript.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

// A second bundle with the same file. It stays in the build folder: the leak detector reads the
// file at the process's end.
std::string copyOfTheBundle() {
    const std::filesystem::path inside =
        std::filesystem::path(TVDELAY_COPY_PATH) / "Contents" / "x86_64-linux";
    std::filesystem::remove_all(TVDELAY_COPY_PATH);
    std::filesystem::create_directories(inside);
    std::filesystem::copy_file(kPluginPath, inside / "TvDelay.so");
    return (inside / "TvDelay.so").string();
}

std::string runScript(const LoadedPlugin& plugin, std::uint64_t seed) {
    const Instance instance(plugin);
    return RecordScript(instance.record(), generateScript(seed, 40)).run();
}

} // namespace

TEST(Loading, FileMayBeLoadedTwice) {
    const LoadedPlugin first(kPluginPath);
    auto second = std::make_unique<LoadedPlugin>(kPluginPath);
    EXPECT_EQ(first.entry(), second->entry());
    const Instance one(first);
    const Instance two(*second);
    one.set(8, 0.25f);
    EXPECT_EQ(two.get(8), 1.0f);
    EXPECT_EQ(runScript(*second, 70001), "");
}

TEST(Loading, InstancesOutliveTheSecondOfTwoLoadings) {
    const LoadedPlugin first(kPluginPath);
    const Instance instance(first);
    {
        const LoadedPlugin second(kPluginPath);
        const Instance other(second);
        other.set(8, 0.25f);
    }
    EXPECT_EQ(instance.get(8), 1.0f);
    EXPECT_EQ(RecordScript(instance.record(), generateScript(70002, 40)).run(), "");
}

TEST(Loading, FileMayBeUnloadedAndLoadedAgain) {
    for (std::uint64_t round = 0; round < 5; ++round) {
        const LoadedPlugin plugin(kPluginPath);
        EXPECT_EQ(runScript(plugin, 70010 + round), "");
    }
}

TEST(Loading, CopiedFileIsAPluginOfItsOwn) {
    const LoadedPlugin original(kPluginPath);
    const LoadedPlugin copied(copyOfTheBundle());
    EXPECT_NE(original.entry(), copied.entry());
    const Instance one(original);
    const Instance two(copied);
    EXPECT_EQ(one->uniqueID, two->uniqueID);
    one.ask(effSetProgram, 0, 5);
    EXPECT_EQ(two.ask(effGetProgram), 0);
    EXPECT_EQ(runScript(original, 70020), "");
    EXPECT_EQ(runScript(copied, 70021), "");
}

TEST(Loading, OldEntryNameIsNotThere) {
    const LoadedPlugin plugin(kPluginPath);
    EXPECT_EQ(plugin.symbol("main"), nullptr);
    EXPECT_EQ(plugin.symbol("main_macho"), nullptr);
    EXPECT_EQ(plugin.symbol("createEffectInstance"), nullptr);
}
