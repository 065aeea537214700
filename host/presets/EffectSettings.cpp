#include "host/presets/EffectSettings.h"

#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectLookup.h"
#include "host/presets/EffectState.h"
#include "host/presets/PresetFile.h"
#include "host/presets/ShownValue.h"

namespace tvhost {

float normalisedValue(const std::string& text, const std::string& where) {
    const auto value = parseNumber(text);
    if (!value || *value < 0.0 || *value > 1.0) {
        throw UserError(where + ": \"" + text + "\" is not a value; give a number from 0 to 1");
    }
    return static_cast<float>(*value);
}

namespace {

constexpr double kSlowestTempo = 1.0;
constexpr double kFastestTempo = 999.0;

double tempoFrom(const std::string& text) {
    const auto tempo = parseNumber(text);
    if (!tempo || *tempo < kSlowestTempo || *tempo > kFastestTempo) {
        throw UserError("--tempo " + text + ": give beats per minute from " +
                        shortNumber(kSlowestTempo, 0) + " to " + shortNumber(kFastestTempo, 0));
    }
    return *tempo;
}

// What `text` means for a parameter: a normalised value, or what the effect shows for one.
float valueFor(const EffectInstance& effect, int index, const std::string& text,
               const std::string& where) {
    if (text.empty() || parseNumber(text)) {
        return normalisedValue(text, where);
    }
    ShownValue shown(effect, index);
    if (const auto value = shown.find(text)) {
        return *value;
    }
    throw UserError(where + ": \"" + text +
                    "\" is not a value; give a number from 0 to 1, or what " +
                    effect.parameterName(index) + " shows, which goes from " + shown.range());
}

} // namespace

void EffectSettings::apply(EffectInstance& effect) const {
    if (!tempo.empty()) {
        effect.setTempo(tempoFrom(tempo));
    }
    if (!program.empty()) {
        effect.setProgram(findProgram(effect, program));
    }
    if (!preset.empty()) {
        loadPreset(effect, readPreset(preset), preset);
    }
    for (const std::string& set : sets) {
        // Names may hold the sign, values may not.
        const std::size_t sign = set.rfind('=');
        if (sign == std::string::npos || sign == 0) {
            throw UserError("--set " + set + ": give NAME=VALUE, such as Mix=0.5");
        }
        const int index = findParameter(effect, set.substr(0, sign));
        effect.setParameter(index, valueFor(effect, index, set.substr(sign + 1), "--set " + set));
    }
}

} // namespace tvhost
