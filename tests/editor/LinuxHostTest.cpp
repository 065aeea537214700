// The built plug-in's editor under what Linux hosts do to it. Nothing here is linked with anything
// of the plug-in.
#include "tests/editor/BundleCopy.h"
#include "tests/editor/GnustepHome.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

namespace {

struct Effect {
    explicit Effect(const LoadedPlugin& plugin) : record(plugin.entry()(plainHost)) {}
    ~Effect() { call(effClose); }
    Effect(const Effect&) = delete;
    Effect& operator=(const Effect&) = delete;

    VstIntPtr call(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr) {
        return record->dispatcher(record, opcode, 0, value, ptr, 0.0f);
    }
    ERect size() {
        ERect* rect = nullptr;
        call(effEditGetRect, 0, &rect);
        return *rect;
    }

    AEffect* const record;
};

void expectSize(const ERect& size, int bottom, int right) {
    EXPECT_EQ(size.top, 0);
    EXPECT_EQ(size.left, 0);
    EXPECT_EQ(size.bottom, bottom);
    EXPECT_EQ(size.right, right);
}

std::size_t bytesInUse() {
    return mallinfo2().uordblks;
}

// Connections of this process, to the X server and to others.
int openSockets() {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        const std::string target = std::filesystem::read_symlink(entry, error).string();
        count += target.rfind("socket:", 0) == 0 ? 1 : 0;
    }
    return count;
}

// Opens an editor on `handle` and does with it what hosts do; to be found alive afterwards.
void useEditorOn(Effect& effect, void* handle) {
    EXPECT_EQ(effect.call(effEditOpen, 0, handle), 1);
    effect.record->setParameter(effect.record, 1, 0.5f);
    effect.call(effEditIdle);
    EXPECT_EQ(effect.record->getParameter(effect.record, 1), 0.5f);
    effect.call(effEditClose);
    effect.call(effEditIdle);
}

// Drags a knob by thirty pixels; false when its parameter does not come to follow.
bool knobCanBeDragged(Effect& effect, HostedEditor& editor) {
    editor.mouse.moveTo(178, 226);
    editor.mouse.press();
    editor.mouse.moveTo(178, 226 - 30);
    const bool moved =
        editor.becomes([&] { return effect.record->getParameter(effect.record, 1) == 40 * 0.01f; });
    editor.mouse.release();
    editor.idle();
    return moved;
}

// The first program's own values, which edits have replaced in it.
void setSlapBack(Effect& effect) {
    const float slapBack[] = {0.0799773261f, 0.215f, 0.374f, 0.655999f, 1.0f,
                              0.0f,          0.5f,   0.0f,   1.0f};
    for (const int parameter : {3, 0, 1, 2, 4, 5, 6, 7, 8}) {
        effect.record->setParameter(effect.record, parameter, slapBack[parameter]);
    }
}

} // namespace

class LinuxHost : public testing::Test {
protected:
    const LoadedPlugin plugin{TVDELAY_PLUGIN_PATH};
};

class LinuxHostOnScreen : public LinuxHost {
protected:
    LinuxHostOnScreen() { sharedXServer(); }
};

TEST_F(LinuxHostOnScreen, LoadingAndCreatingAnEffectOpensNoDisplay) {
    const int before = openSockets();
    const LoadedPlugin again(TVDELAY_PLUGIN_PATH);
    {
        Effect effect(again);
        effect.size();
        effect.record->setParameter(effect.record, 1, 0.5f);
        effect.call(effEditIdle);
        EXPECT_EQ(openSockets(), before);
    }
    EXPECT_EQ(openSockets(), before);
}

TEST_F(LinuxHostOnScreen, SizeIsToldBeforeTheFirstOpen) {
    Effect effect(plugin);
    expectSize(effect.size(), 400, 344);
    HostedEditor editor(effect.record);
    expectSize(effect.size(), 400, 344);
}

TEST_F(LinuxHostOnScreen, WindowManagersHaveNoSayInTheEditorsWindow) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    EXPECT_TRUE(editor.window.children().at(0).unmanaged);
}

TEST_F(LinuxHostOnScreen, BuiltPluginShowsItsFace) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    EXPECT_EQ(editor.openAnswer, 1);
    EXPECT_TRUE(editor.shows(kSlapBack));
}

TEST_F(LinuxHostOnScreen, WindowLargerThanTheEditorShowsItAtItsUpperLeft) {
    Effect effect(plugin);
    HostWindow window(200, 50, 700, 600);
    effect.call(effEditOpen, 0, window.handle());
    EXPECT_TRUE(idleUntil([&] { effect.call(effEditIdle); },
                          [&] { return showsFace(window.screen(), kSlapBack); }));
    EXPECT_EQ(window.children().at(0).x, 0);
    EXPECT_EQ(window.children().at(0).y, 0);
    effect.call(effEditClose);
}

TEST_F(LinuxHostOnScreen, FaceStaysAtTheUpperLeftWhenTheHostResizesTheEditorsWindow) {
    Effect effect(plugin);
    HostWindow window(200, 50, 700, 600);
    effect.call(effEditOpen, 0, window.handle());
    const auto becomes = [&](const std::function<bool()>& condition) {
        return idleUntil([&] { effect.call(effEditIdle); }, condition);
    };
    ASSERT_TRUE(becomes([&] { return showsFace(window.screen(), kSlapBack); }));
    const struct {
        int width, height;
    } kSizes[] = {{392, 406}, {600, 590}, {344, 420}, {400, 400}, {344, 400}};
    for (const auto& size : kSizes) {
        SCOPED_TRACE(size.height);
        window.resizeChild(size.width, size.height);
        // Black below, where there is room.
        const int lowest = std::max(size.height, HostWindow::kHeight) - HostWindow::kHeight;
        EXPECT_TRUE(becomes([&] {
            const ScreenPart lowerEnd = screenAt(200, 50 + lowest);
            return showsFace(window.screen(), kSlapBack) &&
                   (lowest == 0 || difference(lowerEnd.at(100, 398), {0, 0, 0, 255}) == 0);
        }));
    }
    window.resizeChild(392, 406);
    ASSERT_TRUE(becomes([&] { return showsFace(window.screen(), kSlapBack); }));
    const Mouse mouse(200, 50 + HostWindow::kHeight);
    mouse.moveTo(260, 140);
    mouse.press();
    mouse.release();
    FaceControls switched = kSlapBack;
    switched[5] = 1;
    EXPECT_TRUE(becomes([&] { return showsFace(window.screen(), switched); }));
    effect.call(effEditClose);
}

TEST_F(LinuxHostOnScreen, FirstDragMayBeOverWithinAMillisecond) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    // From the base angle of 85 degrees, 54 points up: step 71, frame 90.
    editor.mouse.dragAtOnce(178, 226, 178, 280);
    FaceControls dragged = kSlapBack;
    dragged[1] = 90;
    EXPECT_TRUE(editor.shows(dragged));
}

namespace {

// Feedback to step 71 and mix to step 45, as fast as the screen takes it.
void dragTwoKnobsAtOnce(const HostedEditor& editor) {
    editor.mouse.dragAtOnce({{178, 226, 178, 280}, {263, 226, 263, 211}});
}

} // namespace

TEST_F(LinuxHostOnScreen, FirstTwoDragsMayBeOverWithinAMillisecond) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    dragTwoKnobsAtOnce(editor);
    FaceControls dragged = kSlapBack;
    dragged[1] = 90;
    dragged[8] = 57;
    EXPECT_TRUE(editor.shows(dragged));
}

TEST_F(LinuxHostOnScreen, LaterDragsMayBeOverWithinAMillisecond) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    FaceControls shown = kSlapBack;
    shown[5] = 1;
    editor.mouse.moveTo(260, 140); // a switch
    editor.mouse.press();
    ASSERT_TRUE(editor.shows(shown));
    editor.mouse.release();
    dragTwoKnobsAtOnce(editor);
    shown[1] = 90;
    shown[8] = 57;
    EXPECT_TRUE(editor.shows(shown));
}

TEST_F(LinuxHostOnScreen, CloseTakesTheEditorsWindowAway) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    editor.close();
    EXPECT_TRUE(editor.becomes([&] { return editor.window.children().empty(); }));
}

TEST_F(LinuxHostOnScreen, DeletedEffectTakesItsOpenEditorsWindowAway) {
    auto effect = std::make_unique<Effect>(plugin);
    Effect other(plugin);
    HostWindow window(100, 80);
    effect->call(effEditOpen, 0, window.handle());
    ASSERT_EQ(window.children().size(), 1u);
    effect.reset();
    EXPECT_TRUE(
        idleUntil([&] { other.call(effEditIdle); }, [&] { return window.children().empty(); }));
}

TEST_F(LinuxHostOnScreen, SecondOpenWithoutACloseIsClosedWithTheFirst) {
    Effect effect(plugin);
    HostWindow first(100, 80);
    HostWindow second(500, 80);
    effect.call(effEditOpen, 0, first.handle());
    effect.call(effEditOpen, 0, second.handle());
    EXPECT_TRUE(idleUntil([&] { effect.call(effEditIdle); },
                          [&] { return showsFace(second.screen(), kSlapBack); }));
    effect.call(effEditClose);
    EXPECT_TRUE(
        idleUntil([] {}, [&] { return first.children().empty() && second.children().empty(); }));
}

TEST_F(LinuxHostOnScreen, HostMayDestroyItsWindowBeforeClosing) {
    Effect effect(plugin);
    std::vector<int> windows;
    for (int round = 0; round < 3; ++round) {
        HostedEditor editor(effect.record);
        ASSERT_TRUE(editor.shows(kSlapBack));
        editor.window.destroy();
        for (int i = 0; i < 5; ++i) {
            effect.record->setParameter(effect.record, 1, 0.215f);
            editor.idle();
        }
        editor.close();
        editor.idle();
        windows.push_back(windowsOnScreen());
    }
    // The server may be behind with the last ones.
    const int fewest = *std::min_element(windows.begin(), windows.end());
    EXPECT_TRUE(idleUntil([] {}, [&] { return windowsOnScreen() <= fewest; }));
    HostedEditor again(effect.record);
    EXPECT_TRUE(again.shows(kSlapBack));
}

TEST_F(LinuxHostOnScreen, HostMayDestroyItsWindowAfterClosing) {
    Effect effect(plugin);
    std::vector<int> windows;
    for (int round = 0; round < 3; ++round) {
        HostedEditor editor(effect.record);
        ASSERT_TRUE(editor.shows(kSlapBack));
        editor.close();
        editor.window.destroy();
        editor.idle();
        windows.push_back(windowsOnScreen());
    }
    // The server may be behind with the last ones.
    const int fewest = *std::min_element(windows.begin(), windows.end());
    EXPECT_TRUE(idleUntil([] {}, [&] { return windowsOnScreen() <= fewest; }));
    HostedEditor again(effect.record);
    EXPECT_TRUE(again.shows(kSlapBack));
}

TEST_F(LinuxHostOnScreen, TwoHundredOpeningsLeaveNoWindowAndLittleMemory) {
    Effect effect(plugin);
    const auto round = [&] {
        HostedEditor editor(effect.record);
        editor.idle();
        editor.idle();
        editor.close();
    };
    round();
    const int windows = windowsOnScreen();
    for (int i = 0; i < 20; ++i) {
        round();
    }
    const std::size_t before = bytesInUse();
    constexpr int kRounds = 180;
    for (int i = 0; i < kRounds; ++i) {
        round();
    }
    EXPECT_TRUE(idleUntil([] {}, [&] { return windowsOnScreen() <= windows; }));
    EXPECT_EQ(windowsOnScreen(), windows);
    // The views and lists of one editor, which stay by design, and no picture.
    const std::size_t growth = bytesInUse() - before;
    EXPECT_LT(growth / kRounds, 128u * 1024u);
}

TEST_F(LinuxHostOnScreen, LastClosedEditorGivesItsPicturesOnTheScreenBack) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    const int windows = windowsOnScreen();
    editor.close();
    // More than its own window goes: AppKit keeps each drawn picture in one.
    EXPECT_TRUE(idleUntil([] {}, [&] { return windowsOnScreen() < windows - 1; }));
}

TEST_F(LinuxHostOnScreen, NullPointerIsOpenedWithNothingAttached) {
    Effect effect(plugin);
    useEditorOn(effect, nullptr); // AppKit makes windows of its own as it starts
    const int windows = windowsOnScreen();
    EXPECT_EQ(effect.call(effEditOpen, 0, nullptr), 1);
    effect.call(effEditIdle);
    EXPECT_EQ(windowsOnScreen(), windows);
    effect.call(effEditClose);
    useEditorOn(effect, nullptr);
    EXPECT_EQ(windowsOnScreen(), windows);
}

TEST_F(LinuxHostOnScreen, IdOfAWindowThatIsGoneIsOpenedWithNothingAttached) {
    Effect effect(plugin);
    useEditorOn(effect, nullptr); // AppKit makes windows of its own as it starts
    HostWindow window(100, 80);   // its connection stays, so that no other window gets the id
    void* const gone = window.handle();
    window.destroy();
    const int windows = windowsOnScreen();
    for (void* const handle :
         {gone, reinterpret_cast<void*>(1), reinterpret_cast<void*>(0x7FFFFFFF),
          reinterpret_cast<void*>(0xFFFFFFFF)}) {
        EXPECT_EQ(effect.call(effEditOpen, 0, handle), 1);
        effect.call(effEditIdle);
        EXPECT_EQ(windowsOnScreen(), windows) << handle;
        effect.call(effEditClose);
        useEditorOn(effect, handle);
        EXPECT_EQ(windowsOnScreen(), windows) << handle;
    }
}

TEST_F(LinuxHostOnScreen, ValueThatNoFrameShowsLeavesHostAndEditorAlive) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    for (const float value : {1.5f, -0.5f, 1e20f}) {
        for (int parameter = 0; parameter < 9; ++parameter) {
            effect.record->setParameter(effect.record, parameter, value);
            editor.idle();
            editor.idle();
        }
        for (const int parameter : {0, 1, 2, 3, 6, 7, 8}) {
            effect.record->setParameter(effect.record, parameter, 0.505f);
        }
        effect.record->setParameter(effect.record, 4, 1.0f);
        effect.record->setParameter(effect.record, 5, 0.0f);
        EXPECT_TRUE(editor.shows({63, 63, 63, 63, 1, 0, 63, 63, 63}));
    }
}

TEST_F(LinuxHostOnScreen, EditorMayLiveOnAThreadOfItsOwn) {
    Effect effect(plugin);
    bool shown = false, moved = false;
    std::thread userInterface([&] {
        HostedEditor editor(effect.record);
        shown = editor.shows(kSlapBack);
        std::thread([&] { effect.record->setParameter(effect.record, 1, 0.505f); }).join();
        FaceControls expected = kSlapBack;
        expected[1] = 63;
        moved = editor.shows(expected);
    });
    userInterface.join();
    EXPECT_TRUE(shown);
    EXPECT_TRUE(moved);
}

TEST_F(LinuxHostOnScreen, EditorMayLeaveTheThreadThatItFirstOpenedOn) {
    Effect effect(plugin);
    {
        HostedEditor editor(effect.record);
        ASSERT_TRUE(editor.shows(kSlapBack));
    }
    bool moved = false;
    std::thread userInterface([&] {
        HostedEditor editor(effect.record);
        moved = knobCanBeDragged(effect, editor);
    });
    userInterface.join();
    EXPECT_TRUE(moved);
}

TEST_F(LinuxHostOnScreen, OneIdleCallOnAnyThreadTakesWhatHasCome) {
    Effect effect(plugin);
    const auto useSwitch = [&] {
        HostedEditor editor(effect.record);
        EXPECT_TRUE(editor.shows(kSlapBack));
        editor.settledScreen();
        editor.mouse.moveTo(260, 140);
        for (int press = 1; press <= 4; ++press) {
            editor.mouse.press();
            editor.mouse.release();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            editor.idle();
            EXPECT_EQ(effect.record->getParameter(effect.record, 5), press % 2 == 1 ? 1.0f : 0.0f)
                << press;
        }
    };
    useSwitch();
    setSlapBack(effect);
    std::thread(useSwitch).join();
}

TEST_F(LinuxHostOnScreen, EditorMayMoveToAnotherThreadBetweenOpenings) {
    Effect effect(plugin);
    for (int round = 0; round < 3; ++round) {
        bool shown = false, moved = false;
        std::thread userInterface([&] {
            HostedEditor editor(effect.record);
            shown = editor.shows(kSlapBack);
            moved = knobCanBeDragged(effect, editor);
        });
        userInterface.join();
        EXPECT_TRUE(shown);
        EXPECT_TRUE(moved);
        effect.call(effSetProgram, 1);
        effect.call(effSetProgram, 0);
        setSlapBack(effect);
    }
}

TEST_F(LinuxHostOnScreen, OpeningKeepsTheHostsLocale) {
    setenv("LC_ALL", "C.UTF-8", 1);
    ASSERT_STREQ(setlocale(LC_ALL, nullptr), "C");
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    EXPECT_TRUE(editor.shows(kSlapBack));
    EXPECT_STREQ(setlocale(LC_ALL, nullptr), "C");
}

TEST_F(LinuxHostOnScreen, OpeningLeavesEverySignalToTheHost) {
    std::vector<struct sigaction> before(NSIG);
    for (int signal = 1; signal < NSIG; ++signal) {
        sigaction(signal, nullptr, &before[static_cast<std::size_t>(signal)]);
    }
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    editor.close();
    for (int signal = 1; signal < NSIG; ++signal) {
        struct sigaction after = {};
        sigaction(signal, nullptr, &after);
        EXPECT_EQ(after.sa_handler, before[static_cast<std::size_t>(signal)].sa_handler) << signal;
    }
}

TEST_F(LinuxHostOnScreen, HostKeepsTheKeyboard) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    const unsigned long focus = keyboardFocus();
    editor.mouse.moveTo(178, 226);
    editor.mouse.press();
    editor.mouse.moveTo(178, 250);
    EXPECT_TRUE(
        editor.becomes([&] { return effect.record->getParameter(effect.record, 1) > 0.55f; }));
    editor.mouse.release();
    editor.idle();
    EXPECT_EQ(keyboardFocus(), focus);
}

TEST_F(LinuxHostOnScreen, KeyPressedOverTheEditorIsTheHosts) {
    Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    editor.window.takeKeyboard();
    editor.mouse.moveTo(178, 226);
    editor.mouse.press();
    editor.mouse.release();
    editor.idle();
    xdotool({"key", "space"});
    EXPECT_TRUE(editor.becomes([&] { return editor.window.keysPressed() == 1; }));
}

TEST_F(LinuxHostOnScreen, OtherConnectionsKeepTheHostsErrorHandler) {
    Effect effect(plugin);
    ErrorCounter errors;
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    errors.cause();
    EXPECT_EQ(errors.count(), 1);
    editor.window.destroy();
    effect.record->setParameter(effect.record, 1, 0.5f);
    editor.idle();
    editor.close();
    editor.idle();
    EXPECT_EQ(errors.count(), 1);
}

TEST_F(LinuxHostOnScreen, SecondFileOfThePluginInTheSameProcess) {
    const BundleCopy copy;
    {
        const LoadedPlugin second(copy.code());
        Effect ofSecond(second);
        Effect ofFirst(plugin);
        HostedEditor secondEditor(ofSecond.record, 100, 80);
        HostedEditor firstEditor(ofFirst.record, 600, 80);
        EXPECT_TRUE(secondEditor.shows(kSlapBack));
        EXPECT_TRUE(firstEditor.shows(kSlapBack));
        ofFirst.record->setParameter(ofFirst.record, 1, 0.505f);
        ofSecond.record->setParameter(ofSecond.record, 8, 0.505f);
        FaceControls one = kSlapBack, two = kSlapBack;
        one[1] = 63;
        two[8] = 63;
        EXPECT_TRUE(firstEditor.shows(one));
        EXPECT_TRUE(secondEditor.shows(two));
        firstEditor.close();
        ofSecond.record->setParameter(ofSecond.record, 1, 0.505f);
        two[1] = 63;
        EXPECT_TRUE(secondEditor.shows(two));
    }
}

TEST_F(LinuxHostOnScreen, NothingIsWrittenIntoTheUsersHome) {
    const GnustepHome home;
    {
        Effect effect(plugin);
        HostedEditor editor(effect.record);
        EXPECT_TRUE(editor.shows(kSlapBack));
    }
    EXPECT_TRUE(home.isUntouched());
}

namespace {

void useEditorWithoutPicturesAndExit() {
    sharedXServer();
    const BundleCopy copy;
    std::filesystem::remove_all(copy.bundle() / "Contents" / "Resources");
    {
        const LoadedPlugin bare(copy.code());
        Effect effect(bare);
        HostedEditor editor(effect.record);
        const auto parameter = [&](int index) {
            return effect.record->getParameter(effect.record, index);
        };
        editor.idle();
        EXPECT_FALSE(showsFace(editor.window.screen(), kSlapBack));
        editor.mouse.moveTo(178, 226);
        editor.mouse.press();
        editor.mouse.moveTo(178, 226 + 54);
        EXPECT_TRUE(editor.becomes([&] { return parameter(1) == 71 * 0.01f; }));
        editor.mouse.release();
        EXPECT_EQ(parameter(5), 0.0f);
        editor.mouse.moveTo(260, 140);
        editor.mouse.press();
        EXPECT_TRUE(editor.becomes([&] { return parameter(5) == 1.0f; }));
        editor.mouse.release();
        effect.call(effSetProgram, 9);
        editor.idle();
        EXPECT_TRUE(editor.window.children().at(0).mapped);
    }
    std::filesystem::remove_all(copy.bundle().parent_path());
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

} // namespace

// In a process of its own: the first file of the plug-in that a process loads brings the pictures.
TEST(LinuxHostOfABareBundle, MouseWorksWithoutPictures) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(useEditorWithoutPicturesAndExit(), testing::ExitedWithCode(0), "");
}

// In processes of their own: AppKit may have met a display before in this one.
namespace {

void useEditorAndExit(const LoadedPlugin& plugin) {
    Effect effect(plugin);
    useEditorOn(effect, reinterpret_cast<void*>(0x400001));
    useEditorOn(effect, nullptr);
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

} // namespace

TEST_F(LinuxHost, EditorWithoutADisplayFailsSoftly) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            unsetenv("DISPLAY");
            useEditorAndExit(plugin);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST_F(LinuxHost, EditorOnADisplayThatIsNotThereFailsSoftly) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("DISPLAY", "no such display", 1);
            useEditorAndExit(plugin);
        },
        testing::ExitedWithCode(0), "^$");
}
