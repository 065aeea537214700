// Ardour in its own window, with a window manager, shows the editor in a plug-in window.
#include "tests/realhosts/HostHome.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/Mouse.h"
#include "tests/support/screen/ScreenWindows.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <regex>
#include <thread>

namespace {

using Values = std::array<float, 9>; // by parameter

constexpr int kFeedBack = 1;
constexpr int kLowPassType = 4;
constexpr ScreenPlace kFeedBackKnob{178, 226}; // points of the editor
constexpr ScreenPlace kLowPassSwitch{89, 140};

constexpr const char* kEngine = R"xml(<?xml version="1.0" encoding="UTF-8"?>
<Ardour>
  <Config>
    <Option name="try-autostart-engine" value="1"/>
    <Option name="hide-dummy-backend" value="0"/>
    <Option name="discover-plugins-on-start" value="0"/>
  </Config>
  <Extra>
    <AudioMIDISetup>
      <EngineStates>
        <State backend="None (Dummy)" driver="Normal Speed" device="Silence" input-device=""
          output-device="" sample-rate="44100" buffer-size="1024" n-periods="0" input-latency="0"
          output-latency="0" lm-input="" lm-output="" active="1" use-buffered-io="0"
          midi-option="1 in, 1 out, Silence" lru="1">
          <MIDIDevices/>
        </State>
      </EngineStates>
    </AudioMIDISetup>
  </Extra>
</Ardour>
)xml";

// Flat, a processor ahead of the fader has one colour.
constexpr const char* kLooks = R"xml(<?xml version="1.0" encoding="UTF-8"?>
<Ardour>
  <UI>
    <Option name="flat-buttons" value="1"/>
  </UI>
</Ardour>
)xml";
constexpr const char* kWindowManagerLog = "openbox.log";
constexpr const char* kArdourLog = "ardour.log";
constexpr unsigned long kProcessorColour = 0x7C3A3A;

} // namespace

class ArdourEditor : public testing::Test {
protected:
    void TearDown() override {
        if (HasFailure()) {
            printWhatThereWas();
        }
    }

    void SetUp() override {
        const ProcessResult scan =
            home.run("LD_LIBRARY_PATH=/usr/lib/ardour7 timeout 60 "
                     "/usr/lib/ardour7/ardour-vst-scanner -f '" TVDELAY_SO "'");
        ASSERT_EQ(scan.status, 0) << scan.out;
        const ProcessResult made =
            home.run("LXVST_PATH='" TVDELAY_BUNDLE_FOLDER "' TVDELAY_SESSION='" + session.string() +
                     "' timeout 120 ardour7-lua '" TVDELAY_EDITOR_SCRIPT "'");
        ASSERT_EQ(made.status, 0) << made.out;
        const std::filesystem::path settings = home.path() / ".config" / "ardour7";
        writeFile(settings / ".a7", ""); // it has been here before, and welcomes nobody
        writeFile(settings / "config", kEngine);
        writeFile(settings / "ui_config", kLooks);

        windowManager = home.start("openbox", kWindowManagerLog);
        ASSERT_TRUE(becomes(windowManagerRuns)) << readFile(home.path() / kWindowManagerLog);
        startArdour();
    }

    // Opens the session, and with it the plug-in window.
    void startArdour() {
        ardour.reset();
        ardour = home.start("LXVST_PATH='" TVDELAY_BUNDLE_FOLDER
                            "' ardour --no-announcements --no-splash '" +
                                sessionFile.string() + "'",
                            kArdourLog);
        ASSERT_TRUE(becomes([] { return editor() && mainWindow(); }));
    }

    // Waits for what slow machines take long for; in vain when Ardour has ended.
    bool becomes(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(100);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end || (ardour && ardour->exitStatus())) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return true;
    }

    static std::optional<ShownWindow>
    shownWindow(const std::function<bool(const ShownWindow&)>& wanted) {
        for (const ShownWindow& window : shownWindows()) {
            if (wanted(window)) {
                return window;
            }
        }
        return std::nullopt;
    }

    static std::optional<ShownWindow> mainWindow() {
        return shownWindow([](const ShownWindow& window) {
            return window.name == "session - Ardour" || window.name == "*session - Ardour";
        });
    }

    static std::optional<ShownWindow> pluginWindow() {
        return shownWindow(
            [](const ShownWindow& window) { return window.name.rfind("track: TvDelay", 0) == 0; });
    }

    // Where the face lies. Ardour may stretch the editor's window, which is the innermost; the face
    // stays at its upper left.
    static std::optional<ShownWindow> editor() {
        const std::optional<ShownWindow> outer = pluginWindow();
        if (!outer) {
            return std::nullopt;
        }
        const std::optional<ShownWindow> face =
            innermostWindow(*outer, HostWindow::kWidth, HostWindow::kHeight);
        const ShownWindow wholeScreen{0, "", 0, 0, XServer::kWidth, XServer::kHeight};
        return face && wholeScreen.contains(*face) ? face : std::nullopt;
    }

    static std::optional<ScreenPart> editorOnScreen() {
        const std::optional<ShownWindow> face = editor();
        return face ? std::optional(screenAt(face->left, face->top)) : std::nullopt;
    }

    bool shows(const FaceControls& controls) {
        const ScreenPart expected = expectedFace(controls);
        return becomes([&] {
            const std::optional<ScreenPart> shown = editorOnScreen();
            return shown && differenceOf(*shown, expected).largest <= 4;
        });
    }

    static Mouse mouseOverEditor() {
        const ShownWindow face = editor().value();
        return {face.left, face.top + HostWindow::kHeight};
    }

    // From the base angle of 85 degrees, 54 points up: 31 degrees, which is step 71. `shown` but
    // for that is what the editor shows.
    void dragFeedBackToStep71(FaceControls shown) {
        const Mouse mouse = mouseOverEditor();
        mouse.pullUp(kFeedBackKnob.x, kFeedBackKnob.y, 54);
        shown[kFeedBack] = 90;
        EXPECT_TRUE(shows(shown));
        mouse.release();
    }

    void clickLowPassSwitch() {
        const Mouse mouse = mouseOverEditor();
        mouse.moveTo(kLowPassSwitch.x, kLowPassSwitch.y);
        mouse.press();
        mouse.release();
    }

    // Hands Ardour's main window a key, by the name that xdotool knows it by.
    void press(const std::string& key) {
        const unsigned long window = mainWindow().value().handle;
        xdotool({"windowactivate", std::to_string(window)});
        ASSERT_TRUE(becomes([&] { return activeWindow() == window; }));
        xdotool({"key", key});
    }

    void save() {
        const auto changed = [&] {
            std::error_code error;
            return std::filesystem::last_write_time(sessionFile, error);
        };
        const auto before = changed();
        ASSERT_NO_FATAL_FAILURE(press("ctrl+s"));
        ASSERT_TRUE(becomes([&] { return changed() > before; }));
    }

    // The plug-in's values in the session file, as Ardour had them from the effect.
    Values savedValues() const {
        const std::string saved = readFile(sessionFile);
        Values values;
        values.fill(-1.0f);
        std::smatch found;
        const std::regex line("<parameters( param-[^>]*)/>");
        EXPECT_TRUE(std::regex_search(saved, found, line));
        const std::string parameters = found[1];
        const std::regex one("param-([0-8])=\"([^\"]*)\"");
        for (auto each = std::sregex_iterator(parameters.begin(), parameters.end(), one);
             each != std::sregex_iterator(); ++each) {
            values[std::stoul((*each)[1])] = std::stof((*each)[2]);
        }
        return values;
    }

    void closePluginWindow() {
        askToClose(pluginWindow().value().handle);
        ASSERT_TRUE(becomes([] { return !pluginWindow(); }));
    }

    // What opens a processor's window in the mixer at one press.
    void openPluginWindow() {
        const std::optional<ScreenPlace> processor = middleOfBars(kProcessorColour, 40);
        ASSERT_TRUE(processor);
        xdotool({"mousemove", std::to_string(processor->x), std::to_string(processor->y)});
        xdotool({"keydown", "ctrl", "click", "3", "keyup", "ctrl"});
        ASSERT_TRUE(becomes([] { return editor().has_value(); }));
    }

    void quit() {
        ASSERT_NO_FATAL_FAILURE(save());
        ASSERT_NO_FATAL_FAILURE(press("ctrl+q"));
        EXPECT_TRUE(becomes([&] { return ardour->exitStatus().has_value(); }));
        EXPECT_EQ(ardour->exitStatus(), 0);
    }

    void printWhatThereWas() {
        if (const std::optional<ScreenPart> shown = editorOnScreen()) {
            std::cout << "The editor shows, by parameter:";
            for (const int control : shownControls(*shown)) {
                std::cout << " " << control;
            }
            std::cout << "\n";
        }
        for (const ShownWindow& window : shownWindows()) {
            if (window.width > 50 && window.height > 50) {
                std::cout << window.handle << " '" << window.name << "' " << window.width << "x"
                          << window.height << " at " << window.left << "," << window.top << "\n";
            }
        }
        if (ardour) {
            std::cout << "Ardour's output:\n" << readFile(home.path() / kArdourLog);
        }
    }

    const XServer screen;
    HostHome home;
    const std::filesystem::path session = home.path() / "session";
    const std::filesystem::path sessionFile = session / "session.ardour";
    std::unique_ptr<Process> windowManager;
    std::unique_ptr<Process> ardour;
};

TEST_F(ArdourEditor, ShowsItsFaceInAPluginWindow) {
    ASSERT_TRUE(shows(kSlapBack));
    ASSERT_NO_FATAL_FAILURE(quit());
}

TEST_F(ArdourEditor, MouseMovesTheValuesThatArdourSaves) {
    ASSERT_TRUE(shows(kSlapBack));
    ASSERT_NO_FATAL_FAILURE(dragFeedBackToStep71(kSlapBack));
    ASSERT_NO_FATAL_FAILURE(save());
    Values values = kSlapBackSent;
    values[kFeedBack] = 71 * 0.01f;
    EXPECT_EQ(savedValues(), values);
    clickLowPassSwitch();
    FaceControls moved = kSlapBack;
    moved[kFeedBack] = 90;
    moved[kLowPassType] = 1;
    EXPECT_TRUE(shows(moved));
    ASSERT_NO_FATAL_FAILURE(save());
    values[kLowPassType] = 1.0f;
    EXPECT_EQ(savedValues(), values);
    ASSERT_NO_FATAL_FAILURE(quit());
}

TEST_F(ArdourEditor, ClosedWindowComesBackAsItWas) {
    ASSERT_TRUE(shows(kSlapBack));
    ASSERT_NO_FATAL_FAILURE(dragFeedBackToStep71(kSlapBack));
    ASSERT_NO_FATAL_FAILURE(closePluginWindow());
    ASSERT_NO_FATAL_FAILURE(openPluginWindow());
    FaceControls moved = kSlapBack;
    moved[kFeedBack] = 90;
    EXPECT_TRUE(shows(moved));
    ASSERT_NO_FATAL_FAILURE(quit());
}

TEST_F(ArdourEditor, SavedSessionOpensWithItsValues) {
    ASSERT_TRUE(shows(kSlapBack));
    ASSERT_NO_FATAL_FAILURE(dragFeedBackToStep71(kSlapBack));
    ASSERT_NO_FATAL_FAILURE(quit());
    ASSERT_NO_FATAL_FAILURE(startArdour());
    // 71, 37 and 65 hundredths; in double precision 71 and 65 read back as one step less.
    EXPECT_TRUE(shows({8, 88, 46, 81, 0, 0, 63, 0, 127}));
    ASSERT_NO_FATAL_FAILURE(quit());
}
