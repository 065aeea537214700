// What somebody has set an effect to by hand, as options and as a file.
#pragma once

#include "host/plugin/EffectInstance.h"
#include "host/presets/EffectSettings.h"

#include <CLI/App.hpp>

#include <memory>
#include <string>
#include <vector>

namespace tvhost {

// Adds --save to a command in which an effect can be changed.
void declareSave(CLI::App& command, std::string& file);

// Throws UserError unless `file`, as given with --save, is empty or names a preset file.
void requirePresetName(const std::string& file);

// Remembers how an effect began, to tell what has changed since.
class KeptSettings {
public:
    // As the command line has set the effect, at `sampleRate`.
    KeptSettings(std::shared_ptr<const PluginModule> module, const EffectSettings& settings,
                 double sampleRate);

    // The options, quoted for a shell, that set a new effect as `effect` is set now: the program
    // and preset that it began with, and a --set for what has changed. Empty when nothing differs
    // from what the command line said.
    std::string optionsFor(const EffectInstance& effect) const;

    // Prints the options, if there are any, and writes the preset file unless `file` is empty.
    void tell(EffectInstance& effect, const std::string& file) const;

private:
    std::vector<float> valuesAfter(const EffectSettings& settings) const;

    std::shared_ptr<const PluginModule> module_;
    EffectSettings settings_;
    double sampleRate_;
    std::vector<float> begun_;
};

} // namespace tvhost
