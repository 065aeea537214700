#include "host/commands/EffectOptions.h"

#include "host/plugin/CallLog.h"

namespace tvhost {

void EffectOptions::declarePlugin(CLI::App& command, const std::string& help) {
    command.add_option("--plugin", plugin, help)->type_name("PLUGIN");
}

void EffectOptions::declareLog(CLI::App& command) {
    command
        .add_option("--log", log,
                    "File to write every call between host and plug-in to, as it is made")
        ->type_name("FILE");
}

EffectOptions::SettingOptions EffectOptions::declareSettings(CLI::App& command) {
    SettingOptions options{};
    options.program = command
                          .add_option("--program", settings.program,
                                      "Program to select, counted from 0 or by name")
                          ->type_name("NUMBER|NAME");
    options.preset = command
                         .add_option("--preset", settings.preset,
                                     "Preset file to load after --program: a program (.fxp) or a "
                                     "bank (.fxb)")
                         ->type_name("FILE");
    command
        .add_option("--set", settings.sets,
                    "Set a parameter, by name or number, to a value from 0 to 1 or to what it "
                    "shows, such as \"Time=300 ms\"; may be repeated, done in the order given and "
                    "after --program and --preset")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command
        .add_option("--tempo", settings.tempo,
                    "Tempo that the plug-in is told when it asks; 120 without")
        ->type_name("BPM");
    declareLog(command);
    return options;
}

std::shared_ptr<const PluginModule> EffectOptions::load() const {
    if (!log.empty()) {
        logCallsInto(log);
    }
    return std::make_shared<const PluginModule>(pluginPath(plugin));
}

} // namespace tvhost
