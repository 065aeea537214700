// Which file a plug-in is loaded from.
#pragma once

#include <filesystem>
#include <string>

namespace tvhost {

// The shared object to load for `given`: a file as it stands, a bundle folder resolved to the
// object in its Contents/x86_64-linux, and for an empty text the default plug-in. A text without a
// slash that is no file is a name, without regard to case: of a file or bundle in pluginFolders(),
// the first of them, else what a plug-in there calls itself, which asks them all, so only in a
// process with one thread. Throws UserError when there is none, or several that differ.
std::filesystem::path pluginPath(const std::string& given);

// What --help says about it.
constexpr const char* kPluginHelp =
    "VST 2 bundle or .so, or the name of one that 'tvhost list' finds; without it TvDelay.vst "
    "beside tvhost or in the folders of VST_PATH, LXVST_PATH, ~/.vst, ~/.lxvst, and vst and lxvst "
    "in /usr/local/lib and /usr/lib";

} // namespace tvhost
