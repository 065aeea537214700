#pragma once

#include "host/plugin/EffectInstance.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tvhost {

// All that an effect says about itself, with keys that stay as they are from version to version.
// Parameter values keep single precision in their shortest decimal form.
nlohmann::ordered_json describe(const EffectInstance& effect);

// The same for reading, in aligned columns.
std::string describeForReading(const EffectInstance& effect);

} // namespace tvhost
