#include "host/check/CheckedEffect.h"
#include "host/check/EditorStage.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tvhost::checks {

namespace {

constexpr double kRates[] = {22050.0, 44100.0, 48000.0, 96000.0};
constexpr int kLargest = 512;
constexpr int kCalls = 3000;
constexpr VstInt32 kLastOpcode = effGetNumMidiOutputChannels;
constexpr std::size_t kScratch = 65536; // more than any record or text of the interface

// Opcodes that change where an effect is in its life; they come in their own places.
bool isOfLife(VstInt32 opcode) {
    switch (opcode) {
    case effOpen:
    case effClose:
    case effMainsChanged:
    case effStartProcess:
    case effStopProcess:
    case effSetSampleRate:
    case effSetBlockSize:
    case effSetBlockSizeAndSampleRate:
    case effEditOpen:
    case effEditClose:
    case effEditIdle:
    case effSetProcessPrecision: // blocks stay single
        return true;
    default:
        return false;
    }
}

// Makes any call of the interface with pointers to what it asks for and numbers in range.
class Caller {
public:
    Caller(CheckRun& run, CheckedEffect& effect) : run_(run), effect_(effect) {
        variable_.inputs = channels_.data();
        variable_.outputs = channels_.data();
        variable_.numSamplesInputProcessed = &processed_[0];
        variable_.numSamplesOutputProcessed = &processed_[1];
        arrangement_.numChannels = 2;
    }

    void callAny() {
        const VstInt32 opcode = run_.number(0, kLastOpcode);
        if (isOfLife(opcode)) {
            return;
        }
        scratch_.fill(0);
        switch (opcode) {
        case effSetProgram:
            call(opcode, 0, program());
            return;
        case effGetProgramNameIndexed:
            call(opcode, program(), -1, scratch_.data());
            return;
        case effGetParamLabel:
        case effGetParamDisplay:
        case effGetParamName:
        case effGetParameterProperties:
        case effCanBeAutomated:
            if (effect_.parameterCount() > 0) {
                call(opcode, parameter(), 0, scratch_.data());
            }
            return;
        case effString2Parameter:
            if (effect_.parameterCount() > 0) {
                putText(run_.number(0, 1) == 0 ? "0.5" : "");
                call(opcode, parameter(), 0, scratch_.data());
            }
            return;
        case effSetProgramName:
            putText("Tried");
            call(opcode, 0, 0, scratch_.data());
            return;
        case effCanDo:
            putText(run_.number(0, 1) == 0 ? "receiveVstEvents" : "bypass");
            call(opcode, 0, 0, scratch_.data());
            return;
        case effGetChunk:
        case effSetChunk:
            callChunk();
            return;
        case effGetInputProperties:
            callPin(opcode, effect_.inputCount());
            return;
        case effGetOutputProperties:
            callPin(opcode, effect_.outputCount());
            return;
        case effProcessEvents:
            effect_.playNote();
            return;
        case effProcessVarIo:
            call(opcode, 0, 0, &variable_);
            return;
        case effSetSpeakerArrangement:
            call(opcode, 0, reinterpret_cast<VstIntPtr>(&arrangement_), &arrangement_);
            return;
        case effGetSpeakerArrangement: {
            void* in = nullptr;
            void* out = nullptr;
            call(opcode, 0, reinterpret_cast<VstIntPtr>(&in), &out);
            return;
        }
        case effEditGetRect: {
            ERect* rectangle = nullptr;
            call(opcode, 0, 0, &rectangle);
            return;
        }
        case effGetCurrentPosition:
        case effSetTotalSampleToProcess:
            call(opcode, 0, run_.number(0, 100000));
            return;
        case effSetBypass:
            call(opcode, 0, 0); // switched off, which it is
            return;
        case effEditKeyDown:
        case effEditKeyUp:
            call(opcode, 'a', 0);
            return;
        default:
            call(opcode, 0, 0, scratch_.data());
            return;
        }
    }

private:
    void call(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr) {
        effect_.call(opcode, index, value, ptr);
    }
    void callPin(VstInt32 opcode, int count) {
        if (count > 0) {
            call(opcode, run_.number(0, count - 1), 0, scratch_.data());
        }
    }
    // A chunk goes back only to where it came from.
    void callChunk() {
        if (!effect_.has(effFlagsProgramChunks)) {
            return;
        }
        const int kind = run_.number(0, 1);
        void* data = nullptr;
        const VstIntPtr size = effect_.call(effGetChunk, kind, 0, &data);
        if (data && size > 0) {
            const char* const bytes = static_cast<const char*>(data);
            std::vector<char> chunk(bytes, bytes + size);
            effect_.call(effSetChunk, kind, size, chunk.data());
        }
    }
    void putText(const char* text) {
        std::copy_n(text, std::char_traits<char>::length(text), scratch_.begin());
    }
    int program() const { return run_.number(0, std::max(effect_.programCount(), 1) - 1); }
    int parameter() const { return run_.number(0, effect_.parameterCount() - 1); }

    CheckRun& run_;
    CheckedEffect& effect_;
    alignas(16) std::array<char, kScratch> scratch_{};
    std::array<float, 16> samples_{};
    std::array<float*, 64> channels_ = [this] {
        std::array<float*, 64> result;
        result.fill(samples_.data());
        return result;
    }();
    VstInt32 processed_[2] = {};
    VstVariableIo variable_{};
    VstSpeakerArrangement arrangement_{};
};

} // namespace

void randomCalls(CheckRun& run) {
    CheckedEffect effect(run);
    const bool sounds = effect.has(effFlagsCanReplacing) && effect.outputCount() > 0;
    Caller caller(run, effect);
    std::optional<EditorStage> stage;
    if (effect.has(effFlagsHasEditor)) {
        stage.emplace(run, effect);
    }
    bool on = false;
    for (int i = 0; i < kCalls; ++i) {
        run.doing("call " + std::to_string(i));
        switch (run.number(0, 199)) {
        case 0:
            if (on) {
                effect.stop();
            } else {
                effect.start(kRates[run.number(0, 3)], kLargest);
            }
            on = !on;
            break;
        case 1:
            if (stage) {
                stage->close();
                stage->open();
                stage->idle(20);
            }
            break;
        case 2:
            if (stage) {
                stage->close();
            }
            break;
        default:
            if (sounds && on && run.number(0, 9) == 0) {
                effect.render(noise(run, 1, run.number(1, kLargest), 0.25f), kLargest);
            } else if (effect.parameterCount() > 0 && run.number(0, 4) == 0) {
                effect.setParameter(run.number(0, effect.parameterCount() - 1), run.uniform());
            } else {
                caller.callAny();
            }
        }
    }
}

} // namespace tvhost::checks
