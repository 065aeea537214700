#include "host/commands/EditCommand.h"

#include "host/base/StopRequest.h"
#include "host/commands/KeptSettings.h"
#include "host/plugin/EffectInstance.h"
#include "host/window/HostedEditor.h"

#include <algorithm>
#include <chrono>

namespace tvhost {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kTurn = std::chrono::milliseconds(33);
// The longest stretch of sound in one turn, however long the program was held up.
constexpr std::chrono::milliseconds kMostAtOnce(200);

int framesIn(Clock::duration time) {
    const std::chrono::duration<double> seconds = std::min<Clock::duration>(time, kMostAtOnce);
    return static_cast<int>(seconds.count() * HostedEditor::kSampleRate);
}

} // namespace

CLI::App* EditCommand::declare(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("edit", "Show an effect's editor in a window");
    options_.declarePlugin(*command);
    options_.declareSettings(*command);
    declareSave(*command, save_);
    command->footer(
        "The effect runs, on silence, until the window is closed or Ctrl-C. What has been changed\n"
        "then is printed as options for other commands.\n"
        "\n"
        "  tvhost edit --program Canyon");
    return command;
}

void EditCommand::run() {
    requirePresetName(save_);
    const StopRequest stop;
    EffectInstance effect(options_.load());
    HostedEditor::requireEditor(effect);
    effect.start(HostedEditor::kSampleRate, HostedEditor::kBlockSize);
    options_.settings.apply(effect);

    const KeptSettings kept(effect.sharedModule(), options_.settings, HostedEditor::kSampleRate);
    showEditor(effect, stop);
    kept.tell(effect, save_);
}

void EditCommand::showEditor(EffectInstance& effect, const StopRequest& stop) const {
    HostedEditor editor(effect, EditorWindow::Kind::kManaged);
    editor.applyAgain(options_.settings);
    Clock::time_point last = Clock::now();
    while (!stop.made() && !editor.window().closed()) {
        const Clock::time_point now = Clock::now();
        if (now - last >= kTurn) {
            editor.advance(framesIn(now - last));
            last = now;
        } else {
            editor.window().wait(std::chrono::ceil<std::chrono::milliseconds>(last + kTurn - now));
        }
    }
}

} // namespace tvhost
