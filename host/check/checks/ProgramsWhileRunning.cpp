#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
constexpr int kChanges = 60;

} // namespace

void programsWhileRunning(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    effect.requirePrograms(2);
    effect.start(kRate, kBlock);
    const Sound input = noise(run, std::max(effect.inputCount(), 1), 3 * kBlock, 0.25f);
    for (int i = 0; i < kChanges && !run.hasFound(); ++i) {
        const int program = run.number(0, effect.programCount() - 1);
        effect.setProgram(program);
        const Sound output = effect.render(input, kBlock);
        const VstIntPtr answer = effect.call(effGetProgram);
        if (answer != program) {
            run.finding("number", "program " + std::to_string(program) +
                                      " was chosen while it runs, and it answers " +
                                      std::to_string(answer));
        }
        if (!isFinite(output)) {
            run.finding("not finite", "it gives what is no number after program " +
                                          std::to_string(program) + " was chosen while it runs");
        }
    }
}

} // namespace tvhost::checks
