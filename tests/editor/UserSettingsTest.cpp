// The editor under what a user may have set for all GNUstep programs. Each case has a process of
// its own: settings are read once.
#include "tests/editor/GnustepHome.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/ScreenWindows.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// What is not as it is without settings; empty when all is.
std::string whatIsDifferent() {
    const LoadedPlugin plugin(TVDELAY_PLUGIN_PATH);
    AEffect* const effect = plugin.entry()(plainHost);
    std::string different;
    {
        ShownWindowCounter windows;
        HostedEditor editor(effect);
        if (!editor.shows(kSlapBack)) {
            different += " the face";
        }
        const auto children = editor.window.children();
        if (children.size() != 1 || children[0].width != HostWindow::kWidth ||
            children[0].height != HostWindow::kHeight) {
            different += " the size";
        }
        // From the base angle of 85 degrees, 54 points up: step 71.
        editor.mouse.moveTo(178, 226);
        editor.mouse.press();
        editor.mouse.moveTo(178, 280);
        editor.becomes([&] { return effect->getParameter(effect, 1) != 0.215f; });
        if (effect->getParameter(effect, 1) != 71 * 0.01f) {
            different += " the drag";
        }
        editor.mouse.release();
        if (windows.count() != 1) { // the host's
            different += " the windows on the screen";
        }
    }
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    return different;
}

void useEditorAndExit(const std::string& settings) {
    std::string different;
    {
        const GnustepHome home(settings);
        sharedXServer();
        different = whatIsDifferent();
    }
    std::fprintf(stderr, "different:%s\n", different.c_str());
    std::exit(0);
}

} // namespace

class UserSettings : public testing::TestWithParam<const char*> {};

TEST_P(UserSettings, LeaveTheEditorAsItIs) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(useEditorAndExit(GetParam()), testing::ExitedWithCode(0), "different:\n");
}

INSTANTIATE_TEST_SUITE_P(OfGnustep, UserSettings,
                         testing::Values("{}", "{GSScaleFactor = \"2.0\";}",
                                         "{GSScaleFactor = \"1.25\";}", "{GSSuppressAppIcon = NO;}",
                                         "{GSBackHandlesWindowDecorations = YES;}",
                                         "{GSBackHandlesWindowDecorations = YES; "
                                         "GSBackChecksOffsetsOnScreen = YES;}"));
