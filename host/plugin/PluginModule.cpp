#include "host/plugin/PluginModule.h"

#include "host/base/PlainText.h"

#include <dlfcn.h>

namespace tvhost {

PluginModule::PluginModule(const std::filesystem::path& file)
    : path(std::filesystem::absolute(file)), handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!handle) {
        const char* reason = dlerror();
        throw UserError(path.string() + " is no plug-in that can be loaded: " +
                        plainText(reason ? reason : "unknown reason") +
                        "; give a VST 2 bundle or .so built for this system");
    }
    entry = reinterpret_cast<Entry>(dlsym(handle, "VSTPluginMain"));
    if (!entry) {
        dlclose(handle);
        throw NoEntry(path.string() +
                      " is no VST 2 plug-in: it exports no VSTPluginMain; give one that does");
    }
}

PluginModule::~PluginModule() {
    dlclose(handle);
}

AEffect* PluginModule::createEffect(audioMasterCallback host) const {
    return entry(host);
}

} // namespace tvhost
