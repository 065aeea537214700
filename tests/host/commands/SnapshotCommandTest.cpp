// tvhost makes a picture of an editor, on the display there is or on one of its own.
#include "tests/host/EditorFace.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/screen/HostWindow.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

using testing::HasSubstr;

namespace {

// What the opened editor keeps to the end of the process is settled elsewhere.
const std::vector<std::string> kEnvironment = {"ASAN_OPTIONS=detect_leaks=0"};

ScreenPart pictureIn(const std::string& path) {
    const Picture picture = Picture::load(path);
    ScreenPart part;
    part.width = picture.width();
    part.height = picture.height();
    for (int row = 0; row < part.height; ++row) {
        for (int column = 0; column < part.width; ++column) {
            part.pixels.push_back(picture.at(column, row));
        }
    }
    return part;
}

// The one colour of a picture, or nothing.
std::optional<unsigned> onlyColour(const ScreenPart& picture) {
    const Pixel& first = picture.pixels.front();
    for (const Pixel& pixel : picture.pixels) {
        if (!(pixel == first)) {
            return std::nullopt;
        }
    }
    return static_cast<unsigned>(first.red << 16 | first.green << 8 | first.blue);
}

// Gone, or at its end with nobody to ask for its status.
bool isGone(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text);
    const std::size_t state = text.rfind(") ");
    return state == std::string::npos || text.at(state + 2) == 'Z';
}

class Snapshot : public testing::Test {
protected:
    ProcessResult take(std::vector<std::string> more,
                       const std::vector<std::string>& environment = {}) {
        std::vector<std::string> arguments = {"snapshot", out};
        arguments.insert(arguments.end(), more.begin(), more.end());
        Process::Options options;
        options.environment = kEnvironment;
        options.environment.insert(options.environment.end(), environment.begin(),
                                   environment.end());
        return runTvhost(arguments, options);
    }

    // Takes one that works.
    ScreenPart picture(const std::vector<std::string>& more,
                       const std::vector<std::string>& environment = {}) {
        const ProcessResult result = take(more, environment);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "");
        return pictureIn(out);
    }

    // The picture of the plug-in that paints, with one of its ways to behave.
    ScreenPart painted(const std::string& behaviour) {
        return picture({"--plugin", testPlugin("Painter"), "--program", behaviour});
    }

    void expectRefusal(const ProcessResult& result, const std::string& wrong,
                       const std::string& right) {
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
        EXPECT_THAT(result.err, HasSubstr(wrong));
        EXPECT_THAT(result.err, HasSubstr(right));
    }

    // A folder for PATH whose Xvfb is this shell script.
    std::string pathWithServer(const std::string& script) {
        const std::string bin = folder.file("bin");
        mkdir(bin.c_str(), 0755);
        writeFile(bin + "/Xvfb", "#!/bin/sh\n" + script);
        chmod((bin + "/Xvfb").c_str(), 0755);
        return "PATH=" + bin + ":/usr/bin:/bin";
    }

    const TemporaryFolder folder;
    const std::string out = folder.file("editor.png");
};

} // namespace

TEST_F(Snapshot, ShowsTheEditorWithoutADisplay) {
    for (const int program : {0, 14, 20, 25}) {
        SCOPED_TRACE(program);
        ReferenceDelay effect;
        effect.setProgram(program);
        const ScreenPart taken = picture({"--program", std::to_string(program)});
        EXPECT_EQ(shownControls(taken), faceOf(effect));
        EXPECT_LE(differenceOf(taken, expectedFace(faceOf(effect))).largest, 4);
    }
}

TEST_F(Snapshot, ShowsParametersThatAreSet) {
    ReferenceDelay effect;
    effect.setProgram(25);
    effect.setParameter(8, 0.0f);
    effect.setParameter(0, 1.0f);
    effect.setParameter(5, 1.0f);
    effect.setParameter(6, 0.251f);
    const ScreenPart taken = picture({"--program", "Punk", "--set", "mix=0", "--set", "Delay=1",
                                      "--set", "highPass Type=1", "--set", "Left/Right=0.251"});
    EXPECT_EQ(shownControls(taken), faceOf(effect));
}

TEST_F(Snapshot, WithoutSettingsShowsTheEditorAsItOpens) {
    EXPECT_EQ(shownControls(picture({})), kSlapBack);
}

TEST_F(Snapshot, TakesTheDisplayThatIsThere) {
    const ScreenPart inMemory = picture({"--program", "Bubbly"});
    XServer server;
    const int windows = windowsOnScreen();
    // A server of its own is not to be had.
    const ScreenPart onScreen = picture(
        {"--program", "Bubbly"}, {"DISPLAY=" + server.display(), pathWithServer("exit 1\n")});
    EXPECT_EQ(differenceOf(onScreen, inMemory).largest, 0);
    EXPECT_EQ(windowsOnScreen(), windows);
}

TEST_F(Snapshot, HasTheDisplayBeforeThePluginIsMade) {
    EXPECT_EQ(onlyColour(painted("Early")), 0xFFFF00u);
}

TEST_F(Snapshot, ShowsTheEditorAndNotWhatLiesOnTopOfIt) {
    const XServer server;
    const int windows = windowsOnScreen();
    Process::Options options;
    options.environment = kEnvironment;
    options.environment.push_back("DISPLAY=" + server.display());
    Process run = startTvhost({"snapshot", out, "--plugin", testPlugin("Painter")}, options);
    while (windowsOnScreen() == windows) {
        usleep(1000);
    }
    const HostWindow cover(0, 0);
    EXPECT_EQ(run.wait().status, 0);
    EXPECT_EQ(onlyColour(pictureIn(out)), 0xFFFF00u);
}

TEST_F(Snapshot, OfAnyPluginHasItsColourAndSize) {
    const ScreenPart plain = picture({"--plugin", testPlugin("Painter"), "--set", "Red=0.5"});
    EXPECT_EQ(plain.width, 120);
    EXPECT_EQ(plain.height, 80);
    EXPECT_EQ(onlyColour(plain), 0x7FFF00u); // green: it has processed
}

TEST_F(Snapshot, FollowsAnEditorThatTellsItsSizeLate) {
    const ScreenPart late = painted("Late");
    EXPECT_EQ(late.width, 200);
    EXPECT_EQ(late.height, 100);
    EXPECT_EQ(onlyColour(late), 0xFFFF00u);
}

TEST_F(Snapshot, GrantsAnEditorTheSizeItAsksFor) {
    const ScreenPart grown = painted("Growing");
    EXPECT_EQ(grown.width, 160);
    EXPECT_EQ(grown.height, 90);
    EXPECT_EQ(onlyColour(grown), 0xFFFF00u);
}

TEST_F(Snapshot, BelievesAWindowMoreThanAnAnswer) {
    EXPECT_EQ(onlyColour(painted("Untrue")), 0xFFFF00u);
}

TEST_F(Snapshot, TakesAnEditorThatNeverRestsAsItIs) {
    EXPECT_EQ(onlyColour(painted("Restless")).value_or(0) & 0xFFFF00u, 0xFFFF00u);
}

TEST_F(Snapshot, RefusesAnEditorThatDoesNotOpen) {
    writeFile(out, "older");
    expectRefusal(take({"--plugin", testPlugin("Painter"), "--program", "Refusing"}),
                  "did not open its editor", "works on X11");
    EXPECT_EQ(readFile(out), "older");
}

TEST_F(Snapshot, RefusesAnEditorThatPaintsNothing) {
    expectRefusal(take({"--plugin", testPlugin("Painter"), "--program", "Empty"}),
                  "painted nothing", "works on X11");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{});
}

TEST_F(Snapshot, SaysThatXvfbIsMissing) {
    expectRefusal(take({}, {"PATH=" + folder.path().string()}), "no Xvfb",
                  "install the Debian package xvfb");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{});
}

TEST_F(Snapshot, SaysThatXvfbDoesNotStart) {
    expectRefusal(take({}, {pathWithServer("exit 1\n")}), "Xvfb doesn't start", "set DISPLAY");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"bin"});
}

TEST_F(Snapshot, RefusesADisplayThatIsNotThere) {
    expectRefusal(take({}, {"DISPLAY=:4711"}), "display \":4711\" cannot be opened", "DISPLAY");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{});
}

TEST_F(Snapshot, RefusesADisplayWithoutTrueColours) {
    const XServer server("800x600x8");
    expectRefusal(take({}, {"DISPLAY=" + server.display()}), "no true colours", "set DISPLAY");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{});
}

TEST_F(Snapshot, RefusesADisplayThatIsTooSmall) {
    const XServer server("300x300x24");
    expectRefusal(take({}, {"DISPLAY=" + server.display()}), "344 by 400 pixels", "larger display");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{});
}

TEST_F(Snapshot, EndsItsServerWithItself) {
    const std::string server =
        pathWithServer("echo $$ > " + folder.file("pid") + "\nexec /usr/bin/Xvfb \"$@\"\n");
    picture({}, {server});
    const pid_t process = std::stoi(readFile(folder.file("pid")));
    EXPECT_TRUE(isGone(process));
}

TEST_F(Snapshot, EndsItsServerEvenWhenItIsKilled) {
    const std::string server =
        pathWithServer("echo $$ > " + folder.file("part") + "\nmv " + folder.file("part") + " " +
                       folder.file("pid") + "\nexec /usr/bin/Xvfb \"$@\"\n");
    Process::Options options;
    options.environment = {server};
    Process run = startTvhost(
        {"snapshot", out, "--plugin", testPlugin("Painter"), "--program", "Restless"}, options);
    while (access(folder.file("pid").c_str(), F_OK) != 0) {
        usleep(1000);
    }
    const pid_t process = std::stoi(readFile(folder.file("pid")));
    kill(run.id(), SIGKILL);
    EXPECT_EQ(run.wait().signal, SIGKILL);
    while (!isGone(process)) {
        usleep(1000);
    }
}
