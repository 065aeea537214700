// Where a bundle lies, seen from the code inside it.
#pragma once

#include <optional>
#include <string>

// Cuts the file name and the two directories above it (Contents and the system's) off the path of
// the executable. Nothing when the path has fewer than three separators.
std::optional<std::string> bundlePathOf(std::string executablePath);
