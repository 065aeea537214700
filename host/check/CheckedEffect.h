// One effect as a check drives it: raw calls, each noted before it is made.
#pragma once

#include "host/check/BlockBuffers.h"
#include "host/check/CheckRun.h"
#include "host/check/Sound.h"
#include "host/plugin/HostCallback.h"
#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/EffectOpcodes.h"
#include "plugin/vst2/Records.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tvhost {

// Opened on construction, switched off and closed on destruction. Calls may come from several
// threads, as the check at hand wants it; nothing here is locked.
class CheckedEffect {
public:
    // Throws UserError when the plug-in makes no effect.
    explicit CheckedEffect(CheckRun& run);
    ~CheckedEffect();
    CheckedEffect(const CheckedEffect&) = delete;
    CheckedEffect& operator=(const CheckedEffect&) = delete;

    const AEffect& record() const { return *effect_; }
    int parameterCount() const;
    int programCount() const;
    int inputCount() const;
    int outputCount() const;
    bool has(VstAEffectFlags flag) const { return (effect_->flags & flag) != 0; }
    bool isSynth() const { return has(effFlagsIsSynth); }

    // Throw CheckSkipped where the plug-in lacks what a check is about.
    void requireSound() const; // can replace its outputs, of which it has at least one
    void requireInput() const; // requireSound(), and takes sound in
    void requireParameters() const;
    void requirePrograms(int least) const;
    void requireEditor() const;

    VstIntPtr call(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr,
                   float opt = 0.0f);
    // What a text opcode writes into a large buffer of zeros.
    std::string text(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0);
    std::string parameterName(int index) { return text(effGetParamName, index); }
    // "parameter 3 (Mix)".
    std::string parameterWords(int index);

    float parameter(int index);
    void setParameter(int index, float value);
    bool isAutomatable(int index) { return call(effCanBeAutomated, index) != 0; }
    // Whether a parameter has a display and it reads as the other effect's, so that nobody sees a
    // difference: between two steps a value may stand anywhere.
    bool showsTheSame(CheckedEffect& other, int index);
    // The values of all parameters, and all of them written in ascending order.
    std::vector<float> parameters();
    void setParameters(const std::vector<float>& values);
    // A value for each parameter, at either end rather often.
    std::vector<float> randomSettings();
    void setProgram(int index);

    void start(double sampleRate, int blockSize);
    void stop();
    // Sends a note that holds, for those that make sound of notes alone.
    void playNote();
    // One block between start() and stop(), of what lies in `buffers`.
    void process(BlockBuffers& buffers, int frames);

    // All of `input` in blocks of the sizes that `nextSize` gives, at most `mostFrames`; outputs
    // are zero before each block. A synth starts a note first.
    Sound render(const Sound& input, int mostFrames, const std::function<int()>& nextSize,
                 bool inPlace = false);
    Sound render(const Sound& input, int blockSize);

    void setSizeRequestHandler(HostCallback::SizeRequestHandler handler) {
        host_.setSizeRequestHandler(std::move(handler));
    }

private:
    static VstIntPtr hostEntry(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                               void* ptr, float opt);

    CheckRun& run_;
    std::shared_ptr<const PluginModule> module_;
    HostCallback host_;
    AEffect* effect_ = nullptr;
    std::int64_t position_ = 0;
    bool running_ = false;
    VstEvent note_{};
    VstEvents events_{};
};

} // namespace tvhost
