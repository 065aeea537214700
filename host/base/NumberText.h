// Numbers from text and to text, the same in every locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tvhost {

// The finite decimal number that is the whole of `text`, whatever the locale; nothing for anything
// else, blanks and trailing characters included.
std::optional<double> parseNumber(std::string_view text);
std::optional<std::int64_t> parseWholeNumber(std::string_view text);

// `value` with `digits` digits after the point, whatever the locale: plug-ins may set one.
std::string fixedNumber(double value, int digits);

// `value` with up to `digits` digits after the point, trailing zeros dropped ("0.25", "3",
// "-1.5").
std::string shortNumber(double value, int digits);

// `value` with as few digits as tell it from its neighbours.
std::string exactNumber(float value);

// `amplitude` relative to 1.0 as "-3.2 dB" with `digits` digits after the point; "-inf dB" for 0.
std::string decibelText(double amplitude, int digits = 1);

// 20 log10; -infinity for 0.
double decibels(double amplitude);

} // namespace tvhost
