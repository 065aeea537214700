#include "host/plugin/EffectInstance.h"

#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "plugin/vst2/EffectOpcodes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tvhost {

namespace {

// Plug-ins write names without a limit, so the buffer has to be far beyond the published lengths.
using TextBuffer = std::array<char, 4096>;

// What an effect hears before it is played, as in a host whose transport stands.
constexpr int kSilentFrames = 512;

std::string contents(TextBuffer& buffer) {
    buffer.back() = 0;
    return plainText(buffer.data());
}

} // namespace

EffectInstance::EffectInstance(std::shared_ptr<const PluginModule> module)
    : plugin_(std::move(module)), host_(plugin_->file().parent_path().string()),
      effect_(plugin_->createEffect(HostCallback::entry)) {
    const std::string file = plugin_->file().string();
    if (!effect_) {
        throw UserError(file + " did not make an effect: its entry returned null; "
                               "give a plug-in that works with a VST 2.4 host");
    }
    if (effect_->magic != kEffectMagic || !effect_->dispatcher || !effect_->setParameter ||
        !effect_->getParameter) {
        throw UserError(file + " did not return a VST 2 effect; "
                               "give a VST 2 bundle or .so");
    }
    host_.bind(*effect_);
    dispatch(effOpen);
    names_ = readProgramNames();
}

EffectInstance::~EffectInstance() {
    stop();
    dispatch(effClose);
}

VstIntPtr EffectInstance::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                   float opt) const {
    return effect_->dispatcher(effect_, opcode, index, value, ptr, opt);
}

std::string EffectInstance::text(VstInt32 opcode, VstInt32 index, VstIntPtr value) const {
    TextBuffer buffer{};
    dispatch(opcode, index, value, buffer.data());
    return contents(buffer);
}

std::int32_t EffectInstance::number(VstInt32 opcode, VstInt32 index) const {
    return static_cast<std::int32_t>(dispatch(opcode, index));
}

template <typename Record>
std::optional<Record> EffectInstance::properties(VstInt32 opcode, VstInt32 index) const {
    // Some write names that are longer than their places.
    struct {
        Record record;
        char spare[4096];
    } given{};
    if (dispatch(opcode, index, 0, &given.record) == 0) {
        return std::nullopt;
    }
    return given.record;
}

std::optional<VstPinProperties> EffectInstance::pin(Side side, int index) const {
    return properties<VstPinProperties>(
        side == Side::kInput ? effGetInputProperties : effGetOutputProperties, index);
}

bool EffectInstance::pairsInputs() const {
    const auto first = pin(Side::kInput, 0);
    return first && (first->flags & kVstPinIsStereo) != 0;
}

std::optional<VstParameterProperties> EffectInstance::parameterProperties(int index) const {
    return properties<VstParameterProperties>(effGetParameterProperties, index);
}

std::int32_t EffectInstance::canDo(const std::string& word) const {
    std::string given = word;
    return static_cast<std::int32_t>(dispatch(effCanDo, 0, 0, given.data()));
}

int EffectInstance::parameterCount() const {
    return std::max(effect_->numParams, 0);
}

int EffectInstance::programCount() const {
    return std::max(effect_->numPrograms, 0);
}

std::string EffectInstance::name() const {
    for (const std::string& candidate : {effectName(), productName()}) {
        if (!candidate.empty()) {
            return candidate;
        }
    }
    return plugin_->file().stem().string();
}

std::vector<std::string> EffectInstance::readProgramNames() const {
    std::vector<std::string> result;
    bool visited = false;
    const VstIntPtr current = dispatch(effGetProgram);
    for (int i = 0; i < programCount(); ++i) {
        TextBuffer buffer{};
        if (dispatch(effGetProgramNameIndexed, i, -1, buffer.data()) == 0) {
            // An effect that names only the current program has to be led through them.
            buffer = {};
            dispatch(effSetProgram, 0, i);
            dispatch(effGetProgramName, 0, 0, buffer.data());
            visited = true;
        }
        result.push_back(contents(buffer));
    }
    if (visited) {
        dispatch(effSetProgram, 0, current);
    }
    return result;
}

void EffectInstance::setProgram(int index) {
    dispatch(effBeginSetProgram);
    dispatch(effSetProgram, 0, index);
    dispatch(effEndSetProgram);
}

void EffectInstance::setProgramName(const std::string& name) {
    std::string given = name.substr(0, kVstMaxProgNameLen);
    dispatch(effSetProgramName, 0, 0, given.data());
}

std::string EffectInstance::chunk(Scope scope) const {
    void* bytes = nullptr;
    const VstIntPtr size = dispatch(effGetChunk, static_cast<VstInt32>(scope), 0, &bytes);
    return bytes && size > 0
               ? std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size))
               : std::string();
}

void EffectInstance::setChunk(Scope scope, const std::string& bytes) {
    std::string given = bytes;
    dispatch(effSetChunk, static_cast<VstInt32>(scope), static_cast<VstIntPtr>(given.size()),
             given.data());
}

bool EffectInstance::acceptsPreset(Scope scope, VstPatchChunkInfo info) const {
    return dispatch(scope == Scope::kBank ? effBeginLoadBank : effBeginLoadProgram, 0, 0, &info) !=
           -1;
}

void EffectInstance::requireAudio() const {
    if ((effect_->flags & effFlagsIsSynth) != 0) {
        throw UserError(name() + " is an instrument, which makes no sound without notes; "
                                 "give an effect");
    }
    if (inputCount() == 0) {
        throw UserError(name() + " takes no sound in; give an effect that does");
    }
    if (outputCount() == 0) {
        throw UserError(name() + " gives no sound out; give an effect that does");
    }
    if (!canReplace()) {
        throw UserError(name() + " can only add to its output; "
                                 "tvhost drives effects that can replace it");
    }
}

bool EffectInstance::canReplace() const {
    return (effect_->flags & effFlagsCanReplacing) != 0 && effect_->processReplacing;
}

EditorSize EffectInstance::editorSize() const {
    ERect* rectangle = nullptr;
    dispatch(effEditGetRect, 0, 0, &rectangle);
    if (!rectangle) {
        return {};
    }
    return {rectangle->right - rectangle->left, rectangle->bottom - rectangle->top};
}

void EffectInstance::start(double sampleRate, int blockSize) {
    stop();
    position_ = 0;
    host_.setPosition(0);
    sampleRate_ = sampleRate;
    host_.setSampleRate(sampleRate);
    host_.setBlockSize(blockSize);
    dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRate));
    dispatch(effSetBlockSize, 0, blockSize);
    host_.takeIoChange();
    switchOn();
    running_ = true;
    followIoChange();

    // Effects may take up a new rate only when they process, and write parameters anew as they do.
    if (canReplace()) {
        host_.setPlaying(false);
        processSilence(blockSize);
        host_.setPlaying(true);
        followIoChange();
    }
    position_ = 0;
}

void EffectInstance::stop() {
    if (!running_) {
        return;
    }
    running_ = false;
    switchOff();
}

void EffectInstance::switchOn() {
    dispatch(effMainsChanged, 0, 1);
    dispatch(effStartProcess);
}

void EffectInstance::switchOff() {
    dispatch(effStopProcess);
    dispatch(effMainsChanged, 0, 0);
}

// A new latency or number of channels holds from the next time that the effect is switched on.
void EffectInstance::followIoChange() {
    if (host_.takeIoChange()) {
        switchOff();
        switchOn();
    }
}

// The length doesn't depend on the block size, or what is rendered would.
void EffectInstance::processSilence(int blockSize) {
    const auto width =
        static_cast<std::size_t>(inputCount()) + static_cast<std::size_t>(outputCount());
    const int longest = std::min(blockSize, kSilentFrames);
    std::vector<std::vector<float>> buffers(width,
                                            std::vector<float>(static_cast<std::size_t>(longest)));
    std::vector<float*> channels;
    channels.reserve(width + 1);
    for (std::vector<float>& buffer : buffers) {
        channels.push_back(buffer.data());
    }
    channels.push_back(nullptr); // so that there is something to point to without any channel
    for (int done = 0; done < kSilentFrames;) {
        const int frames = std::min(longest, kSilentFrames - done);
        position_ = 0;
        process(channels.data(), channels.data() + inputCount(), frames);
        // An effect may work in place on what it was given.
        for (std::vector<float>& buffer : buffers) {
            std::fill(buffer.begin(), buffer.end(), 0.0f);
        }
        done += frames;
    }
}

void EffectInstance::process(float** inputs, float** outputs, int frames) {
    host_.setPosition(position_);
    host_.setProcessing(true);
    effect_->processReplacing(effect_, inputs, outputs, frames);
    host_.setProcessing(false);
    position_ += frames;
}

} // namespace tvhost
