// What an effect answers to an impulse, from every input to every output.
#pragma once

#include "host/plugin/PluginModule.h"
#include "host/presets/EffectSettings.h"

#include <memory>
#include <vector>

namespace tvhost {

// What comes out of every output of an effect when a single sample of 1.0 goes into one of its
// inputs, for each input in turn. A new effect answers for each input, so that none hears the rest
// of the one before.
class ImpulseResponse {
public:
    // Measures until the response stays below -120 dB, at most 12 s. Throws UserError when the
    // effect cannot be driven or set so, or produces NaN or infinity.
    ImpulseResponse(const std::shared_ptr<const PluginModule>& module,
                    const EffectSettings& settings, double sampleRate);

    double sampleRate() const { return rate_; }
    int inputs() const { return inputCount_; }
    int outputs() const { return outputCount_; }

    // Amplitudes from the impulse on. All paths are equally long.
    const std::vector<float>& path(int input, int output) const;

private:
    void measure(const std::shared_ptr<const PluginModule>& module, const EffectSettings& settings,
                 int input);

    std::size_t pathIndex(int input, int output) const {
        return static_cast<std::size_t>(input) * static_cast<std::size_t>(outputCount_) +
               static_cast<std::size_t>(output);
    }

    double rate_;
    int inputCount_ = 1;
    int outputCount_ = 1;
    std::vector<std::vector<float>> paths_; // by input, then output
};

} // namespace tvhost
