// VstXSynth's bank of programs. It is live: parameter writes go into the current record.
#include "effect/VstXSynth.h"

#include "plugin/VstText.h"

void VstXSynth::setProgram(VstInt32 program) {
    if (program < 0 || program >= kNumPrograms) {
        return;
    }
    curProgram = program;
    // Each value is taken from the record only when its turn comes: the write of kHighPass changes
    // what the record holds for kLowPassType.
    const DelayProgram& record = programs[program];
    setParameter(kDelay, record.delayTime);
    setParameter(kFeedBack, record.feedBack);
    setParameter(kLowPass, static_cast<float>(record.lowPass));
    setParameter(kHighPass, static_cast<float>(record.highPass));
    setParameter(kLowPassType, record.lowPassType ? 1.0f : 0.0f);
    setParameter(kHighPassType, record.highPassType ? 1.0f : 0.0f);
    setParameter(kLeftRight, static_cast<float>(record.leftRight));
    setParameter(kPanDepth, static_cast<float>(record.panDepth));
    setParameter(kMix, static_cast<float>(record.mix));
}

void VstXSynth::setProgramName(char* name) {
    vst_strncpy(programs[curProgram].name, name, kVstMaxProgNameLen);
}

void VstXSynth::getProgramName(char* name) {
    vst_strncpy(name, programs[curProgram].name, kVstMaxProgNameLen);
}

bool VstXSynth::getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text) {
    if (index >= kNumPrograms) {
        return false;
    }
    vst_strncpy(text, programs[index].name, kVstMaxProgNameLen);
    return true;
}
