// The folder that the program was started in.
#pragma once

#include <filesystem>
#include <string>

namespace tvhost {

// Call once, at the start: a plug-in may change the folder of the whole process.
void rememberStartFolder();

// `given` as an absolute path, seen from the folder that the program was started in.
std::filesystem::path fromStartFolder(const std::string& given);

} // namespace tvhost
