// A plug-in file that is loaded.
#pragma once

#include "host/base/UserError.h"
#include "plugin/vst2/AEffect.h"

#include <filesystem>

namespace tvhost {

// Must outlive the effects made from it.
class PluginModule {
public:
    using Entry = AEffect* (*)(audioMasterCallback);

    // Thrown for a shared object that is no VST 2 plug-in at all.
    class NoEntry : public UserError {
    public:
        using UserError::UserError;
    };

    // Loads `file` and finds its entry. Throws UserError when it is no shared object that can be
    // loaded or has neither VSTPluginMain nor main (NoEntry).
    explicit PluginModule(const std::filesystem::path& file);
    ~PluginModule();
    PluginModule(const PluginModule&) = delete;
    PluginModule& operator=(const PluginModule&) = delete;

    const std::filesystem::path& file() const { return path_; }

    // What the entry answers, null included.
    AEffect* createEffect(audioMasterCallback host) const;

private:
    std::filesystem::path path_;
    void* handle_;
    Entry entry_;
};

} // namespace tvhost
