#include "tests/bundle/RecordPair.h"

#include "plugin/vst2/EffectOpcodes.h"
#include "plugin/vst2/HostOpcodes.h"
#include "tests/support/Bits.h"
#include "tests/support/BlockMemory.h"

#include <array>
#include <cstring>

namespace {

// Longer than all that an opcode writes.
using Memory = std::array<char, 4096>;

Memory memoryWith(const std::string& text) {
    Memory memory{};
    text.copy(memory.data(), memory.size() - 1);
    return memory;
}

std::string differing(const std::string& what, const std::string& mac, const std::string& other) {
    return what + " is " + mac + " on macOS and " + other + " on Linux; ";
}

template <typename Number>
std::string compared(const std::string& what, Number mac, Number other) {
    return mac == other ? "" : differing(what, std::to_string(mac), std::to_string(other));
}

std::string sameCall(const HostCall& call) {
    return std::to_string(call.opcode) + " " + std::to_string(call.index) + " " +
           std::to_string(call.value) + " " + std::to_string(bitsOf(call.opt));
}

} // namespace

RecordPair::RecordPair(Entry macEntry, Entry linuxEntry) {
    host_.answersTo[audioMasterVersion] = 2400;
    mac_ = macEntry(RecordingHost::callback);
    linux_ = linuxEntry(RecordingHost::callback);
    host_.calls.clear();
}

RecordPair::~RecordPair() {
    for (AEffect* const effect : {mac_, linux_}) {
        effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    }
}

std::string RecordPair::recordDifference() const {
    return compared("magic", mac_->magic, linux_->magic) +
           compared("numPrograms", mac_->numPrograms, linux_->numPrograms) +
           compared("numParams", mac_->numParams, linux_->numParams) +
           compared("numInputs", mac_->numInputs, linux_->numInputs) +
           compared("numOutputs", mac_->numOutputs, linux_->numOutputs) +
           compared("flags", mac_->flags, linux_->flags) +
           compared("resvd1", mac_->resvd1, linux_->resvd1) +
           compared("resvd2", mac_->resvd2, linux_->resvd2) +
           compared("initialDelay", mac_->initialDelay, linux_->initialDelay) +
           compared("realQualities", mac_->realQualities, linux_->realQualities) +
           compared("offQualities", mac_->offQualities, linux_->offQualities) +
           compared("ioRatio", mac_->ioRatio, linux_->ioRatio) +
           compared("uniqueID", mac_->uniqueID, linux_->uniqueID) +
           compared("version", mac_->version, linux_->version) +
           compared("future", std::memcmp(mac_->future, linux_->future, sizeof(mac_->future)), 0);
}

std::string RecordPair::run(const ScriptStep& step) {
    std::string difference;
    switch (step.kind) {
    case ScriptStep::Kind::kSetParameter:
        difference = setParameter(step.number, step.value);
        break;
    case ScriptStep::Kind::kSetProgram:
        difference = dispatch(effSetProgram, 0, step.number, "", 0.0f);
        break;
    case ScriptStep::Kind::kResume:
        difference = dispatch(effMainsChanged, 0, 1, "", 0.0f);
        break;
    case ScriptStep::Kind::kSuspend:
        difference = dispatch(effMainsChanged, 0, 0, "", 0.0f);
        break;
    case ScriptStep::Kind::kSetSampleRate:
        difference = dispatch(effSetSampleRate, 0, 0, "", step.value);
        break;
    case ScriptStep::Kind::kSetBlockSize:
        difference = dispatch(effSetBlockSize, 0, step.number, "", 0.0f);
        break;
    case ScriptStep::Kind::kProcess:
        difference = process(step);
        break;
    }
    return difference + stateDifference();
}

std::string RecordPair::process(const ScriptStep& step) {
    BlockMemory mac(step);
    BlockMemory other(step);
    mac_->processReplacing(mac_, mac.inputs(), mac.outputs(), step.number);
    linux_->processReplacing(linux_, other.inputs(), other.outputs(), step.number);
    const std::string difference = mac.differenceFrom(other);
    return difference.empty() ? callDifference() : difference;
}

std::string RecordPair::dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                 const std::string& text, float opt) {
    Memory macMemory = memoryWith(text);
    Memory linuxMemory = macMemory;
    const VstIntPtr mac = mac_->dispatcher(mac_, opcode, index, value, macMemory.data(), opt);
    const VstIntPtr other =
        linux_->dispatcher(linux_, opcode, index, value, linuxMemory.data(), opt);
    std::string difference = compared("the answer", mac, other) + callDifference();
    if (macMemory != linuxMemory) {
        difference += differing("the memory", macMemory.data(), linuxMemory.data());
    }
    return difference.empty() ? "" : "opcode " + std::to_string(opcode) + ": " + difference;
}

std::string RecordPair::setParameter(VstInt32 index, float value) {
    mac_->setParameter(mac_, index, value);
    linux_->setParameter(linux_, index, value);
    return callDifference();
}

std::string RecordPair::stateDifference() {
    std::string difference =
        dispatch(effGetProgram, 0, 0, "", 0.0f) + dispatch(effGetProgramName, 0, 0, "before", 0.0f);
    for (VstInt32 index = -1; index <= linux_->numParams; ++index) {
        const float mac = mac_->getParameter(mac_, index);
        const float other = linux_->getParameter(linux_, index);
        if (!sameNumber(mac, other)) {
            difference += differing("parameter " + std::to_string(index), std::to_string(mac),
                                    std::to_string(other));
        }
        difference += dispatch(effGetParamDisplay, index, 0, "before", 0.0f);
    }
    return difference;
}

std::string RecordPair::callDifference() {
    std::string macCalls;
    std::string linuxCalls;
    for (const HostCall& call : host_.calls) {
        (call.effect == mac_ ? macCalls : linuxCalls) += sameCall(call) + ", ";
    }
    host_.calls.clear();
    return macCalls == linuxCalls ? "" : differing("what the host is asked", macCalls, linuxCalls);
}
