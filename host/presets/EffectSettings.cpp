#include "host/presets/EffectSettings.h"

#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectLookup.h"
#include "host/presets/EffectState.h"
#include "host/presets/PresetFile.h"

namespace tvhost {

float normalisedValue(const std::string& text, const std::string& where) {
    const auto value = parseNumber(text);
    if (!value || *value < 0.0 || *value > 1.0) {
        throw UserError(where + ": \"" + text + "\" is not a value; give a number from 0 to 1");
    }
    return static_cast<float>(*value);
}

void EffectSettings::apply(EffectInstance& effect) const {
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
        effect.setParameter(index, normalisedValue(set.substr(sign + 1), "--set " + set));
    }
}

} // namespace tvhost
