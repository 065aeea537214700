// All programs of an effect, measured one after another.
#pragma once

#include "host/measure/EffectMeasurement.h"

#include <functional>
#include <memory>
#include <string>

namespace tvhost {

// Each program is measured in a process of its own: what an effect leaves behind goes with it, and
// a large bank takes no more memory than a small one. Only in a process with one thread, so the
// effect is loaded in those alone.
class ProgramMeasurements {
public:
    using Load = std::function<std::shared_ptr<const PluginModule>()>;
    using Take = std::function<void(int program, const EffectMeasurement& measurement)>;

    // `settings` come on top of each program. Throws UserError when the effect cannot be loaded or
    // has no programs.
    ProgramMeasurements(Load load, EffectSettings settings, double longestGap);

    int count() const { return count_; }

    // Measures all and hands each on, in their order. May be called again. Throws UserError when
    // one cannot be measured.
    void each(const Take& take) const;

private:
    Load load_;
    EffectSettings settings_;
    double longestGap_;
    std::string effect_;
    int count_ = 0;
};

} // namespace tvhost
