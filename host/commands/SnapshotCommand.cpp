#include "host/commands/SnapshotCommand.h"

#include "host/base/UserError.h"
#include "host/plugin/EffectInstance.h"
#include "host/plugin/PluginPath.h"
#include "host/window/HostedEditor.h"
#include "host/window/PngFile.h"
#include "host/window/VirtualDisplay.h"

#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>

namespace tvhost {

namespace {

constexpr int kTurnsPerSecond = 30;
constexpr auto kTurn = std::chrono::milliseconds(1000 / kTurnsPerSecond);
constexpr int kFramesPerTurn = HostedEditor::kSampleRate / kTurnsPerSecond;
constexpr int kTurnsUnchanged = kTurnsPerSecond / 2;
constexpr auto kLongest = std::chrono::seconds(10);

bool displayGiven() {
    const char* const name = std::getenv("DISPLAY");
    return name && *name;
}

// What the editor shows once it has painted and stays as it is. An editor that never rests is taken
// as it is in the end.
ScreenPicture settledPicture(HostedEditor& editor, const std::string& name) {
    ScreenPicture picture;
    int unchanged = 0;
    const auto end = std::chrono::steady_clock::now() + kLongest;
    while (std::chrono::steady_clock::now() < end && unchanged < kTurnsUnchanged) {
        editor.advance(kFramesPerTurn);
        std::this_thread::sleep_for(kTurn);
        ScreenPicture next = editor.window().picture();
        const bool blank = next.isAll(EditorWindow::kBackground);
        unchanged = !blank && next == picture ? unchanged + 1 : 0;
        picture = std::move(next);
    }
    if (picture.isAll(EditorWindow::kBackground)) {
        throw UserError(name + " painted nothing into its editor's window; give a plug-in whose "
                               "editor works on X11");
    }
    return picture;
}

} // namespace

CLI::App* SnapshotCommand::declare(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("snapshot", "Make a picture of an effect's editor");
    command->add_option("OUT", output_, "Picture to write, .png")->required()->type_name("");
    options_.declarePlugin(*command);
    options_.declareSettings(*command);
    command->footer(
        "Without DISPLAY, the editor opens on a display in memory, which Xvfb makes for as long\n"
        "as it takes.\n"
        "\n"
        "  tvhost snapshot canyon.png --program Canyon");
    return command;
}

void SnapshotCommand::run() {
    PngFile::requirePngName(output_);
    const auto file = pluginPath(options_.plugin);
    // Many plug-ins look for the display as they are loaded.
    std::optional<VirtualDisplay> display;
    if (!displayGiven()) {
        display.emplace();
    }
    EffectInstance effect(std::make_shared<const PluginModule>(file));
    HostedEditor::requireEditor(effect);
    effect.start(HostedEditor::kSampleRate, HostedEditor::kBlockSize);
    options_.settings.apply(effect);
    PngFile picture(output_);
    ScreenPicture shown;
    {
        HostedEditor editor(effect, EditorWindow::Kind::kBare);
        editor.applyAgain(options_.settings);
        shown = settledPicture(editor, effect.name());
    }
    picture.write(shown);
}

} // namespace tvhost
