// tvhost play with the effect's editor open while it sounds.
#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/host/play/JackRecorder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/screen/Mouse.h"
#include "tests/support/screen/ScreenWindows.h"
#include "tests/support/screen/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class PlayEditor : public testing::Test {
protected:
    PlayEditor() { writeSound(file, input); }

    Process play(const std::vector<std::string>& more) const {
        Process::Options options;
        options.environment = {server.environment(), "DISPLAY=" + screen.display(),
                               "ASAN_OPTIONS=detect_leaks=0",
                               "PAINTER_JOURNAL=" + folder.file("journal")};
        std::vector<std::string> arguments = {
            "play",    file, "--loop", "--server", "jack", "--device", JackRecorder::kName,
            "--editor"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return startTvhost(arguments, options);
    }
    // Whether the last of what was recorded is what was played, unchanged.
    bool soundsDry() const {
        constexpr std::size_t kStretch = 8192;
        const std::vector<float> sound = recorder.sound();
        if (sound.size() < 2 * kStretch) {
            return false;
        }
        for (std::size_t i = sound.size() - kStretch; i < sound.size(); ++i) {
            if (sound[i] != input.samples[i % input.samples.size()]) {
                return false;
            }
        }
        return true;
    }

    const TemporaryFolder folder;
    const std::string file = folder.file("in.wav");
    const SoundFile input = noise(2, 30000, 44100, 0.4f, 3);
    XServer screen;
    const JackServer server{44100};
    const JackRecorder recorder{server};
};

} // namespace

TEST_F(PlayEditor, HearsTheKnobsThatAreTurned) {
    Process process = play({"--program", "SlapBack", "--set", "MIX=0.9"});
    const ShownWindow window = awaitWindow("TvDelay");
    ASSERT_TRUE(idleUntil([] {}, [&] { return recorder.sound().size() > input.samples.size(); }));
    EXPECT_FALSE(soundsDry());
    // The mix, down to nothing.
    const Mouse mouse(window.left, window.top + window.height);
    mouse.moveTo(263, 226);
    mouse.press();
    mouse.moveTo(263, 20);
    mouse.release();
    EXPECT_TRUE(idleUntil([] {}, [&] { return soundsDry(); }));
    askToClose(window.handle);
    const ProcessResult result = process.wait();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith(file + ": "));
    EXPECT_THAT(result.out, HasSubstr("\n--program SlapBack --set "));
    EXPECT_THAT(result.out, HasSubstr(" --set MIX=0"));
}

TEST_F(PlayEditor, EndsWhenItsWindowIsClosed) {
    Process process = play({"--plugin", testPlugin("Painter")});
    const ShownWindow window = awaitWindow("Painter \xC3\xA9");
    ASSERT_TRUE(idleUntil([] {}, [&] { return !recorder.sound().empty(); }));
    askToClose(window.handle);
    const ProcessResult result = process.wait();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(readFile(folder.file("journal")), "closed in its window\n");
}
