#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"
#include "host/plugin/EffectInstance.h"
#include "host/presets/EffectState.h"

#include <cmath>

namespace tvhost::checks {

namespace {

constexpr float kNear = 1e-4f;

} // namespace

void presetsRestore(CheckRun& run) {
    std::vector<float> settings;
    {
        CheckedEffect effect(run);
        effect.requireParameters();
        settings = effect.randomSettings();
    }
    for (const Preset::Kind kind : {Preset::Kind::kProgram, Preset::Kind::kBank}) {
        const std::string which = kind == Preset::Kind::kProgram ? "a preset" : "a bank of presets";
        run.doing("saved in " + which + " and restored");
        EffectInstance saved(run.module());
        if (kind == Preset::Kind::kBank && !saved.keepsChunks()) {
            continue; // its bank is its edited programs, which have a check of their own
        }
        for (int i = 0; i < saved.parameterCount(); ++i) {
            saved.setParameter(i, settings[static_cast<std::size_t>(i)]);
        }
        // As a file holds it.
        const Preset preset = presetFromBytes(bytesOf(presetOf(saved, kind)));
        EffectInstance fresh(run.module());
        try {
            loadPreset(fresh, preset, which);
        } catch (const UserError& error) {
            run.finding("declined",
                        "it does not take back " + which + " of its own: " + error.what());
            continue;
        }
        for (int i = 0; i < fresh.parameterCount(); ++i) {
            const float wanted = saved.parameter(i);
            const float answer = fresh.parameter(i);
            // Between two steps a value may stand anywhere, as long as it reads the same.
            const std::string display = fresh.parameterDisplay(i);
            const bool readsTheSame = !display.empty() && display == saved.parameterDisplay(i);
            if (!(std::fabs(answer - wanted) <= kNear) && !readsTheSame && fresh.isAutomatable(i)) {
                run.finding("forgotten",
                            "parameter " + std::to_string(i) + " (" + fresh.parameterName(i) +
                                ") comes back as " + shortNumber(static_cast<double>(answer), 6) +
                                " instead of " + shortNumber(static_cast<double>(wanted), 6) +
                                " from " + which);
            }
        }
    }
}

} // namespace tvhost::checks
