// The later generations of the interface: their opcodes, each on a virtual operation with a neutral
// default, and their host calls.
#pragma once

#include "plugin/AudioEffect.h"
#include "plugin/vst2/Records.h"

// No field of its own. As in AudioEffect, nothing locks and arguments are not tested unless told.
// Operations marked "host" ask the host on the caller's thread; without a host they answer false, 0
// or null unless told otherwise.
class AudioEffectX : public AudioEffect {
public:
    AudioEffectX(audioMasterCallback host, VstInt32 programCount, VstInt32 parameterCount)
        : AudioEffect(host, programCount, parameterCount) {}

    VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                         float opt) override;
    // Asks for MIDI events when the effect is a synth or says that it receives them.
    void resume() override;

    virtual bool canParameterBeAutomated(VstInt32 index) { return true; }
    virtual bool string2parameter(VstInt32 index, char* text) { return false; }
    virtual bool getParameterProperties(VstInt32 index, VstParameterProperties* p) { return false; }
    virtual bool beginEdit(VstInt32 index); // host
    virtual bool endEdit(VstInt32 index);   // host

    virtual bool getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text) {
        return false;
    }
    virtual bool beginSetProgram() { return false; }
    virtual bool endSetProgram() { return false; }
    virtual VstInt32 beginLoadBank(VstPatchChunkInfo* info) { return 0; }
    virtual VstInt32 beginLoadProgram(VstPatchChunkInfo* info) { return 0; }

    virtual bool ioChanged();            // host
    virtual double updateSampleRate();   // host; stores what it answers, returns the stored rate
    virtual VstInt32 updateBlockSize();  // host; stores what it answers, returns the stored size
    virtual VstInt32 getInputLatency();  // host; samples
    virtual VstInt32 getOutputLatency(); // host; samples
    virtual bool getInputProperties(VstInt32 index, VstPinProperties* properties) { return false; }
    virtual bool getOutputProperties(VstInt32 index, VstPinProperties* properties) { return false; }
    virtual bool setSpeakerArrangement(VstSpeakerArrangement* in, VstSpeakerArrangement* out) {
        return false;
    }
    virtual bool getSpeakerArrangement(VstSpeakerArrangement** in, VstSpeakerArrangement** out) {
        *in = nullptr;
        *out = nullptr;
        return false;
    }
    virtual bool setBypass(bool on) { return false; }
    virtual bool setPanLaw(VstInt32 type, float value) { return false; }
    virtual bool setProcessPrecision(VstInt32 precision) { return false; }
    virtual VstInt32 getNumMidiInputChannels() { return 0; }
    virtual VstInt32 getNumMidiOutputChannels() { return 0; }

    // host; the record stays the host's and is good until the block ends
    virtual VstTimeInfo* getTimeInfo(VstInt32 filter);
    virtual VstInt32 getCurrentProcessLevel(); // host
    virtual VstInt32 getAutomationState();     // host
    virtual VstInt32 processEvents(VstEvents* events) { return 0; }
    virtual VstInt32 startProcess() { return 0; }
    virtual VstInt32 stopProcess() { return 0; }
    virtual bool processVariableIo(VstVariableIo* io) { return false; }
    virtual VstInt32 setTotalSampleToProcess(VstInt32 value) { return value; }

    virtual bool getHostVendorString(char* text);  // host
    virtual bool getHostProductString(char* text); // host
    virtual VstInt32 getHostVendorVersion();       // host
    virtual VstIntPtr hostVendorSpecific(VstInt32 index, VstIntPtr value, void* ptr,
                                         float opt); // host
    virtual VstInt32 canHostDo(char* text);          // host; 1 for any answer but 0, -1 included
    virtual VstInt32 getHostLanguage();              // host

    virtual void isSynth(bool state) { setFlag(effFlagsIsSynth, state); }
    virtual void noTail(bool state) { setFlag(effFlagsNoSoundInStop, state); }
    virtual VstInt32 getGetTailSize() { return 0; }
    virtual void* getDirectory(); // host
    virtual bool getEffectName(char* name) { return false; }
    virtual bool getVendorString(char* text) { return false; }
    virtual bool getProductString(char* text) { return false; }
    virtual VstInt32 getVendorVersion() { return 0; }
    virtual VstIntPtr vendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt) {
        return 0;
    }
    virtual VstInt32 canDo(char* text) { return 0; } // 1 yes, -1 no, 0 unknown
    virtual VstInt32 getVstVersion() { return 2400; }
    virtual VstInt32 getPlugCategory() {
        return (cEffect.flags & effFlagsIsSynth) != 0 ? kPlugCategSynth : kPlugCategUnknown;
    }

    virtual VstInt32 getMidiProgramName(VstInt32 channel, MidiProgramName* name) { return 0; }
    virtual VstInt32 getCurrentMidiProgram(VstInt32 channel, MidiProgramName* name) { return -1; }
    virtual VstInt32 getMidiProgramCategory(VstInt32 channel, MidiProgramCategory* category) {
        return 0;
    }
    virtual bool hasMidiProgramsChanged(VstInt32 channel) { return false; }
    virtual bool getMidiKeyName(VstInt32 channel, MidiKeyName* key) { return false; }

    virtual bool updateDisplay();                             // host
    virtual bool sizeWindow(VstInt32 width, VstInt32 height); // host; pixels
    virtual bool openFileSelector(VstFileSelect* selection);  // host; false for null
    virtual bool closeFileSelector(VstFileSelect* selection); // host; false for null
    virtual VstInt32 getNextShellPlugin(char* name) { return 0; }

    // Releases `*arrangement` and makes a zeroed one of `nbChannels` speakers in its place.
    virtual bool allocateArrangement(VstSpeakerArrangement** arrangement, VstInt32 nbChannels);
    virtual bool deallocateArrangement(VstSpeakerArrangement** arrangement);
    virtual bool copySpeaker(VstSpeakerProperties* to,
                             VstSpeakerProperties* from); // false for null
    // Makes `*to` a copy of `from`; a null `from` gives false and leaves `*to` alone.
    virtual bool matchArrangement(VstSpeakerArrangement** to, VstSpeakerArrangement* from);

    virtual bool offlineRead(VstOfflineTask* task, VstInt32 option, bool readSource); // host
    virtual bool offlineWrite(VstOfflineTask* task, VstInt32 option);                 // host
    virtual bool offlineStart(VstAudioFile* files, VstInt32 numAudioFiles,
                              VstInt32 numNewAudioFiles); // host
    virtual VstInt32 offlineGetCurrentPass();             // host
    virtual VstInt32 offlineGetCurrentMetaPass();         // host
    virtual bool offlineNotify(VstAudioFile* files, VstInt32 numAudioFiles, bool start) {
        return false;
    }
    virtual bool offlinePrepare(VstOfflineTask* tasks, VstInt32 count) { return false; }
    virtual bool offlineRun(VstOfflineTask* tasks, VstInt32 count) { return false; }
    virtual VstInt32 offlineGetNumPasses() { return 0; }
    virtual VstInt32 offlineGetNumMetaPasses() { return 0; }

    virtual void wantEvents(VstInt32 filter);       // host
    virtual VstInt32 tempoAt(VstInt32 pos);         // host
    virtual VstInt32 getNumAutomatableParameters(); // host
    virtual VstInt32 getParameterQuantization();    // host
    virtual VstInt32 getNumCategories() { return 1; }
    virtual bool copyProgram(VstInt32 destination) { return false; }
    virtual bool needIdle();                          // host
    virtual AEffect* getPreviousPlug(VstInt32 input); // host; the argument is not passed on
    virtual AEffect* getNextPlug(VstInt32 output);    // host; the argument is not passed on
    virtual void inputConnected(VstInt32 index, bool state) {}
    virtual void outputConnected(VstInt32 index, bool state) {}
    virtual VstInt32 willProcessReplacing(); // host
    virtual void wantAsyncOperation(bool state) { setFlag(effFlagsExtIsAsync, state); }
    virtual void hasExternalBuffer(bool state) { setFlag(effFlagsExtHasBuffer, state); }
    virtual VstInt32 reportCurrentPosition() { return 0; }
    virtual float* reportDestinationBuffer() { return nullptr; }
    virtual void setOutputSamplerate(float rate);                 // host; Hz
    virtual VstSpeakerArrangement* getInputSpeakerArrangement();  // host
    virtual VstSpeakerArrangement* getOutputSpeakerArrangement(); // host
    virtual void* openWindow(VstWindow* window);                  // host
    virtual bool closeWindow(VstWindow* window);                  // host
    virtual void setBlockSizeAndSampleRate(VstInt32 frames, float rate) {
        blockSize = frames;
        sampleRate = rate;
    }
    virtual bool getErrorText(char* text) { return false; }
    virtual void* getIcon() { return nullptr; }
    virtual bool setViewPosition(VstInt32 x, VstInt32 y) { return false; }
    virtual VstInt32 fxIdle() { return 0; }
    virtual bool keysRequired() { return false; }
    virtual bool getChunkFile(void* nativePath); // host; false for null

    bool sendVstEventsToHost(VstEvents* events); // host; true when the host answers exactly 1

private:
    VstIntPtr ask(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                  float opt = 0.0f);
};
