#include "plugin/AudioEffect.h"

#include "plugin/AEffEditor.h"

#include <cstring>

namespace {

AudioEffect* effectOf(AEffect* e) {
    return static_cast<AudioEffect*>(e->object);
}

} // namespace

AudioEffect::AudioEffect(audioMasterCallback host, VstInt32 programCount, VstInt32 parameterCount)
    : audioMaster(host), editor(nullptr), sampleRate(44100.0f), blockSize(1024),
      numPrograms(programCount), numParams(parameterCount), curProgram(0) {
    std::memset(&cEffect, 0, sizeof(cEffect));
    cEffect.magic = kEffectMagic;
    cEffect.dispatcher = dispatchEffectClass;
    cEffect.process = processClass;
    cEffect.setParameter = setParameterClass;
    cEffect.getParameter = getParameterClass;
    cEffect.numPrograms = programCount;
    cEffect.numParams = parameterCount;
    cEffect.numInputs = 1;
    cEffect.numOutputs = 2;
    cEffect.flags = effFlagsCanReplacing;
    cEffect.ioRatio = 1.0f;
    cEffect.object = this;
    cEffect.uniqueID = packFourCharacters('N', 'o', 'E', 'f');
    cEffect.version = 1;
    cEffect.processReplacing = processClassReplacing;
    cEffect.processDoubleReplacing = processClassDoubleReplacing;
}

AudioEffect::~AudioEffect() {
    delete editor;
}

void AudioEffect::setEditor(AEffEditor* newEditor) {
    editor = newEditor;
    setFlag(effFlagsHasEditor, newEditor != nullptr);
}

VstIntPtr AudioEffect::dispatchEffectClass(AEffect* e, VstInt32 opcode, VstInt32 index,
                                           VstIntPtr value, void* ptr, float opt) {
    AudioEffect* effect = effectOf(e);
    const VstIntPtr result = effect->dispatcher(opcode, index, value, ptr, opt);
    if (opcode != effClose) {
        return result;
    }
    delete effect; // and with it the record `e`
    return 1;
}

void AudioEffect::processClass(AEffect* e, float** inputs, float** outputs, VstInt32 sampleFrames) {
    effectOf(e)->process(inputs, outputs, sampleFrames);
}

void AudioEffect::setParameterClass(AEffect* e, VstInt32 index, float value) {
    effectOf(e)->setParameter(index, value);
}

float AudioEffect::getParameterClass(AEffect* e, VstInt32 index) {
    return effectOf(e)->getParameter(index);
}

void AudioEffect::processClassReplacing(AEffect* e, float** inputs, float** outputs,
                                        VstInt32 sampleFrames) {
    effectOf(e)->processReplacing(inputs, outputs, sampleFrames);
}

void AudioEffect::processClassDoubleReplacing(AEffect* e, double** inputs, double** outputs,
                                              VstInt32 sampleFrames) {
    effectOf(e)->processDoubleReplacing(inputs, outputs, sampleFrames);
}

VstIntPtr AudioEffect::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                  float opt) {
    char* const text = static_cast<char*>(ptr);
    switch (opcode) {
    case effOpen:
        open();
        break;
    case effClose:
        close();
        break;
    case effSetProgram:
        if (value < numPrograms) { // no lower bound: a negative number is the deriving class's
            setProgram(static_cast<VstInt32>(value));
        }
        break;
    case effGetProgram:
        return getProgram();
    case effSetProgramName:
        setProgramName(text);
        break;
    case effGetProgramName:
        getProgramName(text);
        break;
    case effGetParamLabel:
        getParameterLabel(index, text);
        break;
    case effGetParamDisplay:
        getParameterDisplay(index, text);
        break;
    case effGetParamName:
        getParameterName(index, text);
        break;
    case effSetSampleRate:
        setSampleRate(opt);
        break;
    case effSetBlockSize:
        setBlockSize(static_cast<VstInt32>(value));
        break;
    case effMainsChanged:
        if (value == 0) {
            suspend();
        } else {
            resume();
        }
        break;
    case effEditGetRect:
        return editor != nullptr && editor->getRect(static_cast<ERect**>(ptr)) ? 1 : 0;
    case effEditOpen:
        return editor != nullptr && editor->open(ptr) ? 1 : 0;
    case effEditClose:
        if (editor != nullptr) {
            editor->close();
        }
        break;
    case effEditIdle:
        if (editor != nullptr) {
            editor->idle();
        }
        break;
    case effIdentify:
        return packFourCharacters('N', 'v', 'E', 'f');
    case effGetChunk:
        return getChunk(static_cast<void**>(ptr), index != 0);
    case effSetChunk:
        return setChunk(ptr, static_cast<VstInt32>(value), index != 0);
    default: // effGetVu, the drawing and event opcodes, and everything unknown
        break;
    }
    return 0;
}

void AudioEffect::setParameterAutomated(VstInt32 index, float value) {
    setParameter(index, value);
    if (audioMaster != nullptr) {
        askHost(audioMasterAutomate, index, 0, nullptr, value);
    }
}

VstInt32 AudioEffect::getMasterVersion() {
    VstInt32 version = 1;
    if (audioMaster != nullptr) {
        version = static_cast<VstInt32>(askHost(audioMasterVersion, 0, 0, nullptr, 0.0f));
        if (version == 0) {
            version = 1;
        }
    }
    return version;
}

VstInt32 AudioEffect::getCurrentUniqueId() {
    if (audioMaster == nullptr) {
        return 0;
    }
    return static_cast<VstInt32>(askHost(audioMasterCurrentId, 0, 0, nullptr, 0.0f));
}

void AudioEffect::masterIdle() {
    if (audioMaster != nullptr) {
        askHost(audioMasterIdle, 0, 0, nullptr, 0.0f);
    }
}

bool AudioEffect::isInputConnected(VstInt32 input) {
    return audioMaster == nullptr || askHost(audioMasterPinConnected, input, 0, nullptr, 0.0f) == 0;
}

bool AudioEffect::isOutputConnected(VstInt32 output) {
    return audioMaster == nullptr ||
           askHost(audioMasterPinConnected, output, 1, nullptr, 0.0f) == 0;
}
