// All that a picture of an effect in one setting needs to know.
#pragma once

#include "host/measure/EchoAnalysis.h"
#include "host/measure/ImpulseResponse.h"
#include "host/presets/EffectSettings.h"
#include "host/render/TailGate.h"

#include <memory>
#include <string>
#include <vector>

namespace tvhost {

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
    // `longestGap` as of ImpulseResponse.
    EffectMeasurement(const std::shared_ptr<const PluginModule>& module,
                      const EffectSettings& settings,
                      double longestGap = TailGate::kUsualGapSeconds);

    // What another process has measured and packed, in bytes.
    explicit EffectMeasurement(const std::string& packed);
    std::string packed() const;

    const std::string& effectName() const { return effect_; }
    const std::string& vendorName() const { return vendor_; }
    // -1 and empty for an effect without programs.
    int programNumber() const { return program_; }
    const std::string& programName() const { return programText_; }
    const std::vector<Parameter>& parameters() const { return texts_; }

    const ImpulseResponse& response() const { return impulse_; }
    const EchoAnalysis& echoes(int input, int output) const;

    // The path with the strongest first echo; that with the strongest arrival when no path has an
    // echo.
    Path leadingPath() const;

private:
    explicit EffectMeasurement(const nlohmann::json& unpacked);
    void analyse();

    ImpulseResponse impulse_;
    std::string effect_;
    std::string vendor_;
    int program_ = -1;
    std::string programText_;
    std::vector<Parameter> texts_;
    std::vector<EchoAnalysis> analyses_; // as the response's paths
};

} // namespace tvhost
