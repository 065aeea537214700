// Parameters and programs by the names or numbers that users give.
#pragma once

#include "host/plugin/EffectInstance.h"

#include <string>

namespace tvhost {

// The index of the parameter or program that `text` means: its name without regard to case, or its
// number counted from 0. Throws UserError when there is none or the name stands for several.
int findParameter(const EffectInstance& effect, const std::string& text);
int findProgram(const EffectInstance& effect, const std::string& text);

} // namespace tvhost
