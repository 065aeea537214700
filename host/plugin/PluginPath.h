#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tvhost {

// The shared object to load for `given`: a file as it stands, a bundle folder resolved to the
// object in its Contents/x86_64-linux, and for an empty text the default plug-in. Throws UserError
// when there is none.
std::filesystem::path pluginPath(const std::string& given);

// Folders searched for the default plug-in, in this order: that of this program, those of VST_PATH
// and the usual ones of the user and the system.
std::vector<std::filesystem::path> pluginFolders();

} // namespace tvhost
