// What a preset holds, told to people and to programs.
#pragma once

#include "host/plugin/EffectInstance.h"
#include "host/presets/Preset.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tvhost {

// All that a preset holds but the bytes of chunks, with keys that stay as they are from version to
// version. With `effect`, the one that it has been loaded into, parameters have names too.
nlohmann::ordered_json describe(const Preset& preset, const EffectInstance* effect = nullptr);

// The same for reading. With `effect`, also what the current program's parameters show.
std::string describeForReading(const Preset& preset, const EffectInstance* effect = nullptr);

} // namespace tvhost
