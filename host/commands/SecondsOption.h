// Options that take a number of seconds.
#pragma once

#include <CLI/App.hpp>

#include <optional>
#include <string>

namespace tvhost {

// The seconds that `text` says, from 0 to `longest`; nothing where it is empty. Throws UserError
// that names `option`.
std::optional<double> secondsFrom(const char* option, const std::string& text, double longest);

// --longest-gap, whose text goes into `text`, and what it says.
void declareLongestGap(CLI::App& command, std::string& text);
double longestGapFrom(const std::string& text);

} // namespace tvhost
