#include "host/plugin/PluginPath.h"

#include "host/base/UserError.h"

#include <algorithm>
#include <cstdlib>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* kDefaultBundle = "TvDelay.vst";
constexpr const char* kObjectFolder = "Contents/x86_64-linux";

fs::path objectInBundle(const fs::path& bundle) {
    std::vector<fs::path> objects;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(bundle / kObjectFolder, error)) {
        if (entry.path().extension() == ".so") {
            objects.push_back(entry.path());
        }
    }
    if (objects.empty()) {
        throw UserError(bundle.string() + " is no plug-in bundle for this system: it holds no " +
                        kObjectFolder + "/*.so");
    }
    std::sort(objects.begin(), objects.end());
    const auto named = std::find_if(objects.begin(), objects.end(), [&](const fs::path& object) {
        return object.stem() == bundle.stem();
    });
    return named != objects.end() ? *named : objects.front();
}

fs::path defaultPlugin() {
    std::string searched;
    for (const fs::path& folder : pluginFolders()) {
        const fs::path bundle = folder / kDefaultBundle;
        std::error_code error;
        if (fs::is_directory(bundle, error)) {
            return objectInBundle(bundle);
        }
        searched += (searched.empty() ? "" : ", ") + folder.string();
    }
    throw UserError(std::string("no plug-in is given and there is no ") + kDefaultBundle + " in " +
                    searched + "; give the path of a bundle or .so");
}

} // namespace

std::vector<fs::path> pluginFolders() {
    std::vector<fs::path> folders;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error) {
        folders.push_back(program.parent_path());
    }
    if (const char* list = std::getenv("VST_PATH")) {
        std::string rest = list;
        while (!rest.empty()) {
            const std::size_t colon = std::min(rest.find(':'), rest.size());
            if (colon > 0) {
                folders.emplace_back(rest.substr(0, colon));
            }
            rest.erase(0, colon + 1);
        }
    }
    const char* home = std::getenv("HOME");
    if (home && *home) {
        folders.push_back(fs::path(home) / ".vst");
    }
    folders.emplace_back("/usr/local/lib/vst");
    folders.emplace_back("/usr/lib/vst");
    return folders;
}

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
        throw UserError("there is no plug-in " + given + "; give the path of a bundle or .so");
    }
    if (fs::is_directory(status)) {
        return objectInBundle(path);
    }
    return path;
}

} // namespace tvhost
