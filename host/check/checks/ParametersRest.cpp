#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>

namespace tvhost::checks {

namespace {

constexpr double kRate = 44100.0;
constexpr int kFrames = 44100;
constexpr int kBlock = 512;
constexpr float kNear = 1e-6f;

} // namespace

void parametersRest(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    effect.requireParameters();
    effect.start(kRate, kBlock);
    const int channels = std::max(effect.inputCount(), 1);
    // The first blocks may still bring it into the state that it starts from.
    effect.render(noise(run, channels, 4 * kBlock, 0.25f), kBlock);
    const std::vector<float> before = effect.parameters();
    effect.render(noise(run, channels, kFrames, 0.25f), kBlock);
    const std::vector<float> after = effect.parameters();
    for (int i = 0; i < effect.parameterCount(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (std::fabs(after[at] - before[at]) > kNear && effect.isAutomatable(i)) {
            run.finding("moved", effect.parameterWords(i) + " went from " +
                                     shortNumber(static_cast<double>(before[at]), 6) + " to " +
                                     shortNumber(static_cast<double>(after[at]), 6) +
                                     " while nobody wrote it");
        }
    }
}

} // namespace tvhost::checks
