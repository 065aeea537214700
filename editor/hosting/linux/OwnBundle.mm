#include "editor/hosting/linux/OwnBundle.h"

#include "editor/BundlePath.h"
#import "editor/hosting/linux/TarnsBundle.h"
#import "editor/hosting/linux/TarnsX11HostWindow.h"

#include <dlfcn.h>
#include <objc/runtime.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

const char* fileOf(const void* address) {
    Dl_info info;
    return dladdr(address, &info) != 0 ? info.dli_fname : nullptr;
}

// NSBundle looks for Resources right below its directory.
NSBundle* bundleOfFile(const char* file) {
    const auto path = file != nullptr ? bundlePathOf(file) : std::nullopt;
    if (!path) {
        return nil;
    }
    const std::string contents = std::filesystem::absolute(*path) / "Contents";
    return [[TarnsBundle alloc] initWithPath:[NSString stringWithUTF8String:contents.c_str()]];
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
        const char* const file = fileOf(reinterpret_cast<const void*>([TarnsX11HostWindow class]));
        ownBundle = bundleOfFile(file);
        if (ownBundle != nil && ownBundle->_bundleClasses == nil) {
            // NSBundle knows the classes of what it has loaded itself; this was loaded by a host.
            ownBundle->_bundleClasses = classesInFile(file);
        }
    }
}

bool isOwnResource(NSString* file) {
    return ownBundle != nil && [file hasPrefix:[ownBundle resourcePath]];
}
