#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>

namespace tvhost::checks {

namespace {

constexpr int kBlock = 512;
constexpr int kFrames = 4 * kBlock;
constexpr float kNear = 1e-4f;

void look(CheckRun& run, CheckedEffect& effect, const std::vector<float>& wanted,
          const std::string& when) {
    for (int i = 0; i < effect.parameterCount(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        const float answer = effect.parameter(i);
        if (!(std::fabs(answer - wanted[at]) <= kNear) && effect.isAutomatable(i)) {
            run.finding("changed", effect.parameterWords(i) + " is " +
                                       shortNumber(static_cast<double>(answer), 6) + " " + when +
                                       ", and was " +
                                       shortNumber(static_cast<double>(wanted[at]), 6));
        }
    }
}

} // namespace

void stateOutlivesStart(CheckRun& run) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        const std::string at = " at " + shortNumber(rate, 0) + " Hz";
        run.doing("restored before and after the first block" + at);
        CheckedEffect effect(run);
        effect.requireSound();
        effect.requireParameters();
        const Sound sound = noise(run, std::max(effect.inputCount(), 1), kFrames, 0.25f);
        effect.setParameters(effect.randomSettings());
        std::vector<float> wanted = effect.parameters();
        effect.start(rate, kBlock);
        look(run, effect, wanted, "once it is switched on" + at);
        wanted = effect.parameters();
        effect.render(sound, kBlock);
        look(run, effect, wanted, "after the first blocks" + at);

        effect.setParameters(effect.randomSettings());
        wanted = effect.parameters();
        effect.render(sound, kBlock);
        look(run, effect, wanted, "some blocks after it was written" + at);
        wanted = effect.parameters();
        effect.stop();
        look(run, effect, wanted, "once it is switched off" + at);
    }
}

} // namespace tvhost::checks
