// The interface's own words for what host and plug-in ask of each other.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <string>

namespace tvhost {

// "effOpen", "audioMasterVersion"; "opcode 99" for a number that the interface doesn't have.
std::string effectOpcodeName(VstInt32 opcode);
std::string hostOpcodeName(VstInt32 opcode);

} // namespace tvhost
