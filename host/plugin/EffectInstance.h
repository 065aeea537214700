// One effect of a plug-in, and every call that tvhost makes to it.
#pragma once

#include "host/plugin/EditorSize.h"
#include "host/plugin/HostCallback.h"
#include "host/plugin/PluginModule.h"
#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/Records.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tvhost {

// One effect, opened on construction and closed on destruction. All calls from one thread, but that
// process() may be called from another between start() and stop(). Indices
// of parameters and programs must be in range. Texts come as plainText() leaves them and may be
// longer than the interface allows.
class EffectInstance {
public:
    // Throws UserError when the plug-in returns null or something other than a VST 2 effect.
    explicit EffectInstance(std::shared_ptr<const PluginModule> module);
    ~EffectInstance();
    EffectInstance(const EffectInstance&) = delete;
    EffectInstance& operator=(const EffectInstance&) = delete;

    const PluginModule& module() const { return *plugin_; }
    std::shared_ptr<const PluginModule> sharedModule() const { return plugin_; }
    const AEffect& record() const { return *effect_; }

    int parameterCount() const;
    int programCount() const;

    // What the effect is called: its effect name, else its product name, else its file's name.
    std::string name() const;
    std::string effectName() const { return text(effGetEffectName); }
    std::string productName() const { return text(effGetProductString); }
    std::string vendorName() const { return text(effGetVendorString); }
    std::int32_t vendorVersion() const { return number(effGetVendorVersion); }
    std::int32_t interfaceVersion() const { return number(effGetVstVersion); }
    std::int32_t category() const { return number(effGetPlugCategory); }
    // What the effect answers to one of the interface's words for what a plug-in can do: above 0
    // that it can, below 0 that it can't, 0 that it doesn't know the word.
    std::int32_t canDo(const std::string& word) const;
    // 0 where the effect doesn't say.
    std::int32_t midiInputs() const { return number(effGetNumMidiInputChannels); }
    std::int32_t midiOutputs() const { return number(effGetNumMidiOutputChannels); }
    // What the effect tells of an input or output, if it does.
    enum class Side { kInput, kOutput };
    std::optional<VstPinProperties> pin(Side side, int index) const;
    // Whether the effect says that its first two inputs are left and right of one sound.
    bool pairsInputs() const;
    // Samples; 0 when the effect doesn't say, 1 when it has no tail.
    std::int32_t tailSize() const { return number(effGetTailSize); }

    std::string parameterName(int index) const { return text(effGetParamName, index); }
    std::string parameterLabel(int index) const { return text(effGetParamLabel, index); }
    std::string parameterDisplay(int index) const { return text(effGetParamDisplay, index); }
    bool isAutomatable(int index) const { return number(effCanBeAutomated, index) != 0; }
    // What the effect tells beyond the rest, if it does.
    std::optional<VstParameterProperties> parameterProperties(int index) const;
    float parameter(int index) const { return effect_->getParameter(effect_, index); }
    void setParameter(int index, float value) { effect_->setParameter(effect_, index, value); }

    int currentProgram() const { return number(effGetProgram); }
    void setProgram(int index);
    std::vector<std::string> programNames() const { return names_; }
    // Of the current program.
    std::string programName() const { return text(effGetProgramName); }
    // At most as long as the interface allows; the rest is left away.
    void setProgramName(const std::string& name);

    // What is kept or loaded at once, by the interface's own numbers.
    enum class Scope : VstInt32 { kBank = 0, kProgram = 1 };
    // Whether the effect keeps its state in chunks. Without it, the calls for chunks do nothing.
    bool keepsChunks() const { return (effect_->flags & effFlagsProgramChunks) != 0; }
    std::string chunk(Scope scope) const;
    void setChunk(Scope scope, const std::string& bytes);
    // Whether the effect takes a preset like this, which it is told before it comes; one that
    // doesn't know does.
    bool acceptsPreset(Scope scope, VstPatchChunkInfo info) const;

    // Throws UserError for an instrument, and unless the effect takes sound in, gives sound out and
    // can write over its output buffers.
    void requireAudio() const;
    int inputCount() const { return std::max(effect_->numInputs, 0); }
    int outputCount() const { return std::max(effect_->numOutputs, 0); }
    // Whether the effect can write over its output buffers.
    bool canReplace() const;

    // How many frames later than its input the effect's output comes, as it says now; it may say
    // otherwise after start(), or when parameters change.
    int latency() const { return std::max(effect_->initialDelay, 0); }

    // What the effect is told when it asks: the tempo, in beats per minute, and whether its sound
    // is wanted as fast as it is played.
    void setTempo(double beatsPerMinute) { host_.setTempo(beatsPerMinute); }
    void setRealTime(bool state) { host_.setRealTime(state); }

    // Switches the effect on for blocks of at most `blockSize` frames, and off again. After
    // start() an effect that can replace has heard a moment of silence, as a host gives it before
    // it plays: it has taken up the rate, so that parameters set from then on hold.
    void start(double sampleRate, int blockSize);
    // Hz, of the last start.
    double sampleRate() const { return sampleRate_; }
    void stop();

    // Lets an effect that has asked for it since it was started take up a new latency or number of
    // channels. Only between start() and stop().
    void followIoChange();

    // One pointer a channel, `frames` frames each, at most the block size. Only between start() and
    // stop(), and only when the effect can replace. The time line advances by `frames`, 1 or more.
    void process(float** inputs, float** outputs, int frames);

    bool hasEditor() const { return (effect_->flags & effFlagsHasEditor) != 0; }
    // What the effect tells; not usable when it tells nothing.
    EditorSize editorSize() const;
    // `window` is an X11 window. Whether the effect says that its editor is open.
    bool openEditor(void* window) { return dispatch(effEditOpen, 0, 0, window) != 0; }
    void closeEditor() { dispatch(effEditClose); }
    // For an open editor, some thirty times a second.
    void idleEditor() { dispatch(effEditIdle); }
    // See HostCallback.
    void setSizeRequestHandler(HostCallback::SizeRequestHandler handler) {
        host_.setSizeRequestHandler(std::move(handler));
    }

private:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) const;
    std::string text(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0) const;
    std::int32_t number(VstInt32 opcode, VstInt32 index = 0) const;
    template <typename Record>
    std::optional<Record> properties(VstInt32 opcode, VstInt32 index) const;
    std::vector<std::string> readProgramNames() const;
    void switchOn();
    void switchOff();
    void processSilence(int blockSize);

    std::shared_ptr<const PluginModule> plugin_;
    HostCallback host_;
    AEffect* effect_;
    std::vector<std::string> names_;
    std::int64_t position_ = 0;
    double sampleRate_ = 44100.0;
    bool running_ = false;
};

} // namespace tvhost
