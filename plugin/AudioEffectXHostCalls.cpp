// AudioEffectX's calls to the host.
#include "plugin/AudioEffectX.h"

// 0 without a host, which every caller below turns into what it answers then.
VstIntPtr AudioEffectX::ask(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                            float opt) {
    return audioMaster != nullptr ? askHost(opcode, index, value, ptr, opt) : 0;
}

void AudioEffectX::wantEvents(VstInt32 filter) {
    ask(audioMasterWantMidi, 0, filter);
}

VstTimeInfo* AudioEffectX::getTimeInfo(VstInt32 filter) {
    return reinterpret_cast<VstTimeInfo*>(ask(audioMasterGetTime, 0, filter));
}

bool AudioEffectX::sendVstEventsToHost(VstEvents* events) {
    return ask(audioMasterProcessEvents, 0, 0, events) == 1;
}

VstInt32 AudioEffectX::tempoAt(VstInt32 pos) {
    return static_cast<VstInt32>(ask(audioMasterTempoAt, 0, pos));
}

VstInt32 AudioEffectX::getNumAutomatableParameters() {
    return static_cast<VstInt32>(ask(audioMasterGetNumAutomatableParameters));
}

VstInt32 AudioEffectX::getParameterQuantization() {
    return static_cast<VstInt32>(ask(audioMasterGetParameterQuantization));
}

bool AudioEffectX::ioChanged() {
    return ask(audioMasterIOChanged) != 0;
}

bool AudioEffectX::needIdle() {
    return ask(audioMasterNeedIdle) != 0;
}

bool AudioEffectX::sizeWindow(VstInt32 width, VstInt32 height) {
    return ask(audioMasterSizeWindow, width, height) != 0;
}

double AudioEffectX::updateSampleRate() {
    const VstIntPtr answer = ask(audioMasterGetSampleRate);
    if (answer > 0) {
        sampleRate = static_cast<float>(answer);
    }
    return sampleRate;
}

VstInt32 AudioEffectX::updateBlockSize() {
    const VstInt32 answer = static_cast<VstInt32>(ask(audioMasterGetBlockSize));
    if (answer > 0) {
        blockSize = answer;
    }
    return blockSize;
}

VstInt32 AudioEffectX::getInputLatency() {
    return static_cast<VstInt32>(ask(audioMasterGetInputLatency));
}

VstInt32 AudioEffectX::getOutputLatency() {
    return static_cast<VstInt32>(ask(audioMasterGetOutputLatency));
}

AEffect* AudioEffectX::getPreviousPlug(VstInt32 input) {
    return reinterpret_cast<AEffect*>(ask(audioMasterGetPreviousPlug));
}

AEffect* AudioEffectX::getNextPlug(VstInt32 output) {
    return reinterpret_cast<AEffect*>(ask(audioMasterGetNextPlug));
}

VstInt32 AudioEffectX::willProcessReplacing() {
    return static_cast<VstInt32>(ask(audioMasterWillReplaceOrAccumulate));
}

VstInt32 AudioEffectX::getCurrentProcessLevel() {
    return static_cast<VstInt32>(ask(audioMasterGetCurrentProcessLevel));
}

VstInt32 AudioEffectX::getAutomationState() {
    return static_cast<VstInt32>(ask(audioMasterGetAutomationState));
}

bool AudioEffectX::offlineStart(VstAudioFile* files, VstInt32 numAudioFiles,
                                VstInt32 numNewAudioFiles) {
    return ask(audioMasterOfflineStart, numNewAudioFiles, numAudioFiles, files) != 0;
}

bool AudioEffectX::offlineRead(VstOfflineTask* task, VstInt32 option, bool readSource) {
    return ask(audioMasterOfflineRead, readSource, option, task) != 0;
}

bool AudioEffectX::offlineWrite(VstOfflineTask* task, VstInt32 option) {
    return ask(audioMasterOfflineWrite, 0, option, task) != 0;
}

VstInt32 AudioEffectX::offlineGetCurrentPass() {
    return ask(audioMasterOfflineGetCurrentPass) != 0 ? 1 : 0;
}

VstInt32 AudioEffectX::offlineGetCurrentMetaPass() {
    return ask(audioMasterOfflineGetCurrentMetaPass) != 0 ? 1 : 0;
}

void AudioEffectX::setOutputSamplerate(float rate) {
    ask(audioMasterSetOutputSampleRate, 0, 0, nullptr, rate);
}

VstSpeakerArrangement* AudioEffectX::getOutputSpeakerArrangement() {
    return reinterpret_cast<VstSpeakerArrangement*>(ask(audioMasterGetOutputSpeakerArrangement));
}

bool AudioEffectX::getHostVendorString(char* text) {
    return ask(audioMasterGetVendorString, 0, 0, text) != 0;
}

bool AudioEffectX::getHostProductString(char* text) {
    return ask(audioMasterGetProductString, 0, 0, text) != 0;
}

VstInt32 AudioEffectX::getHostVendorVersion() {
    return static_cast<VstInt32>(ask(audioMasterGetVendorVersion));
}

VstIntPtr AudioEffectX::hostVendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt) {
    return ask(audioMasterVendorSpecific, index, value, ptr, opt);
}

VstInt32 AudioEffectX::canHostDo(char* text) {
    return ask(audioMasterCanDo, 0, 0, text) != 0 ? 1 : 0;
}

VstInt32 AudioEffectX::getHostLanguage() {
    return static_cast<VstInt32>(ask(audioMasterGetLanguage));
}

void* AudioEffectX::openWindow(VstWindow* window) {
    return reinterpret_cast<void*>(ask(audioMasterOpenWindow, 0, 0, window));
}

bool AudioEffectX::closeWindow(VstWindow* window) {
    return ask(audioMasterCloseWindow, 0, 0, window) != 0;
}

void* AudioEffectX::getDirectory() {
    return reinterpret_cast<void*>(ask(audioMasterGetDirectory));
}

bool AudioEffectX::updateDisplay() {
    return ask(audioMasterUpdateDisplay) != 0;
}

bool AudioEffectX::beginEdit(VstInt32 index) {
    return ask(audioMasterBeginEdit, index) != 0;
}

bool AudioEffectX::endEdit(VstInt32 index) {
    return ask(audioMasterEndEdit, index) != 0;
}

bool AudioEffectX::openFileSelector(VstFileSelect* selection) {
    return selection != nullptr && ask(audioMasterOpenFileSelector, 0, 0, selection) != 0;
}

bool AudioEffectX::closeFileSelector(VstFileSelect* selection) {
    return selection != nullptr && ask(audioMasterCloseFileSelector, 0, 0, selection) != 0;
}

bool AudioEffectX::getChunkFile(void* nativePath) {
    return nativePath != nullptr && ask(audioMasterGetChunkFile, 0, 0, nativePath) != 0;
}

VstSpeakerArrangement* AudioEffectX::getInputSpeakerArrangement() {
    return reinterpret_cast<VstSpeakerArrangement*>(ask(audioMasterGetInputSpeakerArrangement));
}
