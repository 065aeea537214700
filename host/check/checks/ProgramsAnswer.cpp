#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>

namespace tvhost::checks {

namespace {

constexpr int kMostPrograms = 128;
constexpr float kNear = 1e-4f;

} // namespace

void programsAnswer(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requirePrograms(1);
    const int count = std::min(effect.programCount(), kMostPrograms);
    std::vector<std::vector<float>> firstVisit;
    for (int i = 0; i < count; ++i) {
        effect.setProgram(i);
        const VstIntPtr answer = effect.call(effGetProgram);
        if (answer != i) {
            run.finding("number", "program " + std::to_string(i) + " was chosen, and it answers " +
                                      std::to_string(answer));
        }
        const std::string name = effect.text(effGetProgramName);
        const std::string listed = effect.text(effGetProgramNameIndexed, i, -1);
        if (!listed.empty() && listed != name) {
            run.finding("name", "program " + std::to_string(i) + " is called \"" + name +
                                    "\" when it is chosen and \"" + listed + "\" in the list");
        }
        firstVisit.push_back(effect.parameters());
    }
    for (int i = count - 1; i >= 0; --i) {
        effect.setProgram(i);
        const std::vector<float> values = effect.parameters();
        const std::vector<float>& first = firstVisit[static_cast<std::size_t>(i)];
        for (std::size_t p = 0; p < values.size(); ++p) {
            if (std::fabs(values[p] - first[p]) > kNear) {
                run.finding("values", effect.parameterWords(static_cast<int>(p)) + " of program " +
                                          std::to_string(i) +
                                          " is another when it is chosen again");
            }
        }
    }
}

} // namespace tvhost::checks
