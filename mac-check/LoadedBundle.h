// The bundle, loaded as hosts load it.
#pragma once

#include "mac-check/ProgramRun.h"
#include "mac-check/Report.h"

class LoadedBundle {
public:
    // Reports what comes of it.
    LoadedBundle(const char* bundle, Report& report);
    LoadedBundle(const LoadedBundle&) = delete;
    LoadedBundle& operator=(const LoadedBundle&) = delete;

    EffectEntry entry() const { return entry_; } // null when it was not loaded

    // Nothing of its code may run any more.
    void unload();

private:
    Report& report_;
    void* handle_;
    EffectEntry entry_ = nullptr;
};
