#include "host/check/CheckedEffect.h"

#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/check/RealTimeWatch.h"

#include <algorithm>
#include <array>

namespace tvhost {

namespace {

constexpr VstInt32 kMidiEvent = 1;
constexpr VstInt32 kMidiEventSize = 24;
constexpr int kMidiData = 8; // where the three bytes lie in an event's data
constexpr char kNoteOn = '\x90';
constexpr char kMiddleC = 60;
constexpr char kVelocity = 100;

std::string named(int index, const char* kind, const std::string& name) {
    return std::string(kind) + " " + std::to_string(index) +
           (name.empty() ? "" : " (" + name + ")");
}

} // namespace

CheckedEffect::CheckedEffect(CheckRun& run)
    : run_(run), module_(run.module()), host_(module_->file().parent_path().string()) {
    run.lastCall().note(LastCall::kLoad);
    effect_ = module_->createEffect(hostEntry);
    if (!effect_) {
        throw UserError(module_->file().string() + " made no effect: its entry answered null");
    }
    if (effect_->magic != kEffectMagic || !effect_->dispatcher || !effect_->setParameter ||
        !effect_->getParameter) {
        throw UserError(module_->file().string() +
                        " answered with something that is no VST 2 effect");
    }
    host_.bind(*effect_);
    call(effOpen);
}

CheckedEffect::~CheckedEffect() {
    stop();
    call(effClose);
}

VstIntPtr CheckedEffect::hostEntry(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                   VstIntPtr value, void* ptr, float opt) {
    // What the host does in its own callback isn't the plug-in's.
    const RealTimeWatch::Pause pause;
    return HostCallback::entry(effect, opcode, index, value, ptr, opt);
}

int CheckedEffect::parameterCount() const {
    return std::max(effect_->numParams, 0);
}

int CheckedEffect::programCount() const {
    return std::max(effect_->numPrograms, 0);
}

int CheckedEffect::inputCount() const {
    return std::max(effect_->numInputs, 0);
}

int CheckedEffect::outputCount() const {
    return std::max(effect_->numOutputs, 0);
}

void CheckedEffect::requireSound() const {
    if (!has(effFlagsCanReplacing) || !effect_->processReplacing) {
        throw CheckSkipped("it cannot replace its outputs");
    }
    if (outputCount() == 0) {
        throw CheckSkipped("it has no outputs");
    }
}

void CheckedEffect::requireInput() const {
    requireSound();
    if (inputCount() == 0) {
        throw CheckSkipped("it takes no sound in");
    }
}

void CheckedEffect::requireParameters() const {
    if (parameterCount() == 0) {
        throw CheckSkipped("it has no parameters");
    }
}

void CheckedEffect::requirePrograms(int least) const {
    if (programCount() < least) {
        throw CheckSkipped(programCount() == 0   ? "it has no programs"
                           : programCount() == 1 ? "it has one program"
                                                 : "it has too few programs");
    }
}

void CheckedEffect::requireEditor() const {
    if (!has(effFlagsHasEditor)) {
        throw CheckSkipped("it has no editor");
    }
}

VstIntPtr CheckedEffect::call(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                              float opt) {
    run_.lastCall().note(LastCall::kDispatch, opcode, index, value, opt);
    return effect_->dispatcher(effect_, opcode, index, value, ptr, opt);
}

std::string CheckedEffect::text(VstInt32 opcode, VstInt32 index, VstIntPtr value) {
    std::array<char, 4096> buffer{};
    call(opcode, index, value, buffer.data());
    buffer.back() = 0;
    return plainText(buffer.data());
}

std::string CheckedEffect::parameterWords(int index) {
    return named(index, "parameter", parameterName(index));
}

float CheckedEffect::parameter(int index) {
    run_.lastCall().note(LastCall::kGetParameter, 0, index);
    return effect_->getParameter(effect_, index);
}

void CheckedEffect::setParameter(int index, float value) {
    run_.lastCall().note(LastCall::kSetParameter, 0, index, 0, value);
    effect_->setParameter(effect_, index, value);
}

bool CheckedEffect::showsTheSame(CheckedEffect& other, int index) {
    const std::string display = text(effGetParamDisplay, index);
    return !display.empty() && display == other.text(effGetParamDisplay, index);
}

std::vector<float> CheckedEffect::parameters() {
    const int count = parameterCount();
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) {
        values.push_back(parameter(i));
    }
    return values;
}

void CheckedEffect::setParameters(const std::vector<float>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        setParameter(static_cast<int>(i), values[i]);
    }
}

std::vector<float> CheckedEffect::randomSettings() {
    const int count = parameterCount();
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) {
        // Switches show both states only at the ends.
        const int place = run_.number(0, 3);
        values.push_back(place == 0 ? 0.0f : place == 1 ? 1.0f : run_.uniform());
    }
    return values;
}

void CheckedEffect::setProgram(int index) {
    call(effBeginSetProgram);
    call(effSetProgram, 0, index);
    call(effEndSetProgram);
}

void CheckedEffect::start(double sampleRate, int blockSize) {
    stop();
    position_ = 0;
    host_.setPosition(0);
    host_.setSampleRate(sampleRate);
    host_.setBlockSize(blockSize);
    call(effSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRate));
    call(effSetBlockSize, 0, blockSize);
    call(effMainsChanged, 0, 1);
    call(effStartProcess);
    running_ = true;
}

void CheckedEffect::stop() {
    if (!running_) {
        return;
    }
    running_ = false;
    call(effStopProcess);
    call(effMainsChanged, 0, 0);
}

void CheckedEffect::playNote() {
    note_ = {};
    note_.type = kMidiEvent;
    note_.byteSize = kMidiEventSize;
    note_.data[kMidiData] = kNoteOn;
    note_.data[kMidiData + 1] = kMiddleC;
    note_.data[kMidiData + 2] = kVelocity;
    events_ = {};
    events_.numEvents = 1;
    events_.events[0] = &note_;
    call(effProcessEvents, 0, 0, &events_);
}

void CheckedEffect::process(BlockBuffers& buffers, int frames) {
    run_.lastCall().note(LastCall::kProcess, 0, 0, frames);
    host_.setPosition(position_);
    host_.setProcessing(true);
    effect_->processReplacing(effect_, buffers.inputs(), buffers.outputs(), frames);
    host_.setProcessing(false);
    position_ += frames;
}

Sound CheckedEffect::render(const Sound& input, int mostFrames,
                            const std::function<int()>& nextSize, bool inPlace) {
    const int length = input.empty() ? 0 : static_cast<int>(input.front().size());
    BlockBuffers buffers(inputCount(), outputCount(), mostFrames, inPlace);
    Sound output = silence(outputCount(), length);
    if (isSynth()) {
        playNote();
    }
    for (int done = 0; done < length;) {
        const int frames = std::min({nextSize(), mostFrames, length - done});
        buffers.fillOutputs(0.0f);
        for (int c = 0; c < inputCount(); ++c) {
            const std::vector<float>& channel = input[static_cast<std::size_t>(c) % input.size()];
            std::copy_n(channel.begin() + done, frames, buffers.inputs()[c]);
        }
        process(buffers, frames);
        for (int c = 0; c < outputCount(); ++c) {
            std::copy_n(buffers.outputs()[c], frames,
                        output[static_cast<std::size_t>(c)].begin() + done);
        }
        done += frames;
    }
    return output;
}

Sound CheckedEffect::render(const Sound& input, int blockSize) {
    return render(input, blockSize, [blockSize] { return blockSize; });
}

} // namespace tvhost
