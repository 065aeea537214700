// The option by which commands say how much they do at a time.
#pragma once

#include <CLI/App.hpp>

#include <cstddef>
#include <string>

namespace tvhost {

// Adds --jobs to `command`; `what` begins its description.
void declareJobs(CLI::App& command, std::string& given, const std::string& what);

// The number in `given`, this machine's own where that is empty. Throws UserError.
std::size_t jobsFrom(const std::string& given);

} // namespace tvhost
