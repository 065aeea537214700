// A bare effect for a host to drive. A plug-in derives from it, overrides what it is about and
// exports its entry with EXPORT_EFFECT.
#pragma once

#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/EffectOpcodes.h"
#include "plugin/vst2/HostOpcodes.h"

#include <cstring>
#include <string>

class TestEffect {
public:
    TestEffect(audioMasterCallback master, int inputs, int outputs, int parameters, int programs)
        : host(master) {
        record.magic = kEffectMagic;
        record.dispatcher = [](AEffect* e, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                               void* ptr, float opt) -> VstIntPtr {
            TestEffect* const self = of(e);
            const VstIntPtr answer = self->dispatch(opcode, index, value, ptr, opt);
            if (opcode == effClose) {
                delete self;
            }
            return answer;
        };
        record.setParameter = [](AEffect* e, VstInt32 index, float value) {
            of(e)->setParameter(index, value);
        };
        record.getParameter = [](AEffect* e, VstInt32 index) { return of(e)->getParameter(index); };
        record.processReplacing = [](AEffect* e, float** in, float** out, VstInt32 frames) {
            of(e)->process(in, out, frames);
        };
        record.numInputs = inputs;
        record.numOutputs = outputs;
        record.numParams = parameters;
        record.numPrograms = programs;
        record.flags = effFlagsCanReplacing;
        record.object = this;
        record.uniqueID = packFourCharacters('T', 's', 't', '1');
        record.version = 7;
    }
    virtual ~TestEffect() = default;

    AEffect record{};

protected:
    virtual VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                               float opt) {
        switch (opcode) {
        case effSetSampleRate:
            sampleRate = opt;
            return 0;
        case effGetVstVersion:
            return 2400;
        default:
            return 0;
        }
    }
    virtual void setParameter(int index, float value) {}
    virtual float getParameter(int index) { return 0.0f; }
    // Passes its first inputs through.
    virtual void process(float** in, float** out, int frames) {
        for (int c = 0; c < record.numOutputs; ++c) {
            for (int i = 0; i < frames; ++i) {
                out[c][i] = c < record.numInputs ? in[c][i] : 0.0f;
            }
        }
    }

    static VstIntPtr give(void* ptr, const std::string& text) {
        std::memcpy(ptr, text.c_str(), text.size() + 1);
        return 1;
    }

    audioMasterCallback host;
    float sampleRate = 44100.0f;

private:
    static TestEffect* of(AEffect* effect) { return static_cast<TestEffect*>(effect->object); }
};

#define EXPORT_EFFECT(Effect)                                                                      \
    extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(                      \
        audioMasterCallback host) {                                                                \
        return &(new Effect(host))->record;                                                        \
    }
