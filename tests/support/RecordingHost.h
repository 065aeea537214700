// A host that writes down every call that it gets and answers what a test tells it to.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <map>
#include <vector>

struct HostCall {
    AEffect* effect;
    VstInt32 opcode;
    VstInt32 index;
    VstIntPtr value;
    void* ptr;
    float opt;

    bool operator==(const HostCall& other) const {
        return effect == other.effect && opcode == other.opcode && index == other.index &&
               value == other.value && ptr == other.ptr && opt == other.opt;
    }
};

// One at a time: a callback has nothing to find its host by but the process. One thread.
class RecordingHost {
public:
    RecordingHost();
    ~RecordingHost();
    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;

    static VstIntPtr callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt);

    std::vector<HostCall> calls;
    VstIntPtr answer = 0;                    // to every opcode
    std::map<VstInt32, VstIntPtr> answersTo; // to these instead

private:
    static RecordingHost* current;
};
