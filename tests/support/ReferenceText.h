// Numbers to text by cutting a number's exact decimal digits: what the effect's own conversions
// have to agree with.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

// Nothing where the caller's text has to stay as it was.
std::optional<std::string> referenceFloatText(float value);

std::string referenceIntText(std::int32_t value);

// `text` as it stands in a field of `maxLen` + 1 bytes: cut, and zero-filled to the end.
std::string inField(const std::string& text, std::int32_t maxLen);
