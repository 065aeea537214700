#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>

namespace tvhost::checks {

namespace {

constexpr int kMostPrograms = 16;
constexpr float kNear = 1e-4f;

} // namespace

void programsKeepEdits(CheckRun& run) {
    CheckedEffect effect(run);
    if (effect.has(effFlagsProgramChunks)) {
        throw CheckSkipped("it keeps its state in chunks");
    }
    effect.requirePrograms(2);
    effect.requireParameters();
    // As a host restores a bank: every program in turn, then back to the one in use.
    const int count = std::min(effect.programCount(), kMostPrograms);
    std::vector<std::vector<float>> bank;
    for (int i = 0; i < count; ++i) {
        effect.setProgram(i);
        effect.setParameters(effect.randomSettings());
        bank.push_back(effect.parameters());
    }
    for (int i = 0; i < count; ++i) {
        effect.setProgram(i);
        for (int p = 0; p < effect.parameterCount(); ++p) {
            const float wanted = bank[static_cast<std::size_t>(i)][static_cast<std::size_t>(p)];
            const float answer = effect.parameter(p);
            if (!(std::fabs(answer - wanted) <= kNear) && effect.isAutomatable(p)) {
                run.finding("forgotten",
                            effect.parameterWords(p) + " of program " + std::to_string(i) +
                                " was set to " + shortNumber(static_cast<double>(wanted), 6) +
                                " and is " + shortNumber(static_cast<double>(answer), 6) +
                                " after a visit to the others");
            }
        }
    }
}

} // namespace tvhost::checks
