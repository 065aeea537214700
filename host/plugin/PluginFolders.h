// Where plug-ins lie on this system.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tvhost {

// The folders that hold plug-ins, the first of them first: the program's own, those of VST_PATH and
// LXVST_PATH, ~/.vst, ~/.lxvst, and vst and lxvst in /usr/local/lib and /usr/lib. They need not
// exist.
std::vector<std::filesystem::path> pluginFolders();

// The folders of pluginFolders() in one line, for a message.
std::string pluginFolderNames();

// The shared object of a bundle folder: that of the bundle's name, else the first by name. Throws
// UserError when it holds none for this system.
std::filesystem::path objectInBundle(const std::filesystem::path& bundle);

// Files that may be plug-ins in `folder` and all folders in it, in the order of their names:
// objects of *.vst bundles and *.so. Links are followed; no file comes twice. Nothing for a folder
// that cannot be read.
std::vector<std::filesystem::path> pluginFilesIn(const std::filesystem::path& folder);

// All that pluginFilesIn() finds in pluginFolders(), no file twice. Of the program's own folder
// only the bundles that lie right in it.
std::vector<std::filesystem::path> pluginFiles();

} // namespace tvhost
