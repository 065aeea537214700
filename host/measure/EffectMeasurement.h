#pragma once

#include "host/measure/EchoAnalysis.h"
#include "host/measure/ImpulseResponse.h"
#include "host/plugin/EffectSettings.h"

#include <memory>
#include <string>
#include <vector>

namespace tvhost {

// An effect in one setting, as a picture of it needs it.
class EffectMeasurement {
public:
    static constexpr double kSampleRate = 44100.0;

    struct Parameter {
        std::string name;
        std::string value; // normalised, as --set takes it
        std::string words; // the effect's own text where it says more than the value
    };

    // One way through the effect.
    struct Path {
        int input;
        int output;
    };

    // Throws UserError when the effect cannot be driven or set so.
    EffectMeasurement(const std::shared_ptr<const PluginModule>& module,
                      const EffectSettings& settings);

    const std::string& effectName() const { return effect; }
    const std::string& vendorName() const { return vendor; }
    // -1 and empty for an effect without programs.
    int programNumber() const { return program; }
    const std::string& programName() const { return programText; }
    const std::vector<Parameter>& parameters() const { return texts; }

    const ImpulseResponse& response() const { return impulse; }
    const EchoAnalysis& echoes(int input, int output) const;

    // The path with the strongest first echo; that with the strongest arrival when no path has an
    // echo.
    Path leadingPath() const;

private:
    ImpulseResponse impulse;
    std::string effect;
    std::string vendor;
    int program = -1;
    std::string programText;
    std::vector<Parameter> texts;
    std::vector<EchoAnalysis> analyses; // as the response's paths
};

} // namespace tvhost
