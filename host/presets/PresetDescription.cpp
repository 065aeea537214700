#include "host/presets/PresetDescription.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/TextTable.h"
#include "host/plugin/EffectDescription.h"

namespace tvhost {

namespace {

std::string contents(const Preset& preset) {
    if (preset.bankChunk) {
        return "bank, a chunk of " + std::to_string(preset.bankChunk->size()) + " bytes";
    }
    if (preset.kind == Preset::Kind::kBank) {
        return "bank of " + std::to_string(preset.programs.size()) + " programs";
    }
    const PresetState& state = preset.programs.at(0).state;
    if (const auto* const chunk = std::get_if<std::string>(&state)) {
        return "program, a chunk of " + std::to_string(chunk->size()) + " bytes";
    }
    return "program of " + std::to_string(std::get<std::vector<float>>(state).size()) +
           " parameters";
}

void addStored(const std::vector<float>& values, std::string& text) {
    TextTable table({true, true});
    table.add({"#", "value"});
    for (std::size_t i = 0; i < values.size(); ++i) {
        table.add({std::to_string(i), fixedNumber(values[i], 6)});
    }
    text += "\nParameters (" + std::to_string(values.size()) + ")\n" + table.text();
}

void addLoaded(const EffectInstance& effect, std::string& text) {
    TextTable table({true, false, true, true, false});
    table.add({"#", "name", "value", "display", "label"});
    for (int i = 0; i < effect.parameterCount(); ++i) {
        table.add({std::to_string(i), effect.parameterName(i), fixedNumber(effect.parameter(i), 6),
                   effect.parameterDisplay(i), effect.parameterLabel(i)});
    }
    text += "\nParameters (" + std::to_string(effect.parameterCount()) + ")\n" + table.text();
}

} // namespace

nlohmann::ordered_json describe(const Preset& preset, const EffectInstance* effect) {
    const bool isBank = preset.kind == Preset::Kind::kBank;
    nlohmann::ordered_json json;
    json["kind"] = isBank ? "bank" : "program";
    json["uniqueId"] = uniqueIdText(preset.uniqueId);
    json["uniqueIdNumber"] = preset.uniqueId;
    json["version"] = preset.effectVersion;
    if (preset.currentProgram) {
        json["currentProgram"] = *preset.currentProgram;
    }
    if (preset.bankChunk) {
        json["chunkBytes"] = preset.bankChunk->size();
        json["programCount"] = preset.bankChunkPrograms;
        return json;
    }
    json["programs"] = nlohmann::ordered_json::array();
    for (const PresetProgram& program : preset.programs) {
        nlohmann::ordered_json entry;
        entry["name"] = plainText(program.name);
        if (const auto* const chunk = std::get_if<std::string>(&program.state)) {
            entry["chunkBytes"] = chunk->size();
        } else {
            entry["parameters"] = nlohmann::ordered_json::array();
            int index = 0;
            for (const float value : std::get<std::vector<float>>(program.state)) {
                nlohmann::ordered_json parameter = {{"index", index}};
                if (effect) {
                    parameter["name"] = effect->parameterName(index);
                }
                parameter["value"] = jsonValue(value);
                entry["parameters"].push_back(parameter);
                ++index;
            }
        }
        json["programs"].push_back(entry);
    }
    return json;
}

std::string describeForReading(const Preset& preset, const EffectInstance* effect) {
    const bool isBank = preset.kind == Preset::Kind::kBank;
    TextTable identity({false, false});
    identity.add({"holds", contents(preset)});
    identity.add({"plug-in", (effect ? effect->name() + ", " : "") + uniqueIdText(preset.uniqueId) +
                                 ", record " + std::to_string(preset.effectVersion)});
    if (preset.currentProgram && isBank) {
        identity.add({"selected", std::to_string(*preset.currentProgram)});
    }
    std::string text = identity.text();
    if (!isBank) {
        const PresetProgram& program = preset.programs.at(0);
        const std::string name = plainText(program.name);
        text = (name.empty() ? "-" : name) + "\n" + text;
        const auto* const values = std::get_if<std::vector<float>>(&program.state);
        if (effect) {
            addLoaded(*effect, text);
        } else if (values) {
            addStored(*values, text);
        }
        return text;
    }
    if (!preset.programs.empty()) {
        TextTable table({true, false});
        for (std::size_t i = 0; i < preset.programs.size(); ++i) {
            table.add({std::to_string(i), plainText(preset.programs[i].name)});
        }
        text += "\nPrograms (" + std::to_string(preset.programs.size()) + ")\n" + table.text();
    }
    return text;
}

} // namespace tvhost
