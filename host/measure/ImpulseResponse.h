// What an effect answers to an impulse, from every input to every output.
#pragma once

#include "host/plugin/PluginModule.h"
#include "host/presets/EffectSettings.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <memory>
#include <vector>

namespace tvhost {

// What comes out of every output of an effect when a single sample of 1.0 goes into one of its
// inputs, for each input in turn. A new effect answers for each input, so that none hears the rest
// of the one before.
class ImpulseResponse {
public:
    static constexpr int kMostChannels = 2; // in and out each, the first ones

    // Measures until the response has stayed below -120 dB for `longestGap` seconds, for at most
    // 12 s or twice that gap. Throws UserError when the effect cannot be driven or set so, or
    // produces NaN or infinity.
    ImpulseResponse(const std::shared_ptr<const PluginModule>& module,
                    const EffectSettings& settings, double sampleRate, double longestGap);

    // What another process has measured and packed.
    explicit ImpulseResponse(const nlohmann::json& packed);
    nlohmann::json packed() const;

    double sampleRate() const { return rate_; }
    // How many were measured, of all that the effect has.
    int inputs() const { return inputCount_; }
    int outputs() const { return outputCount_; }
    int allInputs() const { return allInputs_; }
    int allOutputs() const { return allOutputs_; }

    // Frames by which the effect says that all its output is late; they are no part of the paths.
    std::int64_t latency() const { return latency_; }

    // Amplitudes from the impulse on, as they would come without latency. All paths are equally
    // long.
    const std::vector<float>& path(int input, int output) const;

private:
    void measure(const std::shared_ptr<const PluginModule>& module, const EffectSettings& settings,
                 int input);
    void takeLatencyOff();

    std::size_t pathIndex(int input, int output) const {
        return static_cast<std::size_t>(input) * static_cast<std::size_t>(outputCount_) +
               static_cast<std::size_t>(output);
    }

    double rate_;
    int inputCount_ = 1;
    int outputCount_ = 1;
    int allInputs_ = 1;
    int allOutputs_ = 1;
    double longestGap_ = 0.0;
    std::int64_t latency_ = 0;
    std::vector<std::vector<float>> paths_; // by input, then output
};

} // namespace tvhost
