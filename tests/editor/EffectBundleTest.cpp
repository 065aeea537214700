// Which bundle the editors hold, and how often.
#include "editor/BundlePath.h"
#include "tests/editor/OpenEditor.h"
#include "tests/platform/CoreFoundationObjects.h"
#include "tests/plugin/PlainEffect.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>

extern char** environ;

namespace {

CFBundleRef asBundle(CFObject* object) {
    return reinterpret_cast<CFBundleRef>(object);
}

// This program's bundle, as its path gives it, with one owner of its own.
CFBundleRef ownBundle() {
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&ownBundle), &info) == 0) {
        return nullptr;
    }
    const auto path = bundlePathOf(info.dli_fname);
    return path ? bundleAt(*path) : nullptr;
}

struct ProbeResult {
    std::string output;
    int status;
};

ProbeResult probeAs(const char* name) {
    int channel[2];
    if (pipe(channel) != 0) {
        return {"no pipe", -1};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, channel[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, channel[0]);
    char* const arguments[] = {const_cast<char*>(name), nullptr};
    pid_t child = -1;
    const int failed =
        posix_spawn(&child, TVDELAY_BUNDLE_PROBE, &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(channel[1]);
    ProbeResult result{"", -1};
    char bytes[256];
    for (ssize_t count = 0; (count = read(channel[0], bytes, sizeof(bytes))) > 0;) {
        result.output.append(bytes, static_cast<std::size_t>(count));
    }
    close(channel[0]);
    if (failed == 0 && waitpid(child, &result.status, 0) == child) {
        result.status = WIFEXITED(result.status) ? WEXITSTATUS(result.status) : -1;
    }
    return result;
}

} // namespace

TEST(EffectBundle, IsThatOfTheCodesPlace) {
    const CFBundleRef own = ownBundle();
    PlainEffectX effect;
    new OpenEditor(&effect);
    EXPECT_EQ(AEffGUIEditor::effectBundle, own);
    if (own != nullptr) {
        CFRelease(own);
    }
}

TEST(EffectBundle, SecondEditorFindsTheSameObject) {
    auto first = std::make_unique<PlainEffectX>();
    new OpenEditor(first.get());
    const CFBundleRef bundle = AEffGUIEditor::effectBundle;
    auto second = std::make_unique<PlainEffectX>();
    new OpenEditor(second.get());
    EXPECT_EQ(AEffGUIEditor::effectBundle, bundle);
}

// A mistaken count shows under AddressSanitizer: as a use of freed memory, or as a leak.
TEST(EffectBundle, TwoEditorsReleaseWhatTheyRetained) {
    const CFBundleRef own = ownBundle();
    for (int round = 0; round < 3; ++round) {
        PlainEffectX first;
        PlainEffectX second;
        new OpenEditor(&first);
        new OpenEditor(&second);
    }
    const CFBundleRef again = ownBundle();
    EXPECT_EQ(again, own);
    if (own != nullptr) {
        CFRelease(again);
        CFRelease(own);
    }
}

TEST(EffectBundle, EachDestructorReleasesWhatItFindsAndLeavesItThere) {
    int ends = 0;
    auto* const stand = new CountedObject(&ends);
    stand->retain();
    auto first = std::make_unique<PlainEffectX>();
    new OpenEditor(first.get());
    if (AEffGUIEditor::effectBundle != nullptr) {
        CFRelease(AEffGUIEditor::effectBundle);
    }
    auto second = std::make_unique<PlainEffectX>();
    new OpenEditor(second.get());
    if (AEffGUIEditor::effectBundle != nullptr) {
        CFRelease(AEffGUIEditor::effectBundle);
    }

    AEffGUIEditor::effectBundle = asBundle(stand);
    first.reset();
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(AEffGUIEditor::effectBundle, asBundle(stand));
    second.reset();
    EXPECT_EQ(ends, 1);
    AEffGUIEditor::effectBundle = nullptr;
}

TEST(EffectBundle, DestructorWithNoBundleReleasesNothing) {
    PlainEffectX effect;
    new OpenEditor(&effect);
    if (AEffGUIEditor::effectBundle != nullptr) {
        CFRelease(AEffGUIEditor::effectBundle);
    }
    AEffGUIEditor::effectBundle = nullptr;
}

TEST(EffectBundle, PathWithTooFewSeparatorsIsReportedInOneLine) {
    for (const char* name : {"probe", "a/probe", "a/b/probe", "/b/probe", ""}) {
        const ProbeResult result = probeAs(name);
        EXPECT_EQ(result.output, "Could not determine bundle location.\n") << name;
        EXPECT_EQ(result.status, 0) << name;
    }
}

TEST(EffectBundle, PathToNoFolderGivesNoBundleAndNoWord) {
    for (const char* name : {"/a/b/probe", "/no such folder/a/b/probe"}) {
        const ProbeResult result = probeAs(name);
        EXPECT_EQ(result.output, "") << name;
        EXPECT_EQ(result.status, 0) << name;
    }
}

TEST(EffectBundle, PathToAFolderGivesItsBundle) {
    const std::string folder = std::filesystem::temp_directory_path().string();
    for (const std::string& name : {folder + "/a/b/probe", folder + "//b/probe"}) {
        const ProbeResult result = probeAs(name.c_str());
        EXPECT_EQ(result.output, "") << name;
        EXPECT_EQ(result.status, 1) << name;
    }
}
