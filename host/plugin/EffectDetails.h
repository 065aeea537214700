// What a plug-in says about its parts beyond what every plug-in does.
#pragma once

#include "host/plugin/EffectInstance.h"

#include <nlohmann/json.hpp>

namespace tvhost {

// One object for each of the first `count` pins: `index`, `label`, `shortLabel`, `active`,
// `stereo`, and `arrangement`, the interface's number, where the effect tells one; only `index`
// where it tells nothing.
nlohmann::ordered_json describePins(const EffectInstance& effect, EffectInstance::Side side,
                                    int count);

// Each of the interface's words for what a plug-in can do: true, false, or null where it doesn't
// know the word.
nlohmann::ordered_json describeAbilities(const EffectInstance& effect);

// What the effect tells of a parameter's steps, range, place and category; null where it doesn't.
nlohmann::ordered_json describeProperties(const EffectInstance& effect, int parameter);

} // namespace tvhost
