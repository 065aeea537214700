// The base of an effect: its record for the host, the first generation of opcodes and the
// conversions from numbers to text.
#pragma once

#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/EffectOpcodes.h"
#include "plugin/vst2/HostOpcodes.h"

class AEffEditor;

// No operation locks. Each runs on whatever thread the host calls it on; the process entries belong
// to the audio thread. No index or pointer is tested unless told: that is the deriving class's
// part.
class AudioEffect {
public:
    // `audioMaster` may be null; the host calls then answer without calling.
    AudioEffect(audioMasterCallback audioMaster, VstInt32 numPrograms, VstInt32 numParams);
    virtual ~AudioEffect(); // deletes the editor
    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;

    virtual VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                 float opt);

    virtual void open() {}
    virtual void close() {}
    virtual void suspend() {}
    virtual void resume() {}
    virtual void setSampleRate(float rate) { sampleRate = rate; }      // Hz
    virtual void setBlockSize(VstInt32 frames) { blockSize = frames; } // largest block to come

    virtual void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) = 0;
    virtual void processDoubleReplacing(double** inputs, double** outputs, VstInt32 sampleFrames) {}

    // Values are normalised to 0 to 1 by convention and are not clamped.
    virtual void setParameter(VstInt32 index, float value) {}
    virtual float getParameter(VstInt32 index) { return 0.0f; }
    // For editors: sets the parameter first and then tells the host, on the caller's thread.
    virtual void setParameterAutomated(VstInt32 index, float value);

    virtual VstInt32 getProgram() { return curProgram; }
    virtual void setProgram(VstInt32 program) { curProgram = program; }
    virtual void setProgramName(char* name) {}
    virtual void getProgramName(char* name) { *name = 0; }
    virtual void getParameterLabel(VstInt32 index, char* label) { *label = 0; }
    virtual void getParameterDisplay(VstInt32 index, char* text) { *text = 0; }
    virtual void getParameterName(VstInt32 index, char* text) { *text = 0; }
    virtual VstInt32 getChunk(void** data, bool isPreset) { return 0; }
    virtual VstInt32 setChunk(void* data, VstInt32 byteSize, bool isPreset) { return 0; }

    virtual void setUniqueID(VstInt32 id) { cEffect.uniqueID = id; }
    virtual void setNumInputs(VstInt32 inputs) { cEffect.numInputs = inputs; }
    virtual void setNumOutputs(VstInt32 outputs) { cEffect.numOutputs = outputs; }
    virtual void canProcessReplacing(bool state) { setFlag(effFlagsCanReplacing, state); }
    virtual void canDoubleReplacing(bool state) { setFlag(effFlagsCanDoubleReplacing, state); }
    virtual void programsAreChunks(bool state) { setFlag(effFlagsProgramChunks, state); }
    virtual void setInitialDelay(VstInt32 samples) { cEffect.initialDelay = samples; }

    virtual AEffEditor* getEditor() { return editor; }
    virtual AEffect* getAeffect() { return &cEffect; }
    virtual float getSampleRate() { return sampleRate; }
    virtual VstInt32 getBlockSize() { return blockSize; }

    virtual VstInt32 getMasterVersion(); // never 0; 1 without a host
    virtual VstInt32 getCurrentUniqueId();
    virtual void masterIdle();

    // Numbers to text, in fields of eight characters, cut and not rounded. `text` holds at least
    // maxLen + 1 bytes; text[maxLen] is zeroed whenever `text` is written.
    virtual void dB2string(float value, char* text, VstInt32 maxLen);   // a gain as decibels
    virtual void Hz2string(float samples, char* text, VstInt32 maxLen); // a period as a frequency
    virtual void ms2string(float samples, char* text, VstInt32 maxLen); // a time in milliseconds
    // Leaves `text` as it is for values below -9999999, above 99999999 and not-a-numbers. Keeps
    // the lowest seven digits of the integer part, six of a negative one.
    virtual void float2string(float value, char* text, VstInt32 maxLen);
    // Zero gives the empty text; 100000000 and more give "Huge!".
    virtual void int2string(VstInt32 value, char* text, VstInt32 maxLen);

    // What the interface has left of its first generation.
    virtual void process(float** inputs, float** outputs, VstInt32 sampleFrames) {} // accumulating
    virtual float getVu() { return 0.0f; }
    virtual void hasVu(bool state) { setFlag(effFlagsHasVu, state); }
    virtual void hasClip(bool state) { setFlag(effFlagsHasClip, state); }
    virtual void canMono(bool state) { setFlag(effFlagsCanMono, state); }
    virtual void setRealtimeQualities(VstInt32 qualities) { cEffect.realQualities = qualities; }
    virtual void setOfflineQualities(VstInt32 qualities) { cEffect.offQualities = qualities; }
    // A pin counts as connected unless the host says otherwise.
    virtual bool isInputConnected(VstInt32 input);
    virtual bool isOutputConnected(VstInt32 output);

    // Takes the editor over, raises or clears effFlagsHasEditor, and does not delete the one
    // before.
    void setEditor(AEffEditor* newEditor);

protected:
    // The host's answer, at full width. `audioMaster` must not be null.
    VstIntPtr askHost(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
        return audioMaster(&cEffect, opcode, index, value, ptr, opt);
    }
    void setFlag(VstInt32 flag, bool state) {
        cEffect.flags = state ? cEffect.flags | flag : cEffect.flags & ~flag;
    }

    audioMasterCallback audioMaster;
    AEffEditor* editor; // owned
    float sampleRate;   // Hz
    VstInt32 blockSize; // frames
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 curProgram;
    AEffect cEffect;

private:
    static VstIntPtr dispatchEffectClass(AEffect* e, VstInt32 opcode, VstInt32 index,
                                         VstIntPtr value, void* ptr, float opt);
    static void processClass(AEffect* e, float** inputs, float** outputs, VstInt32 sampleFrames);
    static void setParameterClass(AEffect* e, VstInt32 index, float value);
    static float getParameterClass(AEffect* e, VstInt32 index);
    static void processClassReplacing(AEffect* e, float** inputs, float** outputs,
                                      VstInt32 sampleFrames);
    static void processClassDoubleReplacing(AEffect* e, double** inputs, double** outputs,
                                            VstInt32 sampleFrames);
};
