// The built plug-in file, loaded as hosts load it.
#pragma once

#include "plugin/vst2/EffectOpcodes.h"
#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>

#include <string>

inline const std::string kPluginPath = TVDELAY_PLUGIN_PATH;

// An instance, closed at the end.
class Instance {
public:
    explicit Instance(const LoadedPlugin& plugin, audioMasterCallback host = plainHost)
        : record_(plugin.entry()(host)) {}
    ~Instance() {
        if (record_ != nullptr) {
            close();
        }
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    AEffect* operator->() const { return record_; }
    AEffect* record() const { return record_; }

    VstIntPtr ask(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                  float opt = 0.0f) const {
        return record_->dispatcher(record_, opcode, index, value, ptr, opt);
    }
    // What the opcode writes as text.
    std::string text(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0) const {
        char bytes[256] = "untouched";
        ask(opcode, index, value, bytes);
        return bytes;
    }
    void set(VstInt32 index, float value) const { record_->setParameter(record_, index, value); }
    float get(VstInt32 index) const { return record_->getParameter(record_, index); }

    // The record must not be used any more afterwards.
    VstIntPtr close() {
        const VstIntPtr answer = ask(effClose);
        record_ = nullptr;
        return answer;
    }

private:
    AEffect* record_;
};

class BuiltPlugin : public testing::Test {
protected:
    LoadedPlugin plugin{kPluginPath};
};
