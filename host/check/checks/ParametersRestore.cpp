#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tvhost::checks {

namespace {

constexpr float kNear = 1e-4f;
constexpr int kSettings = 3;
constexpr int kShuffles = 3;

// Writes `values` in `order` to a new effect, and says what came out otherwise.
void restore(CheckRun& run, const std::vector<float>& values, const std::vector<int>& order,
             const std::string& orderWords) {
    CheckedEffect effect(run);
    for (const int index : order) {
        effect.setParameter(index, values[static_cast<std::size_t>(index)]);
    }
    for (const int index : order) {
        const float wanted = values[static_cast<std::size_t>(index)];
        const float answer = effect.parameter(index);
        if (!(std::fabs(answer - wanted) <= kNear) && effect.isAutomatable(index)) {
            run.finding("order", effect.parameterWords(index) + " comes back as " +
                                     shortNumber(static_cast<double>(answer), 6) + " instead of " +
                                     shortNumber(static_cast<double>(wanted), 6) +
                                     " when parameters are restored in " + orderWords + " order");
        }
    }
}

} // namespace

void parametersRestore(CheckRun& run) {
    for (int i = 0; i < kSettings; ++i) {
        std::vector<float> values;
        {
            CheckedEffect effect(run);
            effect.requireParameters();
            effect.setParameters(effect.randomSettings());
            values = effect.parameters();
        }
        std::vector<int> order(values.size());
        std::iota(order.begin(), order.end(), 0);
        restore(run, values, order, "ascending");
        std::reverse(order.begin(), order.end());
        restore(run, values, order, "descending");
        for (int shuffle = 0; shuffle < kShuffles; ++shuffle) {
            for (int last = static_cast<int>(order.size()) - 1; last > 0; --last) {
                std::swap(order[static_cast<std::size_t>(last)],
                          order[static_cast<std::size_t>(run.number(0, last))]);
            }
            restore(run, values, order, "random");
        }
    }
}

} // namespace tvhost::checks
