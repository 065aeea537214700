// Effects of a plug-in at many settings, as several checks look at them.
#pragma once

#include "host/check/CheckedEffect.h"

#include <functional>
#include <string>

namespace tvhost::checks {

struct SettingCounts {
    int programs; // at most that many, from the first on
    int random;   // random settings, where it has parameters
};

// Each in a new effect, so that none inherits what another has left ringing. `look` is told what is
// set: "in program 3", "with random settings 0".
void eachSetting(CheckRun& run, const CheckedEffect& effect, SettingCounts counts,
                 const std::function<void(CheckedEffect& tried, const std::string& with)>& look);

} // namespace tvhost::checks
