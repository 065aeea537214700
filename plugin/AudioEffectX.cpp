#include "plugin/AudioEffectX.h"

#include "plugin/AEffEditor.h"
#include "plugin/Truncation.h"
#include "plugin/VstText.h"

#include <cstring>

namespace {

VstKeyCode keyCodeOf(VstInt32 index, VstIntPtr value, float opt) {
    VstKeyCode keyCode;
    keyCode.character = index;
    keyCode.virt = static_cast<unsigned char>(value);
    keyCode.modifier = static_cast<unsigned char>(truncateToInt32(opt));
    return keyCode;
}

} // namespace

VstIntPtr AudioEffectX::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                   float opt) {
    char* const text = static_cast<char*>(ptr);
    const VstInt32 value32 = static_cast<VstInt32>(value);
    switch (opcode) {
    case effProcessEvents:
        return processEvents(static_cast<VstEvents*>(ptr));
    case effCanBeAutomated:
        return canParameterBeAutomated(index);
    case effString2Parameter:
        return string2parameter(index, text);
    case effGetProgramNameIndexed:
        return getProgramNameIndexed(value32, index, text);
    case effGetInputProperties:
        return getInputProperties(index, static_cast<VstPinProperties*>(ptr));
    case effGetOutputProperties:
        return getOutputProperties(index, static_cast<VstPinProperties*>(ptr));
    case effGetPlugCategory:
        return static_cast<VstIntPtr>(static_cast<std::uint32_t>(getPlugCategory()));
    case effOfflineNotify:
        return offlineNotify(static_cast<VstAudioFile*>(ptr), value32, index != 0);
    case effOfflinePrepare:
        return offlinePrepare(static_cast<VstOfflineTask*>(ptr), value32);
    case effOfflineRun:
        return offlineRun(static_cast<VstOfflineTask*>(ptr), value32);
    case effProcessVarIo:
        return processVariableIo(static_cast<VstVariableIo*>(ptr));
    case effSetSpeakerArrangement:
        return setSpeakerArrangement(reinterpret_cast<VstSpeakerArrangement*>(value),
                                     static_cast<VstSpeakerArrangement*>(ptr));
    case effSetBypass:
        return setBypass(value != 0);
    case effGetEffectName:
        return getEffectName(text);
    case effGetVendorString:
        return getVendorString(text);
    case effGetProductString:
        return getProductString(text);
    case effGetVendorVersion:
        return getVendorVersion();
    case effVendorSpecific:
        return vendorSpecific(index, value, ptr, opt);
    case effCanDo:
        return canDo(text);
    case effGetTailSize:
        return getGetTailSize();
    case effGetParameterProperties:
        return getParameterProperties(index, static_cast<VstParameterProperties*>(ptr));
    case effGetVstVersion:
        return getVstVersion();
    case effEditKeyDown: {
        VstKeyCode keyCode = keyCodeOf(index, value, opt);
        return editor != nullptr && editor->onKeyDown(keyCode);
    }
    case effEditKeyUp: {
        VstKeyCode keyCode = keyCodeOf(index, value, opt);
        return editor != nullptr && editor->onKeyUp(keyCode);
    }
    case effSetEditKnobMode:
        return editor != nullptr && editor->setKnobMode(value32);
    case effGetMidiProgramName:
        return getMidiProgramName(index, static_cast<MidiProgramName*>(ptr));
    case effGetCurrentMidiProgram:
        return getCurrentMidiProgram(index, static_cast<MidiProgramName*>(ptr));
    case effGetMidiProgramCategory:
        return getMidiProgramCategory(index, static_cast<MidiProgramCategory*>(ptr));
    case effHasMidiProgramsChanged:
        return hasMidiProgramsChanged(index);
    case effGetMidiKeyName:
        return getMidiKeyName(index, static_cast<MidiKeyName*>(ptr));
    case effBeginSetProgram:
        return beginSetProgram();
    case effEndSetProgram:
        return endSetProgram();
    case effGetSpeakerArrangement:
        return getSpeakerArrangement(reinterpret_cast<VstSpeakerArrangement**>(value),
                                     static_cast<VstSpeakerArrangement**>(ptr));
    case effShellGetNextPlugin:
        return getNextShellPlugin(text);
    case effStartProcess:
        return startProcess();
    case effStopProcess:
        return stopProcess();
    case effSetTotalSampleToProcess:
        return setTotalSampleToProcess(value32);
    case effSetPanLaw:
        return setPanLaw(value32, opt);
    case effBeginLoadBank:
        return beginLoadBank(static_cast<VstPatchChunkInfo*>(ptr));
    case effBeginLoadProgram:
        return beginLoadProgram(static_cast<VstPatchChunkInfo*>(ptr));
    case effSetProcessPrecision:
        return setProcessPrecision(value32);
    case effGetNumMidiInputChannels:
        return getNumMidiInputChannels();
    case effGetNumMidiOutputChannels:
        return getNumMidiOutputChannels();
    default: // the first generation, and opcodes that were given up
        return AudioEffect::dispatcher(opcode, index, value, ptr, opt);
    }
}

void AudioEffectX::resume() {
    char receivesMidi[] = "receiveVstMidiEvent";
    if ((cEffect.flags & effFlagsIsSynth) != 0 || canDo(receivesMidi) == 1) {
        wantEvents(1);
    }
}

bool AudioEffectX::allocateArrangement(VstSpeakerArrangement** arrangement, VstInt32 nbChannels) {
    delete[] reinterpret_cast<char*>(*arrangement);
    const std::size_t size = offsetof(VstSpeakerArrangement, speakers) +
                             sizeof(VstSpeakerProperties) * static_cast<std::size_t>(nbChannels);
    char* const bytes = new char[size];
    std::memset(bytes, 0, size);
    *arrangement = reinterpret_cast<VstSpeakerArrangement*>(bytes);
    (*arrangement)->numChannels = nbChannels;
    return true;
}

bool AudioEffectX::deallocateArrangement(VstSpeakerArrangement** arrangement) {
    delete[] reinterpret_cast<char*>(*arrangement);
    *arrangement = nullptr;
    return true;
}

bool AudioEffectX::copySpeaker(VstSpeakerProperties* to, VstSpeakerProperties* from) {
    if (to == nullptr || from == nullptr) {
        return false;
    }
    vst_strncpy(to->name, from->name, kVstMaxNameLen - 1);
    to->type = from->type;
    to->azimuth = from->azimuth;
    to->elevation = from->elevation;
    to->radius = from->radius;
    to->reserved = from->reserved;
    std::memcpy(to->future, from->future, sizeof(to->future));
    return true;
}

bool AudioEffectX::matchArrangement(VstSpeakerArrangement** to, VstSpeakerArrangement* from) {
    if (from == nullptr) {
        return false;
    }
    if (!deallocateArrangement(to) || !allocateArrangement(to, from->numChannels)) {
        return false;
    }
    (*to)->type = from->type;
    VstSpeakerProperties* copy = (*to)->speakers;
    VstSpeakerProperties* original = from->speakers;
    for (VstInt32 i = 0; i < from->numChannels; ++i, ++copy, ++original) {
        if (!copySpeaker(copy, original)) {
            return false;
        }
    }
    return true;
}
