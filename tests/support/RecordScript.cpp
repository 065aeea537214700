#include "tests/support/RecordScript.h"

#include "plugin/vst2/EffectOpcodes.h"
#include "tests/support/Bits.h"
#include "tests/support/BlockMemory.h"

#include <utility>

RecordScript::RecordScript(AEffect* record, std::vector<ScriptStep> script)
    : record_(record), script_(std::move(script)) {}

std::string RecordScript::step() {
    const ScriptStep& step = script_[next_];
    const std::string difference = act(step) + stateDifference();
    const std::string place = "step " + std::to_string(next_) + ", " + step.text() + ": ";
    ++next_;
    return difference.empty() ? "" : place + difference;
}

std::string RecordScript::run() {
    std::string difference;
    while (!ended() && difference.empty()) {
        difference = step();
    }
    return difference;
}

std::string RecordScript::act(const ScriptStep& step) {
    const auto dispatch = [this](VstInt32 opcode, VstIntPtr value, float opt) {
        record_->dispatcher(record_, opcode, 0, value, nullptr, opt);
    };
    switch (step.kind) {
    case ScriptStep::Kind::kSetParameter:
        record_->setParameter(record_, step.number, step.value);
        model_.setParameter(step.number, step.value);
        break;
    case ScriptStep::Kind::kSetProgram:
        dispatch(effSetProgram, step.number, 0.0f);
        model_.setProgram(step.number);
        break;
    case ScriptStep::Kind::kResume:
        dispatch(effMainsChanged, 1, 0.0f);
        model_.resume();
        break;
    case ScriptStep::Kind::kSuspend:
        dispatch(effMainsChanged, 0, 0.0f);
        break;
    case ScriptStep::Kind::kSetSampleRate:
        dispatch(effSetSampleRate, 0, step.value);
        model_.setSampleRate(step.value);
        break;
    case ScriptStep::Kind::kSetBlockSize:
        dispatch(effSetBlockSize, step.number, 0.0f);
        break;
    case ScriptStep::Kind::kProcess:
        return process(step);
    }
    return "";
}

std::string RecordScript::process(const ScriptStep& step) {
    BlockMemory own(step);
    BlockMemory expected(step);
    record_->processReplacing(record_, own.inputs(), own.outputs(), step.number);
    model_.process(expected.inputs(), expected.outputs(), step.number);
    return own.differenceFrom(expected);
}

std::string RecordScript::stateDifference() const {
    std::string difference;
    for (VstInt32 index = -1; index <= 9; ++index) {
        const float own = record_->getParameter(record_, index);
        if (!sameNumber(own, model_.getParameter(index))) {
            difference += "parameter " + std::to_string(index) + " is " + std::to_string(own) +
                          " instead of " + std::to_string(model_.getParameter(index)) + "; ";
        }
    }
    const VstIntPtr program = record_->dispatcher(record_, effGetProgram, 0, 0, nullptr, 0.0f);
    if (program != model_.curProgram) {
        difference += "the program is " + std::to_string(program) + "; ";
    }
    return difference;
}
