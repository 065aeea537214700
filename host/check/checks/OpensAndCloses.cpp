#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

namespace tvhost::checks {

namespace {

constexpr int kTimes = 100;

} // namespace

void opensAndCloses(CheckRun& run) {
    for (int i = 1; i <= kTimes; ++i) {
        run.doing("time " + std::to_string(i) + " of " + std::to_string(kTimes));
        {
            CheckedEffect effect(run);
            effect.text(effGetEffectName);
            effect.call(effGetVstVersion);
            effect.parameters();
        }
        run.unload();
    }
}

} // namespace tvhost::checks
