#include "host/commands/InfoCommand.h"

#include "host/plugin/EffectDescription.h"
#include "host/plugin/EffectInstance.h"
#include "host/plugin/PluginPath.h"

#include <iostream>
#include <memory>

namespace tvhost {

namespace {

constexpr double kSampleRate = 44100.0;
constexpr int kBlockSize = 512;

} // namespace

CLI::App* InfoCommand::declare(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("info", "Print what a plug-in says about itself");
    command->add_option("PLUGIN", plugin_, kPluginHelp)->type_name("");
    command->add_flag("--json", json_, "Print JSON, with keys that stay from version to version");
    return command;
}

void InfoCommand::run() {
    EffectInstance effect(std::make_shared<const PluginModule>(pluginPath(plugin_)));
    // Effects know their latency only once they run.
    effect.start(kSampleRate, kBlockSize);
    if (json_) {
        std::cout << describe(effect).dump(2) << "\n";
    } else {
        std::cout << describeForReading(effect);
    }
}

} // namespace tvhost
