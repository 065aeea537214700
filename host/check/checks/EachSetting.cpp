#include "host/check/checks/EachSetting.h"

#include <algorithm>

namespace tvhost::checks {

void eachSetting(CheckRun& run, const CheckedEffect& effect, SettingCounts counts,
                 const std::function<void(CheckedEffect& tried, const std::string& with)>& look) {
    const int programs = std::clamp(effect.programCount(), 1, counts.programs);
    for (int program = 0; program < programs; ++program) {
        CheckedEffect fresh(run);
        if (fresh.programCount() > 1) {
            fresh.setProgram(program);
        }
        look(fresh, "in program " + std::to_string(program));
    }
    for (int i = 0; i < counts.random && effect.parameterCount() > 0; ++i) {
        CheckedEffect fresh(run);
        fresh.setParameters(fresh.randomSettings());
        look(fresh, "with random settings " + std::to_string(i));
    }
}

} // namespace tvhost::checks
