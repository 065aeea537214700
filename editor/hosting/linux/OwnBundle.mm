#include "editor/hosting/linux/OwnBundle.h"

#include "editor/BundlePath.h"
#import "editor/hosting/linux/TarnsBundle.h"

#include <dlfcn.h>
#include <objc/runtime.h>

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace {

const char* fileOf(const void* address) {
    Dl_info info;
    return dladdr(address, &info) != 0 ? info.dli_fname : nullptr;
}

// The file that is mapped at an address, as the kernel knows it: absolute and without links, by
// whatever name a host loaded it and wherever the host has gone since. Empty when that is unknown
// or the file is not there any more.
std::string mappedFileAt(const void* address) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream mappings("/proc/self/maps");
    for (std::string line; std::getline(mappings, line);) {
        std::uintptr_t first = 0, end = 0;
        int path = 0;
        if (std::sscanf(line.c_str(), "%" SCNxPTR "-%" SCNxPTR " %*s %*s %*s %*s %n", &first, &end,
                        &path) == 2 &&
            first <= wanted && wanted < end) {
            std::error_code error;
            line.erase(0, static_cast<std::size_t>(path));
            return std::filesystem::exists(line, error) ? line : "";
        }
    }
    return "";
}

// After an update in place the file has another one under its name: the loader's.
std::string realFileAt(const void* address) {
    std::string mapped = mappedFileAt(address);
    const char* const loaded = fileOf(address);
    if (!mapped.empty() || loaded == nullptr) {
        return mapped;
    }
    std::error_code error;
    return std::filesystem::canonical(loaded, error).string();
}

// NSBundle looks for Resources right below its directory.
NSBundle* bundleAround(const void* address) {
    const auto path = bundlePathOf(realFileAt(address));
    return path ? [[TarnsBundle alloc] initWithFolder:(*path + "/Contents").c_str()] : nil;
}

NSMutableArray* classesInFile(const char* file) {
    NSMutableArray* const found = [[NSMutableArray alloc] init];
    const int count = objc_getClassList(nullptr, 0);
    const auto classes = std::make_unique<Class[]>(static_cast<std::size_t>(count));
    objc_getClassList(classes.get(), count);
    for (int i = 0; i < count; ++i) {
        // The loader gives each file one name, so that the pointers may be compared.
        if (fileOf(reinterpret_cast<const void*>(classes[static_cast<std::size_t>(i)])) == file) {
            [found addObject:[NSValue valueWithPointer:classes[static_cast<std::size_t>(i)]]];
        }
    }
    return found;
}

NSBundle* ownBundle = nil;

} // namespace

void registerOwnBundle() {
    if (ownBundle != nil) {
        return;
    }
    @autoreleasepool {
        // Not this function's file: another copy of this code may have brought the classes.
        const auto* const code = reinterpret_cast<const void*>(objc_getClass("TarnsX11HostWindow"));
        ownBundle = bundleAround(code);
        if (ownBundle != nil && ownBundle->_bundleClasses == nil) {
            // NSBundle knows the classes of what it has loaded itself; this was loaded by a host.
            ownBundle->_bundleClasses = classesInFile(fileOf(code));
        }
    }
}

bool isOwnResource(NSString* file) {
    return ownBundle != nil && [file hasPrefix:[ownBundle resourcePath]];
}
