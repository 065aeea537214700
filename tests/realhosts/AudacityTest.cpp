// Audacity in its own window finds the bundle, applies the effect to a file, and has it in
// realtime.
#include "tests/realhosts/HostHome.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/Mouse.h"
#include "tests/support/screen/ScreenWindows.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.hh>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <functional>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr const char* kModule = "/usr/lib/audacity/modules/mod-script-pipe.so";
constexpr auto kPatience = std::chrono::seconds(200); // busy machines take long

// The rack of realtime effects: its button for a new one while it is empty, and its first effect.
constexpr ScreenPlace kAddEffect{127, 146};
constexpr ScreenPlace kFirstEffect{133, 157};

constexpr int kFeedBack = 1;                   // a parameter
constexpr ScreenPlace kFeedBackKnob{178, 226}; // points of the editor

// Where the module for scripts speaks, for each user one pair.
std::string pipeName(const std::string& direction) {
    return "/tmp/audacity_script_pipe." + direction + "." + std::to_string(getuid());
}

// Small windows of its name come earlier, while it still looks for plug-ins; it is named for the
// sound that it has.
std::optional<ShownWindow> mainWindow() {
    for (const ShownWindow& window : shownWindows()) {
        const bool named = window.name.rfind("Audacity", 0) == 0 || window.name == "in";
        if (named && window.width > XServer::kWidth / 2) {
            return window;
        }
    }
    return std::nullopt;
}

// The face in the window of a realtime effect.
std::optional<ShownWindow> editor() {
    const std::optional<ShownWindow> outer = findWindow("TvDelay - in");
    return outer ? innermostWindow(*outer, HostWindow::kWidth, HostWindow::kHeight) : std::nullopt;
}

} // namespace

class Audacity : public testing::Test {
protected:
    void SetUp() override {
        windowManager = home.start("openbox", "openbox.log"); // menus take keys only with one
        ASSERT_TRUE(becomes(windowManagerRuns));
        writeSound();
        fs::create_directory(home.path() / "vst");
        fs::copy(TVDELAY_BUNDLE_FOLDER, home.path() / "vst/TvDelay.vst",
                 fs::copy_options::recursive);
        // The first time it looks for plug-ins, in processes that would all make the pipe anew.
        writeSettings("");
        start();
        ASSERT_TRUE(becomes([] { return mainWindow().has_value(); }));
        audacity.reset();
        fs::remove_all(home.path() / "tmp"); // or it asks about what the first one has left
        writeSettings(moduleSettings());
        fs::remove(pipeName("to")); // what one that was killed has left
        fs::remove(pipeName("from"));
        start();
        ASSERT_TRUE(
            becomes([] { return mainWindow().has_value() && fs::exists(pipeName("from")); }));
        to = open(pipeName("to").c_str(), O_RDWR); // also when nobody reads yet
        from = open(pipeName("from").c_str(), O_RDWR | O_NONBLOCK);
        ASSERT_GE(to, 0);
        ASSERT_GE(from, 0);
    }

    void TearDown() override {
        if (HasFailure()) {
            if (audacity) {
                std::cout << readFile(home.path() / "audacity.log");
            }
            for (const ShownWindow& window : shownWindows()) {
                if (!window.name.empty()) {
                    std::cout << "'" << window.name << "'\n";
                }
            }
        }
        close(to);
        close(from);
        audacity.reset();
        fs::remove(pipeName("to"));
        fs::remove(pipeName("from"));
    }

    void start() { audacity = home.start("VST_PATH=\"$HOME/vst\" exec audacity", "audacity.log"); }

    bool becomes(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + kPatience;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end || (audacity && audacity->exitStatus())) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        return true;
    }

    void send(const std::string& command) const {
        const std::string line = command + "\n";
        if (write(to, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
            throw std::runtime_error("Audacity takes no commands");
        }
    }

    // Adds what has come by now. Answers whether that is a whole answer.
    bool hears(std::string& answer) const {
        char buffer[4096];
        for (ssize_t count; (count = read(from, buffer, sizeof buffer)) > 0;) {
            answer.append(buffer, static_cast<std::size_t>(count));
        }
        const std::size_t end = answer.find("BatchCommand finished");
        return end != std::string::npos && answer.find("\n\n", end) != std::string::npos;
    }

    // What Audacity answers to a command, which may be an error. Throws where it doesn't.
    std::string told(const std::string& command) {
        send(command);
        std::string answer;
        if (!becomes([&] { return hears(answer); })) {
            throw std::runtime_error("Audacity does not answer " + command + ": " + answer);
        }
        return answer;
    }

    void order(const std::string& command) {
        EXPECT_THAT(told(command), testing::HasSubstr("BatchCommand finished: OK")) << command;
    }

    std::string file(const std::string& name) const { return (home.path() / name).string(); }

    bool shows(const FaceControls& controls) {
        return becomes([&] {
            const std::optional<ShownWindow> face = editor();
            return face && showsFace(screenAt(face->left, face->top), controls);
        });
    }

    // From the base angle of 85 degrees, 54 points up.
    static void dragFeedBackToStep71() {
        const ShownWindow face = editor().value();
        const Mouse mouse(face.left, face.top + HostWindow::kHeight);
        mouse.pullUp(kFeedBackKnob.x, kFeedBackKnob.y, 54);
        mouse.release();
    }

    // `place` is from the upper left of what the window holds.
    static void clickInMainWindow(ScreenPlace place) {
        const ShownWindow window = mainWindow().value();
        xdotool({"mousemove", std::to_string(window.left + place.x),
                 std::to_string(window.top + place.y), "click", "1"});
    }

    // Some clicks, on both sides at other times, and a tone.
    void writeSound() const {
        constexpr int kFrames = 48000;
        SndfileHandle sound(file("in.wav"), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 48000);
        std::vector<float> samples(std::size_t{2} * kFrames);
        for (std::size_t i = 0; i < kFrames; ++i) {
            samples[2 * i] = i % 9000 == 0 ? 0.7f : 0.0f;
            samples[2 * i + 1] = 0.2f * std::sin(0.05f * static_cast<float>(i));
        }
        ASSERT_EQ(sound.writef(samples.data(), kFrames), kFrames);
    }

    // No questions, no search for plug-ins of other kinds, and files as they are.
    void writeSettings(const std::string& others) const {
        fs::create_directories(home.path() / ".audacity-data");
        fs::create_directories(home.path() / "tmp");
        std::ofstream(home.path() / ".audacity-data/audacity.cfg")
            << "PrefsVersion=1.1.1r1\n"
            << "[Version]\nMajor=3\nMinor=2\nMicro=4\n"
            << "[GUI]\nShowSplashScreen=0\n"
            << "[Directories]\nTempDir=" << file("tmp") << "\n"
            << "[Quality]\nHQDitherAlgorithmChoice=None\n"
            << "[LADSPA]\nEnable=0\n[LV2]\nEnable=0\n[VAMP]\nEnable=0\n"
            << others;
    }

    // Those of the module for scripts, which counts as known by its file's time.
    static std::string moduleSettings() {
        const ProcessResult time = runProcess("date", {"-r", kModule, "+%Y-%m-%dT%H:%M:%S"});
        EXPECT_EQ(time.status, 0) << time.err;
        return "[Module]\nmod-script-pipe=1\n"
               "[ModulePath]\nmod-script-pipe=" +
               std::string(kModule) + "\n[ModuleDateTime]\nmod-script-pipe=" + time.out;
    }

    // The file is what tvhost makes of the sound by program 0, up to the last of its 16 bits.
    void expectAsRendered(const std::string& path) const {
        const ProcessResult rendering =
            runProcess(TVHOST, {"render", file("in.wav"), file("expected.wav"), "--program", "0",
                                "--tail", "0"});
        ASSERT_EQ(rendering.status, 0) << rendering.err;
        SndfileHandle out(path);
        SndfileHandle expected(file("expected.wav"));
        ASSERT_EQ(out.samplerate(), 48000);
        ASSERT_EQ(out.channels(), 2);
        ASSERT_EQ(out.frames(), expected.frames());
        std::vector<float> have(static_cast<std::size_t>(out.frames()) * 2);
        std::vector<float> wanted(have.size());
        out.readf(have.data(), out.frames());
        expected.readf(wanted.data(), expected.frames());
        float largest = 0.0f;
        for (std::size_t i = 0; i < have.size(); ++i) {
            largest = std::max(largest, std::fabs(have[i] - wanted[i]));
        }
        EXPECT_LE(largest, 1.0f / 32768.0f);
        // The sound itself would not do.
        EXPECT_GT(*std::max_element(have.begin(), have.end()), 0.1f);
        SndfileHandle in(file("in.wav"));
        in.readf(wanted.data(), in.frames());
        EXPECT_NE(have, wanted);
    }

    const XServer screen;
    HostHome home;
    std::unique_ptr<Process> windowManager;
    std::unique_ptr<Process> audacity;
    int to = -1;
    int from = -1;
};

TEST_F(Audacity, ListsTheEffectAndAppliesItToAFileOf48Kilohertz) {
    const std::string answer = told("Help: Command=Tvdelay");
    EXPECT_THAT(answer, testing::HasSubstr("\"name\":\"TvDelay\""));
    EXPECT_THAT(answer, testing::HasSubstr("Audio In: 2, Audio Out: 2"));
    const std::string registry = readFile(home.path() / ".audacity-data/pluginregistry.cfg");
    EXPECT_THAT(registry, testing::HasSubstr("Vendor=Tarnvale Music"));

    order("Import2: Filename=\"" + file("in.wav") + "\"");
    order("SelectAll:");
    order("Tvdelay:");
    order("Export2: Filename=\"" + file("out.wav") + "\" NumChannels=2");

    expectAsRendered(file("out.wav"));
}

// Realtime effects are part of what is exported.
TEST_F(Audacity, HasTheEffectInRealtimeOnATrackAndShowsItsEditor) {
    order("Import2: Filename=\"" + file("in.wav") + "\"");
    order("SelectAll:");
    order("AddRealtimeEffects:");
    clickInMainWindow(kAddEffect);
    xdotool({"key", "--delay", "300", "Down", "Right", "Return"}); // its maker, and it
    order("Export2: Filename=\"" + file("out.wav") + "\" NumChannels=2");
    expectAsRendered(file("out.wav"));

    clickInMainWindow(kFirstEffect);
    EXPECT_TRUE(shows(kSlapBack));
    dragFeedBackToStep71();
    FaceControls moved = kSlapBack;
    moved[kFeedBack] = 90;
    EXPECT_TRUE(shows(moved));
    // Nobody tells Audacity of that.
    order("Export2: Filename=\"" + file("after.wav") + "\" NumChannels=2");
    expectAsRendered(file("after.wav"));
}
