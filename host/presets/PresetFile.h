// Preset files on the disk.
#pragma once

#include "host/presets/Preset.h"

#include <string>

namespace tvhost {

// Reads a preset file. Throws UserError that names it.
Preset readPreset(const std::string& path);

// Writes a preset file; its extension must be that of its kind. Throws UserError.
void writePreset(const std::string& path, const Preset& preset);

// What kind of preset a file of this name is to hold. Throws UserError unless it ends with .fxp or
// .fxb.
Preset::Kind presetKindFor(const std::string& path);

} // namespace tvhost
