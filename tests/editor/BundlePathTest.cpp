#include "editor/BundlePath.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

TEST(BundlePath, LosesTheFileAndTheTwoFoldersAboveIt) {
    const std::pair<const char*, std::optional<std::string>> rows[] = {
        {"/home/me/TvDelay.vst/Contents/MacOS/TvDelay", "/home/me/TvDelay.vst"},
        {"/home/me/TvDelay.vst/Contents/x86_64-linux/TvDelay.so", "/home/me/TvDelay.vst"},
        {"/a/b/c", ""},
        {"/a/b/c/d", "/a"},
        {"a/b/c/d", "a"},
        {"./b/c/d", "."},
        {"a//b/c", "a"},
        {"a///", "a"},
        {"///", ""},
        {"/a b/c d/e f/g h", "/a b"},
        {"a/b/c", std::nullopt},
        {"/b/c", std::nullopt},
        {"//", std::nullopt},
        {"c", std::nullopt},
        {"./c", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [path, bundle] : rows) {
        EXPECT_EQ(bundlePathOf(path), bundle) << path;
    }
}
