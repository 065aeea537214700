#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <cmath>

namespace tvhost::checks {

namespace {

constexpr int kBeyond[] = {0, 1, 7, 1000};
constexpr float kNear = 1e-4f;

} // namespace

void indicesBeyond(CheckRun& run) {
    CheckedEffect effect(run);
    const std::vector<float> before = effect.parameters();
    for (const int beyond : kBeyond) {
        const int parameter = effect.parameterCount() + beyond;
        effect.parameter(parameter);
        effect.setParameter(parameter, 0.5f);
        for (const VstInt32 opcode : {effGetParamName, effGetParamLabel, effGetParamDisplay}) {
            effect.text(opcode, parameter);
        }
        effect.call(effCanBeAutomated, parameter);
        const int program = effect.programCount() + beyond;
        effect.text(effGetProgramNameIndexed, program, -1);
        effect.call(effSetProgram, 0, program);
        const VstIntPtr answer = effect.call(effGetProgram);
        if (effect.programCount() > 0 && (answer < 0 || answer >= effect.programCount())) {
            run.finding("program", "program " + std::to_string(program) + ", of " +
                                       std::to_string(effect.programCount()) +
                                       ", was chosen, and it answers " + std::to_string(answer));
            effect.setProgram(0);
        }
    }
    const std::vector<float> after = effect.parameters();
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (std::fabs(after[i] - before[i]) > kNear) {
            run.finding("moved", effect.parameterWords(static_cast<int>(i)) +
                                     " has moved by writes to parameters and programs that don't "
                                     "exist");
        }
    }
}

} // namespace tvhost::checks
