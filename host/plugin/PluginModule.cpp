#include "host/plugin/PluginModule.h"

#include "host/base/PlainText.h"
#include "host/plugin/CallLog.h"

#include <dlfcn.h>
#include <link.h>

namespace tvhost {

namespace {

// Whether `symbol` lies in the file itself, not in a library that came with it.
bool isOwn(void* handle, const void* symbol) {
    Dl_info place{};
    link_map* file = nullptr;
    return dladdr(symbol, &place) != 0 && dlinfo(handle, RTLD_DI_LINKMAP, &file) == 0 &&
           reinterpret_cast<ElfW(Addr)>(place.dli_fbase) == file->l_addr;
}

PluginModule::Entry findEntry(void* handle) {
    void* entry = dlsym(handle, "VSTPluginMain");
    if (!entry) {
        // The interface's older name for it, which anything else may have as well.
        entry = dlsym(handle, "main");
        entry = entry && isOwn(handle, entry) ? entry : nullptr;
    }
    return reinterpret_cast<PluginModule::Entry>(entry);
}

} // namespace

PluginModule::PluginModule(const std::filesystem::path& file)
    : path_(std::filesystem::absolute(file)),
      handle_(dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) {
        const char* reason = dlerror();
        throw UserError(path_.string() + " cannot be loaded as a plug-in: " +
                        plainText(reason ? reason : "unknown reason") +
                        "; give a VST 2 bundle or .so built for this system");
    }
    entry_ = findEntry(handle_);
    if (!entry_) {
        dlclose(handle_);
        throw NoEntry(path_.string() + " is not a VST 2 plug-in: it exports neither VSTPluginMain "
                                       "nor main; give one that does");
    }
}

PluginModule::~PluginModule() {
    dlclose(handle_);
}

AEffect* PluginModule::createEffect(audioMasterCallback host) const {
    return createLoggedEffect(entry_, host);
}

} // namespace tvhost
