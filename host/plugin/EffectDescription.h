// All that an effect says about itself, for programs and for readers.
#pragma once

#include "host/plugin/EffectInstance.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>

namespace tvhost {

// All that an effect says about itself, with keys that stay as they are from version to version.
// Parameter values keep single precision in their shortest decimal form. `editor` is the size of
// its editor, not usable where that isn't known.
nlohmann::ordered_json describe(const EffectInstance& effect, EditorSize editor);

// The same for reading, in aligned columns.
std::string describeForReading(const EffectInstance& effect, EditorSize editor);

// The number whose shortest decimal form is that of `value`; null for what is not finite, for which
// JSON has no word.
nlohmann::ordered_json jsonValue(float value);

// A unique ID as the four characters that makers give it.
std::string uniqueIdText(std::int32_t id);

// What an effect is, in one word: "instrument", else its category, and "effect" where that is
// unknown.
std::string kindOf(const EffectInstance& effect);

} // namespace tvhost
