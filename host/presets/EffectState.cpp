#include "host/presets/EffectState.h"

#include "host/base/UserError.h"
#include "host/plugin/EffectDescription.h"
#include "plugin/vst2/Records.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tvhost {

namespace {

std::string count(std::size_t number, const char* thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

// Whether the preset can be loaded at all, before anything is set.
void requireFit(const EffectInstance& effect, const Preset& preset, const std::string& path) {
    const std::string right = "; give a preset of " + effect.name();
    if (preset.uniqueId != effect.record().uniqueID) {
        throw UserError(path + " belongs to the plug-in \"" + uniqueIdText(preset.uniqueId) +
                        "\", and " + effect.name() + " is \"" +
                        uniqueIdText(effect.record().uniqueID) + "\"" + right);
    }
    const auto requireChunks = [&](bool isChunk) {
        if (isChunk && !effect.keepsChunks()) {
            throw UserError(path + " holds a chunk, and " + effect.name() + " takes none" + right);
        }
    };
    requireChunks(preset.bankChunk.has_value());
    if (preset.kind == Preset::Kind::kBank &&
        preset.programs.size() > static_cast<std::size_t>(effect.programCount())) {
        throw UserError(path + " holds " + count(preset.programs.size(), "program") + ", and " +
                        effect.name() + " has " + std::to_string(effect.programCount()) + right);
    }
    for (const PresetProgram& program : preset.programs) {
        const auto* const values = std::get_if<std::vector<float>>(&program.state);
        requireChunks(!values);
        if (values && values->size() > static_cast<std::size_t>(effect.parameterCount())) {
            throw UserError(path + " holds " + count(values->size(), "parameter") + ", and " +
                            effect.name() + " has " + std::to_string(effect.parameterCount()) +
                            right);
        }
    }
}

void setProgramState(EffectInstance& effect, const PresetProgram& program) {
    if (const auto* const chunk = std::get_if<std::string>(&program.state)) {
        effect.setChunk(EffectInstance::Scope::kProgram, *chunk);
        return;
    }
    effect.setProgramName(program.name);
    const auto& values = std::get<std::vector<float>>(program.state);
    for (std::size_t i = 0; i < values.size(); ++i) {
        effect.setParameter(static_cast<int>(i), values[i]);
    }
}

PresetProgram currentProgramOf(const EffectInstance& effect) {
    PresetProgram program;
    program.name = effect.programName().substr(0, Preset::kLongestName);
    if (effect.keepsChunks()) {
        program.state = effect.chunk(EffectInstance::Scope::kProgram);
        return program;
    }
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(effect.parameterCount()));
    for (int i = 0; i < effect.parameterCount(); ++i) {
        values.push_back(effect.parameter(i));
    }
    program.state = std::move(values);
    return program;
}

} // namespace

void loadPreset(EffectInstance& effect, const Preset& preset, const std::string& path) {
    requireFit(effect, preset, path);
    const bool isBank = preset.kind == Preset::Kind::kBank;
    VstPatchChunkInfo info{};
    info.version = 1;
    info.pluginUniqueID = preset.uniqueId;
    info.pluginVersion = preset.effectVersion;
    info.numElements = preset.bankChunk ? preset.bankChunkPrograms
                       : isBank         ? static_cast<VstInt32>(preset.programs.size())
                                        : effect.parameterCount();
    if (!effect.acceptsPreset(
            isBank ? EffectInstance::Scope::kBank : EffectInstance::Scope::kProgram, info)) {
        throw UserError(effect.name() + " declines " + path + "; give a preset of its own version");
    }
    if (preset.bankChunk) {
        effect.setChunk(EffectInstance::Scope::kBank, *preset.bankChunk);
        return;
    }
    if (!isBank) {
        setProgramState(effect, preset.programs.at(0));
        return;
    }
    const int before = effect.currentProgram();
    for (std::size_t i = 0; i < preset.programs.size(); ++i) {
        effect.setProgram(static_cast<int>(i));
        setProgramState(effect, preset.programs[i]);
    }
    const int selected = preset.currentProgram.value_or(before);
    effect.setProgram(std::clamp(selected, 0, std::max(effect.programCount() - 1, 0)));
}

Preset presetOf(EffectInstance& effect, Preset::Kind kind) {
    Preset preset;
    preset.kind = kind;
    preset.uniqueId = effect.record().uniqueID;
    preset.effectVersion = effect.record().version;
    if (kind == Preset::Kind::kProgram) {
        preset.programs.push_back(currentProgramOf(effect));
        return preset;
    }
    const int current = effect.currentProgram();
    preset.currentProgram = current;
    if (effect.keepsChunks()) {
        preset.bankChunk = effect.chunk(EffectInstance::Scope::kBank);
        preset.bankChunkPrograms = effect.programCount();
        return preset;
    }
    // First, since an effect may forget what was changed when another program is selected.
    const PresetProgram now = currentProgramOf(effect);
    for (int i = 0; i < effect.programCount(); ++i) {
        effect.setProgram(i);
        preset.programs.push_back(i == current ? now : currentProgramOf(effect));
    }
    effect.setProgram(current);
    return preset;
}

} // namespace tvhost
