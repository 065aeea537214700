#include "tests/support/LoadedPlugin.h"

#include "plugin/vst2/HostOpcodes.h"

#include <dlfcn.h>

#include <stdexcept>

LoadedPlugin::LoadedPlugin(const std::string& path)
    : handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) {
        throw std::runtime_error(dlerror());
    }
    entry_ = reinterpret_cast<Entry>(symbol("VSTPluginMain"));
    if (entry_ == nullptr) {
        dlclose(handle_);
        throw std::runtime_error(path + " has no VSTPluginMain");
    }
}

LoadedPlugin::~LoadedPlugin() {
    dlclose(handle_);
}

void* LoadedPlugin::symbol(const char* name) const {
    return dlsym(handle_, name);
}

VstIntPtr plainHost(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float) {
    return opcode == audioMasterVersion ? 2400 : 0;
}
