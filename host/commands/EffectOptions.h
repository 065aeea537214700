// The options by which several commands choose a plug-in and what it is set to.
#pragma once

#include "host/plugin/EffectInstance.h"
#include "host/plugin/PluginPath.h"
#include "host/presets/EffectSettings.h"

#include <CLI/App.hpp>

#include <memory>
#include <string>

namespace tvhost {

struct EffectOptions {
    std::string plugin; // as given; empty for the default one
    EffectSettings settings;
    std::string log; // file for all calls; empty for none

    void declarePlugin(CLI::App& command, const std::string& help = kPluginHelp);
    void declareLog(CLI::App& command);
    // --program, --preset, --set, --tempo and --log.
    struct SettingOptions {
        CLI::Option* program;
        CLI::Option* preset;
    };
    SettingOptions declareSettings(CLI::App& command);

    // Loads the plug-in; each effect made from it is a new one. Throws UserError.
    std::shared_ptr<const PluginModule> load() const;
};

} // namespace tvhost
