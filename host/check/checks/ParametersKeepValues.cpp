#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <cmath>

namespace tvhost::checks {

namespace {

constexpr float kNear = 1e-4f;
constexpr float kEdge = 1e-5f; // beyond the ends by rounding alone
constexpr float kFar = 0.5f;   // a switch may round this much

std::string inWords(float value) {
    return shortNumber(static_cast<double>(value), 6);
}

} // namespace

void parametersKeepValues(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireParameters();
    for (int i = 0; i < effect.parameterCount(); ++i) {
        if (!effect.isAutomatable(i)) {
            continue; // a meter or the like
        }
        const std::string words = effect.parameterWords(i);
        for (const float value : {0.0f, 1.0f, 0.5f, run.uniform(), run.uniform()}) {
            effect.setParameter(i, value);
            const float answer = effect.parameter(i);
            if (!(answer >= -kEdge && answer <= 1.0f + kEdge)) {
                run.finding("range", words + " answers " + inWords(answer) + " after " +
                                         inWords(value) + " was written; values go from 0 to 1");
                break;
            }
            const bool isEnd = value == 0.0f || value == 1.0f;
            if (isEnd && std::fabs(answer - value) > kFar) {
                run.finding("lost", words + " answers " + inWords(answer) + " after " +
                                        inWords(value) + " was written");
                break;
            }
            // A step may round what comes, but what it answers must be a step of its own.
            effect.setParameter(i, answer);
            const float again = effect.parameter(i);
            if (!(std::fabs(again - answer) <= kNear)) {
                run.finding("drifts", words + " answers " + inWords(again) +
                                          " after its own answer, " + inWords(answer) +
                                          ", was written back");
                break;
            }
        }
    }
}

} // namespace tvhost::checks
