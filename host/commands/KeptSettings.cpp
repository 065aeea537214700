#include "host/commands/KeptSettings.h"

#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectLookup.h"
#include "host/presets/EffectState.h"
#include "host/presets/PresetFile.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <set>

namespace tvhost {

namespace {

constexpr int kBlockSize = 512;

std::vector<float> valuesOf(const EffectInstance& effect) {
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(effect.parameterCount()));
    for (int i = 0; i < effect.parameterCount(); ++i) {
        values.push_back(effect.parameter(i));
    }
    return values;
}

std::string quoted(const std::string& text) {
    const bool plain = std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isalnum(c) != 0 ||
               std::string("_-+=.,:/@%").find(static_cast<char>(c)) != std::string::npos;
    });
    if (plain && !text.empty()) {
        return text;
    }
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

// NAME=VALUE, with the number where the name means another parameter or none.
std::string assignment(const EffectInstance& effect, int index, float value) {
    std::string name = effect.parameterName(index);
    try {
        if (findParameter(effect, name) != index) {
            name = std::to_string(index);
        }
    } catch (const UserError&) {
        name = std::to_string(index);
    }
    return name + "=" + exactNumber(value);
}

} // namespace

void declareSave(CLI::App& command, std::string& file) {
    command
        .add_option("--save", file,
                    "Preset file to write at the end with what is set then: .fxp for the current "
                    "program, .fxb for all")
        ->type_name("FILE");
}

void requirePresetName(const std::string& file) {
    if (!file.empty()) {
        presetKindFor(file);
    }
}

KeptSettings::KeptSettings(std::shared_ptr<const PluginModule> module,
                           const EffectSettings& settings, double sampleRate)
    : module_(std::move(module)), settings_(settings), sampleRate_(sampleRate),
      begun_(valuesAfter(settings)) {}

std::vector<float> KeptSettings::valuesAfter(const EffectSettings& settings) const {
    EffectInstance effect(module_);
    effect.start(sampleRate_, kBlockSize);
    settings.apply(effect);
    return valuesOf(effect);
}

std::string KeptSettings::optionsFor(const EffectInstance& effect) const {
    const std::vector<float> now = valuesOf(effect);
    if (now == begun_) {
        return {};
    }
    EffectSettings found = settings_;
    found.sets.clear();
    std::set<int> changed;
    // Setting one parameter may move others, so each round adds what is still not as it is here.
    for (bool differs = true; differs;) {
        found.sets.clear();
        for (const int index : changed) {
            found.sets.push_back(assignment(effect, index, now[static_cast<std::size_t>(index)]));
        }
        const std::vector<float> then = valuesAfter(found);
        differs = false;
        for (std::size_t i = 0; i < now.size(); ++i) {
            const bool settable = now[i] >= 0.0f && now[i] <= 1.0f;
            if (settable && then[i] != now[i] && changed.insert(static_cast<int>(i)).second) {
                differs = true;
            }
        }
    }
    std::string options;
    const auto add = [&](const char* option, const std::string& value) {
        if (!value.empty()) {
            options += (options.empty() ? "" : " ") + std::string(option) + " " + quoted(value);
        }
    };
    add("--program", found.program);
    add("--preset", found.preset);
    for (const std::string& set : found.sets) {
        add("--set", set);
    }
    return options;
}

void KeptSettings::tell(EffectInstance& effect, const std::string& file) const {
    const std::string options = optionsFor(effect);
    if (!options.empty()) {
        std::cout << options << "\n";
    }
    if (!file.empty()) {
        writePreset(file, presetOf(effect, presetKindFor(file)));
    }
}

} // namespace tvhost
