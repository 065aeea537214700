#include "host/commands/EffectOptions.h"

#include "host/plugin/PluginPath.h"

namespace tvhost {

void EffectOptions::declarePlugin(CLI::App& command) {
    command.add_option("--plugin", plugin, kPluginHelp)->type_name("PLUGIN");
}

CLI::Option* EffectOptions::declareProgram(CLI::App& command) {
    return command
        .add_option("--program", settings.program, "Program to select, counted from 0 or by name")
        ->type_name("NUMBER|NAME");
}

void EffectOptions::declareSets(CLI::App& command) {
    command
        .add_option("--set", settings.sets,
                    "Set a parameter, by name or number, to a value from 0 to 1; may be repeated, "
                    "done in the order given and after --program")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

std::shared_ptr<const PluginModule> EffectOptions::load() const {
    return std::make_shared<const PluginModule>(pluginPath(plugin));
}

} // namespace tvhost
