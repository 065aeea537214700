// What VstXSynth answers when a host asks who it is and what it can do.
#include "effect/VstXSynth.h"

#include "plugin/VstText.h"

bool VstXSynth::getEffectName(char* name) {
    vst_strncpy(name, "TvDelay", kVstMaxEffectNameLen);
    return true;
}

bool VstXSynth::getVendorString(char* text) {
    vst_strncpy(text, "Tarnvale Music", kVstMaxVendorStrLen);
    return true;
}

bool VstXSynth::getProductString(char* text) {
    vst_strncpy(text, "Tarnvale's Delay", kVstMaxProductStrLen);
    return true;
}

VstInt32 VstXSynth::getVendorVersion() {
    return 1000;
}

VstInt32 VstXSynth::canDo(char* text) {
    return -1;
}

VstInt32 VstXSynth::getPlugCategory() {
    return kPlugCategEffect;
}

VstInt32 VstXSynth::getNumMidiInputChannels() {
    return 0;
}

VstInt32 VstXSynth::getNumMidiOutputChannels() {
    return 0;
}

bool VstXSynth::hasMidiProgramsChanged(VstInt32 channel) {
    return false;
}

bool VstXSynth::getMidiKeyName(VstInt32 channel, MidiKeyName* key) {
    key->keyName[0] = 0;
    key->reserved = 0;
    key->flags = 0;
    return false;
}

bool VstXSynth::getOutputProperties(VstInt32 index, VstPinProperties* properties) {
    if (index >= 2) {
        return false;
    }
    constexpr VstInt32 kLimit = kVstMaxLabelLen - 1;
    char number[11] = {};
    vst_strncpy(properties->label, "TvDy ", kLimit);
    int2string(index + 1, number, 10);
    vst_strncat(properties->label, number, kLimit);
    properties->flags = kVstPinIsActive | kVstPinIsStereo;
    return true;
}
