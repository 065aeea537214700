// A plug-in file as a host loads it.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <string>

class LoadedPlugin {
public:
    using Entry = AEffect* (*)(audioMasterCallback);

    // Throws std::runtime_error with the loader's own words when the file can't be loaded or has no
    // VSTPluginMain.
    explicit LoadedPlugin(const std::string& path);
    ~LoadedPlugin(); // gives the file back to the loader
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    Entry entry() const { return entry_; }
    void* symbol(const char* name) const; // null when there is none

private:
    void* handle_;
    Entry entry_;
};

// Answers 2400 to the question for the version and 0 to all else; keeps nothing. Any thread.
VstIntPtr plainHost(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                    float opt);
