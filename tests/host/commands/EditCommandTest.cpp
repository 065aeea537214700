// tvhost as a host with a window, on a screen where nobody else is.
#include "tests/host/EditorFace.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/screen/Mouse.h"
#include "tests/support/screen/ScreenWindows.h"
#include "tests/support/screen/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <functional>

using testing::HasSubstr;

namespace {

FaceControls punk() {
    ReferenceDelay effect;
    effect.setProgram(25);
    return faceOf(effect);
}

bool comesTrue(const std::function<bool()>& condition) {
    return idleUntil([] {}, condition);
}

bool shows(const ShownWindow& window, const FaceControls& controls) {
    const ScreenPart expected = expectedFace(controls);
    return comesTrue(
        [&] { return differenceOf(screenAt(window.left, window.top), expected).largest <= 4; });
}

bool isYellow(int x, int y) {
    return grabScreen(x, y, 1, 1).at(0, 0) == Pixel{255, 255, 0, 255};
}

class Edit : public testing::Test {
protected:
    Process::Options onScreen() const {
        Process::Options options;
        options.environment = {"DISPLAY=" + server.display(), "ASAN_OPTIONS=detect_leaks=0",
                               "PAINTER_JOURNAL=" + journal};
        return options;
    }
    Process edit(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = {"edit"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return startTvhost(arguments, onScreen());
    }
    Process painter(const std::string& behaviour) const {
        return edit({"--plugin", testPlugin("Painter"), "--program", behaviour});
    }

    static void expectGoodEnd(Process& run) {
        const ProcessResult result = run.wait();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "");
    }
    // Of the plug-in that paints.
    void expectOrderlyClose() const {
        EXPECT_EQ(readFile(journal), "closed in its window\n");
        EXPECT_FALSE(findWindow(kPainter).has_value());
    }

    static constexpr const char* kPainter = "Painter \xC3\xA9";

    const TemporaryFolder folder;
    const std::string journal = folder.file("journal");
    XServer server;
};

class EditStop : public Edit, public testing::WithParamInterface<int> {};

} // namespace

TEST_F(Edit, ShowsTheEditorInAWindowOfItsNameAndSize) {
    Process run = edit({"--program", "Punk"});
    const ShownWindow window = awaitWindow("TvDelay");
    EXPECT_EQ(window.width, 344);
    EXPECT_EQ(window.height, 400);
    EXPECT_TRUE(isOfFixedSize(window.handle));
    EXPECT_EQ(programClassOf(window.handle), "Tvhost");
    EXPECT_TRUE(shows(window, punk()));
    askToClose(window.handle);
    expectGoodEnd(run);
}

TEST_F(Edit, ShowsWhatIsSetBesidesTheProgram) {
    Process run = edit({"--program", "Punk", "--set", "highPass Type=1"});
    FaceControls controls = punk();
    controls[5] = 1;
    const ShownWindow window = awaitWindow("TvDelay");
    EXPECT_TRUE(shows(window, controls));
    askToClose(window.handle);
    expectGoodEnd(run);
}

TEST_F(Edit, TakesTheMouse) {
    Process run = edit({"--program", "Punk"});
    const ShownWindow window = awaitWindow("TvDelay");
    ASSERT_TRUE(shows(window, punk()));
    const Mouse mouse(window.left, window.top + window.height);
    // From the base angle of 85 degrees, 54 points up: step 71, frame 90.
    mouse.moveTo(178, 226);
    mouse.press();
    mouse.moveTo(178, 280);
    mouse.release();
    FaceControls moved = punk();
    moved[1] = 90;
    EXPECT_TRUE(shows(window, moved));
    mouse.moveTo(260, 140);
    mouse.press();
    mouse.release();
    moved[5] = 1;
    EXPECT_TRUE(shows(window, moved));
    askToClose(window.handle);
    const ProcessResult result = run.wait();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    // What was set by hand, ready for another command line.
    EXPECT_THAT(result.out, testing::StartsWith("--program Punk --set "));
    EXPECT_THAT(result.out, HasSubstr(" --set FeedBack=0.71 "));
    EXPECT_THAT(result.out, HasSubstr(" --set 'highPass Type=1' "));
}

TEST_F(Edit, ClosesTheEditorBeforeItsWindow) {
    Process run = painter("Plain");
    askToClose(awaitWindow(kPainter).handle);
    expectGoodEnd(run);
    expectOrderlyClose();
}

TEST_F(Edit, LetsTheEffectRun) {
    Process run = painter("Plain");
    const ShownWindow window = awaitWindow(kPainter);
    // Green: a tenth of a second has been processed.
    EXPECT_TRUE(comesTrue([&] { return isYellow(window.left, window.top); }));
    askToClose(window.handle);
    expectGoodEnd(run);
}

TEST_F(Edit, FollowsTheSizeThatTheEditorTellsLate) {
    Process run = painter("Late");
    EXPECT_TRUE(comesTrue([] {
        const auto window = findWindow(kPainter);
        return window && window->width == 200 && window->height == 100 &&
               isOfFixedSize(window->handle);
    }));
    askToClose(awaitWindow(kPainter).handle);
    expectGoodEnd(run);
}

TEST_F(Edit, FollowsTheSizeThatTheEditorAsksFor) {
    Process run = painter("Growing");
    EXPECT_TRUE(comesTrue([] {
        const auto window = findWindow(kPainter);
        return window && window->width == 160 && window->height == 90 &&
               isOfFixedSize(window->handle) && isYellow(159, 89);
    }));
    askToClose(awaitWindow(kPainter).handle);
    expectGoodEnd(run);
    expectOrderlyClose();
}

TEST_P(EditStop, EndsInGoodOrder) {
    for (const char* plugin : {"Painter", "TvDelay"}) {
        SCOPED_TRACE(plugin);
        const bool product = plugin == std::string("TvDelay");
        Process run = product ? edit({}) : painter("Plain");
        awaitWindow(product ? plugin : kPainter);
        kill(run.id(), GetParam());
        expectGoodEnd(run);
    }
    expectOrderlyClose();
}

INSTANTIATE_TEST_SUITE_P(Signals, EditStop, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(Edit, SaysThatTheDisplayHasGone) {
    auto screen = std::make_unique<XServer>();
    Process::Options options = onScreen();
    options.environment.push_back("DISPLAY=" + screen->display());
    Process run = startTvhost({"edit", "--plugin", testPlugin("Painter")}, options);
    awaitWindow(kPainter);
    screen.reset();
    const ProcessResult result = run.wait();
    EXPECT_EQ(result.status, 2);
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr("X server has gone"));
}

TEST_F(Edit, RefusesAnEditorThatDoesNotOpen) {
    Process run = painter("Refusing");
    const ProcessResult result = run.wait();
    EXPECT_EQ(result.status, 2);
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr("did not open its editor"));
}
