// The effect: two delay lines with feedback, a low-pass and a high-pass pair inside the loop or
// behind it, crossed outputs, balance, mix and a half-sine sweep.
#pragma once

#include "effect/DelayFields.h"
#include "effect/LineClearing.h"
#include "effect/ParameterIndex.h"
#include "effect/StereoBlock.h"
#include "effect/SweepPass.h"
#include "plugin/AudioEffectX.h"

#include <cstdint>

// Parameters are live working fields: setParameter writes them, and the current program's record,
// on the caller's thread, and the audio thread reads them at each sample. There is no lock; values
// are neither clamped nor smoothed.
class VstXSynth : public AudioEffectX, public DelayFields {
public:
    // Makes all buffers, applies program 0 and makes the editor, closed. `host` may be null. A
    // failed allocation leaves as an exception.
    explicit VstXSynth(audioMasterCallback host);
    // Deletes the editor and what the sweep has kept. Buffers, filters and programs stay to the
    // process's end.
    ~VstXSynth() override;

    void resume() override; // clears the lines; position, side and filter states stay

    // Audio thread. Any `sampleFrames`; at 0 or below no sample is touched. `outputs` may be
    // `inputs`. Allocates only in the first block of a new sample rate.
    void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) override;

    void setParameter(VstInt32 index, float value) override;
    float getParameter(VstInt32 index) override;
    void setProgram(VstInt32 program) override; // out of range: nothing changes
    void setProgramName(char* name) override;   // cut at 24 characters
    void getProgramName(char* name) override;
    // Texts of up to 13 characters: more than kVstMaxParamStrLen.
    void getParameterLabel(VstInt32 index, char* label) override;
    void getParameterDisplay(VstInt32 index, char* text) override;
    void getParameterName(VstInt32 index, char* text) override;

    // `category` makes no difference; `index` must not be negative.
    bool getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text) override;
    bool getOutputProperties(VstInt32 index, VstPinProperties* properties) override;
    VstInt32 getNumMidiInputChannels() override;
    VstInt32 getNumMidiOutputChannels() override;
    bool getEffectName(char* name) override;
    bool getVendorString(char* text) override;
    bool getProductString(char* text) override;
    VstInt32 getVendorVersion() override;
    VstInt32 canDo(char* text) override; // -1 for everything; `text` is not read
    VstInt32 getPlugCategory() override;
    bool hasMidiProgramsChanged(VstInt32 channel) override;
    bool getMidiKeyName(VstInt32 channel, MidiKeyName* key) override;

    // Sets the delay to `value` times the sample rate less one, in whole samples, clears both lines
    // and goes to their start.
    void setDelay(float value);

private:
    void makeLowPassPair();
    void makeHighPassPair();
    void fillSineTable();
    void clearDelayLines();
    void lengthFromDelayTime(float value);
    void makeEditor();
    void notifyEditor(VstInt32 index, float value);

    void followSampleRate();
    void updateSweep();
    void processSample(const StereoBlock& block);
    VstInt32 processSubBlock(const StereoBlock& block, VstInt32 frames);

    LineClearing clearing_;
    SweepPass sweep_;
};
