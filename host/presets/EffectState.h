// What an effect is set to, taken out of it and put back.
#pragma once

#include "host/plugin/EffectInstance.h"
#include "host/presets/Preset.h"

#include <string>

namespace tvhost {

// Gives `effect` what `preset` holds; one of kProgram goes into the current program. `path` names
// the preset in messages. Throws UserError, before anything is set, when the preset is another
// effect's, holds more than the effect has, or a chunk for an effect that takes none, and when the
// effect declines it.
void loadPreset(EffectInstance& effect, const Preset& preset, const std::string& path);

// What `effect` is set to, as a chunk where it keeps its state so. For a bank of parameters each
// program is selected once; the current one comes as it is now.
Preset presetOf(EffectInstance& effect, Preset::Kind kind);

} // namespace tvhost
