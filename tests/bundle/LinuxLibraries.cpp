#include "tests/bundle/LinuxLibraries.h"

#include <dlfcn.h>

#include <stdexcept>

namespace {

void* opened(const char* library) {
    void* const handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return handle;
}

} // namespace

void* inCxxLibrary(const std::string& symbol) {
    static void* const library = opened("libc++.so.1");
    return dlsym(library, symbol.c_str() + 1);
}

void* inCLibrary(const std::string& symbol) {
    static void* const mathematics = opened("libm.so.6");
    static void* const unwinding = opened("libgcc_s.so.1");
    void* const found = dlsym(mathematics, symbol.c_str() + 1); // and in libc, which libm stands on
    return found != nullptr ? found : dlsym(unwinding, symbol.c_str() + 1);
}
