#include "host/commands/InfoCommand.h"

#include "host/plugin/EffectDescription.h"
#include "host/plugin/EffectInstance.h"
#include "host/plugin/PluginPath.h"
#include "host/plugin/PluginSurvey.h"

#include <iostream>

namespace tvhost {

namespace {

constexpr double kSampleRate = 44100.0;
constexpr int kBlockSize = 512;

} // namespace

CLI::App* InfoCommand::declare(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("info", "Print what a plug-in says about itself");
    command->add_option("PLUGIN", options_.plugin, kPluginHelp)->type_name("");
    command->add_flag("--json", json_, "Print JSON, with keys that stay from version to version");
    options_.declareLog(*command);
    return command;
}

void InfoCommand::run() {
    options_.plugin = pluginPath(options_.plugin).string();
    // First, while this process has no thread of a plug-in's.
    const EditorSize editor = surveyEditorSize(options_.plugin, kUsualAnswerTime);
    EffectInstance effect(options_.load());
    // Effects know their latency only once they run.
    effect.start(kSampleRate, kBlockSize);
    if (json_) {
        std::cout << describe(effect, editor).dump(2) << "\n";
    } else {
        std::cout << describeForReading(effect, editor);
    }
    // What a plug-in does as it closes can't unsay it.
    std::cout.flush();
}

} // namespace tvhost
