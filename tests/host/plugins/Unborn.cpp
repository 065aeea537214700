// Never becomes an effect. Its file's name tells how: Hang, Throw, Quit, and anything else crashes.
#include "plugin/vst2/AEffect.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <dlfcn.h>
#include <unistd.h>

namespace {

std::string ownName() {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(&ownName), &info);
    const std::string path = info.dli_fname;
    return path.substr(path.rfind('/') + 1);
}

} // namespace

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback) {
    const std::string name = ownName();
    std::puts("Hello from the plug-in");
    std::fflush(stdout);
    if (name.rfind("Hang", 0) == 0) {
        for (;;) {
            pause();
        }
    }
    if (name.rfind("Throw", 0) == 0) {
        throw std::runtime_error("no licence");
    }
    if (name.rfind("Quit", 0) == 0) {
        std::exit(3);
    }
    std::abort();
}
