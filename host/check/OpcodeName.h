// The published name of what a host can ask of a plug-in.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <string>

namespace tvhost {

// "effOpen" for 0 and so on; "opcode N" for what has no name.
std::string opcodeName(VstInt32 opcode);

} // namespace tvhost
