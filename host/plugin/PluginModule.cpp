#include "host/plugin/PluginModule.h"

#include "host/base/PlainText.h"

#include <dlfcn.h>

namespace tvhost {

PluginModule::PluginModule(const std::filesystem::path& file)
    : path_(std::filesystem::absolute(file)),
      handle_(dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) {
        const char* reason = dlerror();
        throw UserError(path_.string() + " cannot be loaded as a plug-in: " +
                        plainText(reason ? reason : "unknown reason") +
                        "; give a VST 2 bundle or .so built for this system");
    }
    entry_ = reinterpret_cast<Entry>(dlsym(handle_, "VSTPluginMain"));
    if (!entry_) {
        dlclose(handle_);
        throw NoEntry(path_.string() +
                      " is not a VST 2 plug-in: it exports no VSTPluginMain; give one that does");
    }
}

PluginModule::~PluginModule() {
    dlclose(handle_);
}

AEffect* PluginModule::createEffect(audioMasterCallback host) const {
    return entry_(host);
}

} // namespace tvhost
