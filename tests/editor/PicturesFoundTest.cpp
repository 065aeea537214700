// The editor finds its pictures by whatever path a host loads the plug-in. Each case has a process
// of its own: the first file of the plug-in that a process loads brings the pictures.
#include "tests/editor/BundleCopy.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace {

// Goes to a folder and answers the path to load the plug-in by.
using Way = std::function<std::string(const BundleCopy& copy)>;

void showFaceAndExit(const std::string& inner, const Way& way) {
    bool shown = false;
    {
        const BundleCopy copy(inner);
        sharedXServer();
        const LoadedPlugin plugin(way(copy));
        AEffect* const effect = plugin.entry()(plainHost);
        std::filesystem::current_path("/"); // hosts go elsewhere too
        {
            HostedEditor editor(effect);
            shown = editor.shows(kSlapBack);
        }
        effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    }
    std::exit(shown ? 0 : 1);
}

class PicturesFound : public testing::Test {
protected:
    PicturesFound() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    void expectFace(const std::string& inner, const Way& way) {
        EXPECT_EXIT(showFaceAndExit(inner, way), testing::ExitedWithCode(0), "");
    }
};

} // namespace

TEST_F(PicturesFound, ByALinkToTheFile) {
    expectFace("", [](const BundleCopy& copy) {
        const std::filesystem::path link = copy.folder() / "Linked.so";
        std::filesystem::create_symlink(copy.code(), link);
        return link.string();
    });
}

TEST_F(PicturesFound, ByALinkToTheBundle) {
    expectFace("", [](const BundleCopy& copy) {
        const std::filesystem::path link = copy.folder() / "Linked.vst";
        std::filesystem::create_symlink(copy.bundle(), link);
        return (link / std::filesystem::relative(copy.code(), copy.bundle())).string();
    });
}

TEST_F(PicturesFound, ByAPathOfOneFolder) {
    expectFace("", [](const BundleCopy& copy) {
        const std::filesystem::path code = copy.code();
        std::filesystem::current_path(code.parent_path());
        return "./" + code.filename().string();
    });
}

TEST_F(PicturesFound, ByARelativePathFromAFolderThatTheHostHasLeft) {
    expectFace("", [](const BundleCopy& copy) {
        std::filesystem::current_path(copy.folder());
        return std::filesystem::relative(copy.code()).string();
    });
}

TEST_F(PicturesFound, BelowAFolderWithAnAccent) {
    expectFace("caf\xC3\xA9", [](const BundleCopy& copy) { return copy.code(); });
}

TEST_F(PicturesFound, BelowAFolderWhoseNameIsNotUtf8) {
    expectFace("caf\xE9", [](const BundleCopy& copy) { return copy.code(); });
}

TEST_F(PicturesFound, InTheNewBundleAfterAnUpdateInPlace) {
    expectFace("", [](const BundleCopy& copy) {
        // The loaded file goes, as installers do it, and another one takes its name.
        static const LoadedPlugin old(copy.code());
        const std::string aside = copy.code() + ".new";
        std::filesystem::copy_file(copy.code(), aside);
        std::filesystem::rename(aside, copy.code());
        return copy.code();
    });
}
