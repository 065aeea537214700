#include "host/plugin/EffectDescription.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/TextTable.h"
#include "host/plugin/EffectDetails.h"
#include "plugin/vst2/EffectOpcodes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tvhost {

namespace {

struct NamedFlag {
    VstInt32 bit;
    const char* key;
    const char* words;
};

constexpr NamedFlag kFlags[] = {
    {effFlagsHasEditor, "hasEditor", "has an editor"},
    {effFlagsCanReplacing, "canReplacing", "replaces its output"},
    {effFlagsProgramChunks, "programChunks", "keeps its state in chunks"},
    {effFlagsIsSynth, "isSynth", "is an instrument"},
    {effFlagsNoSoundInStop, "noSoundInStop", "is silent when its input is"},
    {effFlagsCanDoubleReplacing, "canDoubleReplacing", "processes double precision"},
};

constexpr const char* kCategories[] = {"unknown",     "effect",         "synth",  "analysis",
                                       "mastering",   "spacializer",    "roomFx", "surroundFx",
                                       "restoration", "offlineProcess", "shell",  "generator"};

std::string categoryName(std::int32_t category) {
    const bool known = category >= 0 && category < static_cast<int>(std::size(kCategories));
    return known ? kCategories[category] : "unknown";
}

std::string orDash(const std::string& text) {
    return text.empty() ? "-" : text;
}

} // namespace

nlohmann::ordered_json jsonValue(float value) {
    if (!std::isfinite(value)) {
        return nullptr;
    }
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    double result = 0.0;
    std::from_chars(text, end, result);
    return result;
}

std::string uniqueIdText(std::int32_t id) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += static_cast<char>(static_cast<std::uint32_t>(id) >> shift & 0xFFu);
    }
    return plainText(text);
}

std::string kindOf(const EffectInstance& effect) {
    if ((effect.record().flags & effFlagsIsSynth) != 0 || effect.category() == kPlugCategSynth) {
        return "instrument";
    }
    const std::string category = categoryName(effect.category());
    return category == "unknown" ? "effect" : category;
}

nlohmann::ordered_json describe(const EffectInstance& effect, EditorSize editor) {
    const AEffect& record = effect.record();
    nlohmann::ordered_json json;
    json["file"] = plainText(effect.module().file().string());
    json["uniqueId"] = uniqueIdText(record.uniqueID);
    json["uniqueIdNumber"] = record.uniqueID;
    json["effectName"] = effect.effectName();
    json["productName"] = effect.productName();
    json["vendorName"] = effect.vendorName();
    json["vendorVersion"] = effect.vendorVersion();
    json["version"] = record.version;
    json["interfaceVersion"] = effect.interfaceVersion();
    json["category"] = categoryName(effect.category());
    json["inputs"] = record.numInputs;
    json["outputs"] = record.numOutputs;
    json["inputPins"] = describePins(effect, EffectInstance::Side::kInput, effect.inputCount());
    json["outputPins"] = describePins(effect, EffectInstance::Side::kOutput, effect.outputCount());
    json["midiInputChannels"] = effect.midiInputs();
    json["midiOutputChannels"] = effect.midiOutputs();
    json["initialDelay"] = record.initialDelay;
    json["tailSize"] = effect.tailSize();
    json["flags"] = nlohmann::ordered_json::object();
    for (const NamedFlag& flag : kFlags) {
        json["flags"][flag.key] = (record.flags & flag.bit) != 0;
    }
    json["canDo"] = describeAbilities(effect);
    json["editor"] = nullptr;
    if (editor.isUsable()) {
        json["editor"] = {{"width", editor.width}, {"height", editor.height}};
    }
    json["currentProgram"] = effect.currentProgram();
    json["parameters"] = nlohmann::ordered_json::array();
    for (int i = 0; i < effect.parameterCount(); ++i) {
        json["parameters"].push_back({{"index", i},
                                      {"name", effect.parameterName(i)},
                                      {"value", jsonValue(effect.parameter(i))},
                                      {"display", effect.parameterDisplay(i)},
                                      {"label", effect.parameterLabel(i)},
                                      {"automatable", effect.isAutomatable(i)},
                                      {"properties", describeProperties(effect, i)}});
    }
    json["programs"] = nlohmann::ordered_json::array();
    const std::vector<std::string> names = effect.programNames();
    for (std::size_t i = 0; i < names.size(); ++i) {
        json["programs"].push_back({{"index", i}, {"name", names[i]}});
    }
    return json;
}

std::string describeForReading(const EffectInstance& effect, EditorSize editor) {
    const AEffect& record = effect.record();
    std::string flags;
    for (const NamedFlag& flag : kFlags) {
        if (record.flags & flag.bit) {
            flags += (flags.empty() ? "" : ", ") + std::string(flag.words);
        }
    }

    TextTable identity({false, false});
    identity.add({"product", orDash(effect.productName())});
    identity.add({"vendor", orDash(effect.vendorName())});
    identity.add({"unique ID",
                  uniqueIdText(record.uniqueID) + " (" + std::to_string(record.uniqueID) + ")"});
    identity.add({"version", std::to_string(effect.vendorVersion()) + ", record " +
                                 std::to_string(record.version)});
    identity.add({"interface", "VST " + std::to_string(effect.interfaceVersion())});
    identity.add({"category", categoryName(effect.category())});
    identity.add({"channels", std::to_string(record.numInputs) + " in, " +
                                  std::to_string(record.numOutputs) + " out"});
    identity.add({"latency", std::to_string(record.initialDelay) + " samples"});
    if (editor.isUsable()) {
        identity.add(
            {"editor", std::to_string(editor.width) + " x " + std::to_string(editor.height)});
    }
    identity.add({"flags", orDash(flags)});
    identity.add({"file", plainText(effect.module().file().string())});
    std::string text = effect.name() + "\n" + identity.text();

    const int parameters = effect.parameterCount();
    text += "\nParameters (" + std::to_string(parameters) + ")\n";
    TextTable parameterTable({true, false, true, true, false});
    if (parameters > 0) {
        parameterTable.add({"#", "name", "value", "display", "label"});
    }
    for (int i = 0; i < parameters; ++i) {
        parameterTable.add({std::to_string(i), orDash(effect.parameterName(i)),
                            fixedNumber(effect.parameter(i), 6), effect.parameterDisplay(i),
                            effect.parameterLabel(i)});
    }
    text += parameterTable.text();

    const std::vector<std::string> names = effect.programNames();
    text += "\nPrograms (" + std::to_string(names.size()) + "), current " +
            std::to_string(effect.currentProgram()) + "\n";
    TextTable programTable({true, false});
    for (std::size_t i = 0; i < names.size(); ++i) {
        programTable.add({std::to_string(i), orDash(names[i])});
    }
    return text + programTable.text();
}

} // namespace tvhost
