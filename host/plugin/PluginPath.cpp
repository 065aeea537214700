#include "host/plugin/PluginPath.h"

#include "host/base/ForkedWork.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/plugin/PluginFolders.h"
#include "host/plugin/PluginSurvey.h"

#include <optional>
#include <vector>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* kDefaultBundle = "TvDelay.vst";

fs::path defaultPlugin() {
    for (const fs::path& folder : pluginFolders()) {
        const fs::path bundle = folder / kDefaultBundle;
        std::error_code error;
        if (fs::is_directory(bundle, error)) {
            return objectInBundle(bundle);
        }
    }
    throw UserError(std::string("no plug-in is given and there is no ") + kDefaultBundle + " in " +
                    pluginFolderNames() + "; give the path of a bundle or .so");
}

// The bundle that holds `object`, or `object` itself.
fs::path bundleOf(const fs::path& object) {
    for (fs::path folder = object.parent_path(); folder.has_relative_path();
         folder = folder.parent_path()) {
        if (folder.extension() == ".vst") {
            return folder;
        }
    }
    return object;
}

bool isCalled(const fs::path& file, const std::string& name) {
    for (const fs::path& path : {file, bundleOf(file)}) {
        if (equalWithoutCase(path.filename().string(), name) ||
            equalWithoutCase(path.stem().string(), name)) {
            return true;
        }
    }
    return false;
}

std::optional<fs::path> pluginThatSaysItIs(const std::string& name,
                                           const std::vector<fs::path>& files) {
    const std::string wanted = plainText(name);
    std::optional<SurveyedPlugin> found;
    for (const SurveyedPlugin& plugin : surveyPlugins(files, usualJobs(), kUsualAnswerTime)) {
        if (!plugin.isPlugin || !plugin.fault.empty() || !equalWithoutCase(plugin.name, wanted)) {
            continue;
        }
        if (found && found->uniqueId != plugin.uniqueId) {
            throw UserError("several plug-ins call themselves \"" + name +
                            "\": " + found->file.string() + " and " + plugin.file.string() +
                            "; give the path of one");
        }
        if (!found) {
            found = plugin;
        }
    }
    return found ? std::optional(found->file) : std::nullopt;
}

fs::path pluginNamed(const std::string& name) {
    const std::vector<fs::path> files = pluginFiles();
    for (const fs::path& file : files) {
        if (isCalled(file, name)) {
            return file;
        }
    }
    if (const auto file = pluginThatSaysItIs(name, files)) {
        return *file;
    }
    throw UserError("there is no plug-in " + name + " here or in " + pluginFolderNames() +
                    "; give the path of a bundle or .so, or a name that 'tvhost list' shows");
}

} // namespace

fs::path pluginPath(const std::string& given) {
    if (given.empty()) {
        return defaultPlugin();
    }
    std::error_code error;
    fs::path path = fs::absolute(given, error).lexically_normal();
    // A trailing slash, as completion leaves it, would make the bundle's name empty.
    if (path.filename().empty()) {
        path = path.parent_path();
    }
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        if (given.find('/') == std::string::npos) {
            return fs::absolute(pluginNamed(given), error);
        }
        throw UserError("there is no plug-in " + given + "; give the path of a bundle or .so");
    }
    if (fs::is_directory(status)) {
        return objectInBundle(path);
    }
    return path;
}

} // namespace tvhost
