// The effect, with a record of what its editor and its host set.
#pragma once

#include "effect/VstXSynth.h"

#include <ostream>
#include <vector>

struct ParameterWrite {
    VstInt32 index;
    float value;
    bool held; // the editor asked not to be told

    bool operator==(const ParameterWrite& other) const {
        return index == other.index && value == other.value && held == other.held;
    }
};

inline void PrintTo(const ParameterWrite& write, std::ostream* out) {
    *out << write.index << " = " << write.value << (write.held ? " held" : " not held");
}

// One thread.
class RecordingSynth : public VstXSynth {
public:
    RecordingSynth() : VstXSynth(nullptr) {}

    void setParameter(VstInt32 index, float value) override {
        writes.push_back({index, value, editorUpdateHold});
        VstXSynth::setParameter(index, value);
    }

    std::vector<ParameterWrite> writes;
};
