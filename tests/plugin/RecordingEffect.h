// An effect that writes down each virtual operation that is called on it and answers what a test
// tells it to.
#pragma once

#include "plugin/AudioEffectX.h"

#include <cstdint>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

// Pointers are written as plain numbers, so that a test can expect them by value.
template <typename Argument>
void writeArgument(std::ostream& out, Argument argument) {
    if constexpr (std::is_pointer_v<Argument>) {
        out << reinterpret_cast<std::uintptr_t>(argument);
    } else if constexpr (std::is_same_v<Argument, bool>) {
        out << (argument ? "true" : "false");
    } else {
        out << argument;
    }
}

template <typename... Arguments>
std::string callText(const char* operation, Arguments... arguments) {
    std::ostringstream out;
    out << operation << '(';
    const char* separator = "";
    ((out << separator, writeArgument(out, arguments), separator = ", "), ...);
    out << ')';
    return out.str();
}

class RecordingEffect : public AudioEffectX {
public:
    explicit RecordingEffect(audioMasterCallback host = nullptr) : AudioEffectX(host, 26, 9) {}
    ~RecordingEffect() override {
        if (destroyed != nullptr) {
            ++*destroyed;
        }
    }

    std::vector<std::string> calls;
    VstIntPtr answer = 0;     // of every operation that answers, cut to its type
    int* destroyed = nullptr; // counts this object's end

    using AudioEffectX::blockSize;
    using AudioEffectX::sampleRate;

    void open() override { note("open"); }
    void close() override { note("close"); }
    void suspend() override { note("suspend"); }
    void resume() override { note("resume"); }
    void setSampleRate(float rate) override { note("setSampleRate", rate); }
    void setBlockSize(VstInt32 frames) override { note("setBlockSize", frames); }
    void processReplacing(float** in, float** out, VstInt32 frames) override {
        note("processReplacing", in, out, frames);
    }
    void processDoubleReplacing(double** in, double** out, VstInt32 frames) override {
        note("processDoubleReplacing", in, out, frames);
    }
    void setParameter(VstInt32 index, float value) override { note("setParameter", index, value); }
    float getParameter(VstInt32 index) override {
        note("getParameter", index);
        return 0.75f;
    }
    void setParameterAutomated(VstInt32 index, float value) override {
        note("setParameterAutomated", index, value);
    }
    VstInt32 getProgram() override { return noted<VstInt32>("getProgram"); }
    void setProgram(VstInt32 program) override { note("setProgram", program); }
    void setProgramName(char* name) override { note("setProgramName", name); }
    void getProgramName(char* name) override { note("getProgramName", name); }
    void getParameterLabel(VstInt32 index, char* label) override {
        note("getParameterLabel", index, label);
    }
    void getParameterDisplay(VstInt32 index, char* text) override {
        note("getParameterDisplay", index, text);
    }
    void getParameterName(VstInt32 index, char* text) override {
        note("getParameterName", index, text);
    }
    VstInt32 getChunk(void** data, bool isPreset) override {
        return noted<VstInt32>("getChunk", data, isPreset);
    }
    VstInt32 setChunk(void* data, VstInt32 byteSize, bool isPreset) override {
        return noted<VstInt32>("setChunk", data, byteSize, isPreset);
    }
    void process(float** in, float** out, VstInt32 frames) override {
        note("process", in, out, frames);
    }
    float getVu() override {
        note("getVu");
        return 0.5f;
    }

    bool canParameterBeAutomated(VstInt32 index) override {
        return noted<bool>("canParameterBeAutomated", index);
    }
    bool string2parameter(VstInt32 index, char* text) override {
        return noted<bool>("string2parameter", index, text);
    }
    bool getParameterProperties(VstInt32 index, VstParameterProperties* p) override {
        return noted<bool>("getParameterProperties", index, p);
    }
    bool getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text) override {
        return noted<bool>("getProgramNameIndexed", category, index, text);
    }
    bool beginSetProgram() override { return noted<bool>("beginSetProgram"); }
    bool endSetProgram() override { return noted<bool>("endSetProgram"); }
    VstInt32 beginLoadBank(VstPatchChunkInfo* info) override {
        return noted<VstInt32>("beginLoadBank", info);
    }
    VstInt32 beginLoadProgram(VstPatchChunkInfo* info) override {
        return noted<VstInt32>("beginLoadProgram", info);
    }
    bool getInputProperties(VstInt32 index, VstPinProperties* p) override {
        return noted<bool>("getInputProperties", index, p);
    }
    bool getOutputProperties(VstInt32 index, VstPinProperties* p) override {
        return noted<bool>("getOutputProperties", index, p);
    }
    bool setSpeakerArrangement(VstSpeakerArrangement* in, VstSpeakerArrangement* out) override {
        return noted<bool>("setSpeakerArrangement", in, out);
    }
    bool getSpeakerArrangement(VstSpeakerArrangement** in, VstSpeakerArrangement** out) override {
        return noted<bool>("getSpeakerArrangement", in, out);
    }
    bool setBypass(bool on) override { return noted<bool>("setBypass", on); }
    bool setPanLaw(VstInt32 type, float value) override {
        return noted<bool>("setPanLaw", type, value);
    }
    bool setProcessPrecision(VstInt32 precision) override {
        return noted<bool>("setProcessPrecision", precision);
    }
    VstInt32 getNumMidiInputChannels() override {
        return noted<VstInt32>("getNumMidiInputChannels");
    }
    VstInt32 getNumMidiOutputChannels() override {
        return noted<VstInt32>("getNumMidiOutputChannels");
    }
    VstInt32 processEvents(VstEvents* events) override {
        return noted<VstInt32>("processEvents", events);
    }
    VstInt32 startProcess() override { return noted<VstInt32>("startProcess"); }
    VstInt32 stopProcess() override { return noted<VstInt32>("stopProcess"); }
    bool processVariableIo(VstVariableIo* io) override {
        return noted<bool>("processVariableIo", io);
    }
    VstInt32 setTotalSampleToProcess(VstInt32 value) override {
        return noted<VstInt32>("setTotalSampleToProcess", value);
    }
    VstInt32 getGetTailSize() override { return noted<VstInt32>("getGetTailSize"); }
    bool getEffectName(char* name) override { return noted<bool>("getEffectName", name); }
    bool getVendorString(char* text) override { return noted<bool>("getVendorString", text); }
    bool getProductString(char* text) override { return noted<bool>("getProductString", text); }
    VstInt32 getVendorVersion() override { return noted<VstInt32>("getVendorVersion"); }
    VstIntPtr vendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt) override {
        return noted<VstIntPtr>("vendorSpecific", index, value, ptr, opt);
    }
    VstInt32 canDo(char* text) override { return noted<VstInt32>("canDo", text); }
    VstInt32 getVstVersion() override { return noted<VstInt32>("getVstVersion"); }
    VstInt32 getPlugCategory() override { return noted<VstInt32>("getPlugCategory"); }
    VstInt32 getMidiProgramName(VstInt32 channel, MidiProgramName* name) override {
        return noted<VstInt32>("getMidiProgramName", channel, name);
    }
    VstInt32 getCurrentMidiProgram(VstInt32 channel, MidiProgramName* name) override {
        return noted<VstInt32>("getCurrentMidiProgram", channel, name);
    }
    VstInt32 getMidiProgramCategory(VstInt32 channel, MidiProgramCategory* category) override {
        return noted<VstInt32>("getMidiProgramCategory", channel, category);
    }
    bool hasMidiProgramsChanged(VstInt32 channel) override {
        return noted<bool>("hasMidiProgramsChanged", channel);
    }
    bool getMidiKeyName(VstInt32 channel, MidiKeyName* key) override {
        return noted<bool>("getMidiKeyName", channel, key);
    }
    VstInt32 getNextShellPlugin(char* name) override {
        return noted<VstInt32>("getNextShellPlugin", name);
    }
    bool offlineNotify(VstAudioFile* files, VstInt32 count, bool start) override {
        return noted<bool>("offlineNotify", files, count, start);
    }
    bool offlinePrepare(VstOfflineTask* tasks, VstInt32 count) override {
        return noted<bool>("offlinePrepare", tasks, count);
    }
    bool offlineRun(VstOfflineTask* tasks, VstInt32 count) override {
        return noted<bool>("offlineRun", tasks, count);
    }

    // No opcode reaches what follows.
    VstInt32 getNumCategories() override { return noted<VstInt32>("getNumCategories"); }
    bool copyProgram(VstInt32 destination) override {
        return noted<bool>("copyProgram", destination);
    }
    void inputConnected(VstInt32 index, bool state) override {
        note("inputConnected", index, state);
    }
    void outputConnected(VstInt32 index, bool state) override {
        note("outputConnected", index, state);
    }
    VstInt32 reportCurrentPosition() override { return noted<VstInt32>("reportCurrentPosition"); }
    float* reportDestinationBuffer() override {
        note("reportDestinationBuffer");
        return nullptr;
    }
    void setBlockSizeAndSampleRate(VstInt32 frames, float rate) override {
        note("setBlockSizeAndSampleRate", frames, rate);
    }
    bool getErrorText(char* text) override { return noted<bool>("getErrorText", text); }
    void* getIcon() override {
        note("getIcon");
        return nullptr;
    }
    bool setViewPosition(VstInt32 x, VstInt32 y) override {
        return noted<bool>("setViewPosition", x, y);
    }
    VstInt32 fxIdle() override { return noted<VstInt32>("fxIdle"); }
    bool keysRequired() override { return noted<bool>("keysRequired"); }

private:
    template <typename... Arguments>
    void note(const char* operation, Arguments... arguments) {
        calls.push_back(callText(operation, arguments...));
    }
    template <typename Result, typename... Arguments>
    Result noted(const char* operation, Arguments... arguments) {
        note(operation, arguments...);
        return static_cast<Result>(answer);
    }
};
