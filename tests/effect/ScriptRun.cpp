#include "tests/effect/ScriptRun.h"

#include "effect/VstXSynth.h"
#include "tests/effect/EffectState.h"
#include "tests/support/BlockMemory.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/ReferenceDelay.h"

namespace {

std::string processBoth(VstXSynth& effect, ReferenceDelay& model, const ScriptStep& step) {
    BlockMemory own(step);
    BlockMemory expected(step);
    effect.processReplacing(own.inputs(), own.outputs(), step.number);
    model.process(expected.inputs(), expected.outputs(), step.number);
    return own.differenceFrom(expected);
}

std::string doBoth(VstXSynth& effect, ReferenceDelay& model, const ScriptStep& step) {
    switch (step.kind) {
    case ScriptStep::Kind::kSetParameter:
        effect.setParameter(step.number, step.value);
        model.setParameter(step.number, step.value);
        break;
    case ScriptStep::Kind::kSetProgram:
        effect.setProgram(step.number);
        model.setProgram(step.number);
        break;
    case ScriptStep::Kind::kResume:
        effect.resume();
        model.resume();
        break;
    case ScriptStep::Kind::kSuspend:
        effect.suspend();
        break;
    case ScriptStep::Kind::kSetSampleRate:
        effect.setSampleRate(step.value);
        model.setSampleRate(step.value);
        break;
    case ScriptStep::Kind::kSetBlockSize:
        effect.setBlockSize(step.number);
        break;
    case ScriptStep::Kind::kProcess:
        return processBoth(effect, model, step);
    }
    return "";
}

} // namespace

std::string runAgainstModel(const std::vector<ScriptStep>& script) {
    VstXSynth effect(plainHost);
    ReferenceDelay model;
    std::size_t number = 0;
    for (const ScriptStep& step : script) {
        std::string difference = doBoth(effect, model, step);
        difference += stateDifference(effect, model);
        if (!difference.empty()) {
            return "step " + std::to_string(number) + ", " + step.text() + ": " + difference;
        }
        ++number;
    }
    return "";
}
