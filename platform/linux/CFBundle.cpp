#include "platform/linux/CFObject.h"
#include "platform/linux/CFURL.h"

#include <CoreFoundation/CFBundle.h>

#include <filesystem>
#include <map>
#include <string>

namespace {

// Bundles by canonical path; made with the first one and never destroyed, since a host may release
// its last editor at exit, after static objects are gone.
std::map<std::string, CFBundleRef>* livingBundles = nullptr;

} // namespace

struct __CFBundle : CFObject {
    explicit __CFBundle(std::string directory) : path(std::move(directory)) {
        livingBundles->emplace(path, this);
    }
    ~__CFBundle() override { livingBundles->erase(path); }

    const std::string path;
};

CFBundleRef CFBundleCreate(CFAllocatorRef allocator, CFURLRef bundleURL) {
    std::error_code error;
    const std::filesystem::path directory = std::filesystem::canonical(bundleURL->path, error);
    if (error || !std::filesystem::is_directory(directory, error)) {
        return nullptr;
    }
    const std::lock_guard<std::recursive_mutex> guard(CFObject::lock());
    if (livingBundles == nullptr) {
        livingBundles = new std::map<std::string, CFBundleRef>;
    }
    const auto found = livingBundles->find(directory.string());
    if (found != livingBundles->end()) {
        CFRetain(found->second);
        return found->second;
    }
    return new __CFBundle(directory.string());
}
