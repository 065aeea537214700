#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>

namespace tvhost::checks {

namespace {

constexpr float kNear = 1e-4f;
constexpr int kMostParameters = 512; // each is compared with all others

} // namespace

void parametersStayApart(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireParameters();
    for (int i = 0; i < std::min(effect.parameterCount(), kMostParameters); ++i) {
        if (!effect.isAutomatable(i)) {
            continue;
        }
        std::vector<float> before = effect.parameters();
        for (const float value : {0.0f, 1.0f, run.uniform()}) {
            effect.setParameter(i, value);
            const std::vector<float> after = effect.parameters();
            for (int other = 0; other < effect.parameterCount(); ++other) {
                const auto at = static_cast<std::size_t>(other);
                if (other != i && std::fabs(after[at] - before[at]) > kNear) {
                    run.finding("moved", "writing " + shortNumber(static_cast<double>(value), 6) +
                                             " to " + effect.parameterWords(i) + " moves " +
                                             effect.parameterWords(other) + " from " +
                                             shortNumber(static_cast<double>(before[at]), 6) +
                                             " to " +
                                             shortNumber(static_cast<double>(after[at]), 6));
                }
            }
            before = after;
        }
    }
}

} // namespace tvhost::checks
