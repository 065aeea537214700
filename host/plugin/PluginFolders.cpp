#include "host/plugin/PluginFolders.h"

#include "host/base/UserError.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* kObjectFolder = "Contents/x86_64-linux";
// Links that lead in circles are noticed; this bounds folders that only look endless.
constexpr int kDeepestFolder = 16;

void addListed(const char* variable, std::vector<fs::path>& folders) {
    const char* const list = std::getenv(variable);
    std::string rest = list ? list : "";
    while (!rest.empty()) {
        const std::size_t colon = std::min(rest.find(':'), rest.size());
        if (colon > 0) {
            folders.emplace_back(rest.substr(0, colon));
        }
        rest.erase(0, colon + 1);
    }
}

fs::path programFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

std::vector<fs::path> objectsOf(const fs::path& bundle) {
    std::vector<fs::path> objects;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(bundle / kObjectFolder, error)) {
        if (entry.path().extension() == ".so") {
            objects.push_back(entry.path());
        }
    }
    std::sort(objects.begin(), objects.end());
    return objects;
}

// Plug-ins of other interfaces, whose objects are none of ours.
bool isOtherBundle(const fs::path& folder) {
    const fs::path extension = folder.extension();
    return extension == ".vst3" || extension == ".lv2" || extension == ".clap";
}

// Walks folders and remembers what it has met.
class FileSearch {
public:
    enum class Reach { kBundlesOnly, kAll };

    void visit(const fs::path& folder, Reach reach, int depth = 0) {
        if (depth > kDeepestFolder || !isNew(folder)) {
            return;
        }
        std::vector<fs::path> entries;
        std::error_code error;
        for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator();
             at.increment(error)) {
            entries.push_back(at->path());
        }
        std::sort(entries.begin(), entries.end());
        for (const fs::path& entry : entries) {
            const bool isFolder = fs::is_directory(entry, error);
            if (isFolder && entry.extension() == ".vst" && !objectsOf(entry).empty()) {
                add(objectInBundle(entry));
            } else if (reach == Reach::kBundlesOnly) {
                continue;
            } else if (isFolder && !isOtherBundle(entry)) {
                visit(entry, reach, depth + 1);
            } else if (!isFolder && entry.extension() == ".so") {
                add(entry);
            }
        }
    }

    std::vector<fs::path>& files() { return files_; }

private:
    bool isNew(const fs::path& path) {
        std::error_code error;
        const fs::path place = fs::canonical(path, error);
        return !error && met_.insert(place).second;
    }
    void add(const fs::path& file) {
        if (isNew(file)) {
            files_.push_back(file);
        }
    }

    std::set<fs::path> met_;
    std::vector<fs::path> files_;
};

} // namespace

fs::path objectInBundle(const fs::path& bundle) {
    const std::vector<fs::path> objects = objectsOf(bundle);
    if (objects.empty()) {
        throw UserError(bundle.string() + " is not a plug-in bundle for this system: it has no " +
                        kObjectFolder + "/*.so");
    }
    const auto named = std::find_if(objects.begin(), objects.end(), [&](const fs::path& object) {
        return object.stem() == bundle.stem();
    });
    return named != objects.end() ? *named : objects.front();
}

std::vector<fs::path> pluginFolders() {
    std::vector<fs::path> folders;
    const fs::path own = programFolder();
    if (!own.empty()) {
        folders.push_back(own);
    }
    addListed("VST_PATH", folders);
    addListed("LXVST_PATH", folders);
    const char* const home = std::getenv("HOME");
    if (home && *home) {
        folders.push_back(fs::path(home) / ".vst");
        folders.push_back(fs::path(home) / ".lxvst");
    }
    for (const char* folder :
         {"/usr/local/lib/vst", "/usr/local/lib/lxvst", "/usr/lib/vst", "/usr/lib/lxvst"}) {
        folders.emplace_back(folder);
    }
    return folders;
}

std::string pluginFolderNames() {
    std::string names;
    for (const fs::path& folder : pluginFolders()) {
        names += (names.empty() ? "" : ", ") + folder.string();
    }
    return names;
}

std::vector<fs::path> pluginFilesIn(const fs::path& folder) {
    FileSearch search;
    search.visit(folder, FileSearch::Reach::kAll);
    return std::move(search.files());
}

std::vector<fs::path> pluginFiles() {
    FileSearch search;
    const fs::path own = programFolder();
    for (const fs::path& folder : pluginFolders()) {
        search.visit(folder,
                     folder == own ? FileSearch::Reach::kBundlesOnly : FileSearch::Reach::kAll);
    }
    return std::move(search.files());
}

} // namespace tvhost
