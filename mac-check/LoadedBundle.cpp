#include "mac-check/LoadedBundle.h"

#include <dlfcn.h>

LoadedBundle::LoadedBundle(const char* bundle, Report& report) : report_(report) {
    char executable[1024];
    std::snprintf(executable, sizeof(executable), "%s/Contents/MacOS/TvDelay", bundle);
    report.heading("Loading");
    report.line("File: %s", executable);
    handle_ = dlopen(executable, RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        report.line("NOT LOADED: %s", dlerror());
        return;
    }
    entry_ = reinterpret_cast<EffectEntry>(dlsym(handle_, "VSTPluginMain"));
    report.line(entry_ == nullptr ? "NOT LOADED: it has no VSTPluginMain" : "Loaded");
}

void LoadedBundle::unload() {
    report_.line("Unloaded: %s", dlclose(handle_) == 0 ? "yes" : dlerror());
}
