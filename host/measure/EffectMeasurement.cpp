#include "host/measure/EffectMeasurement.h"

#include "host/base/NumberText.h"
#include "host/plugin/EffectInstance.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <utility>

namespace tvhost {

using nlohmann::json;

namespace {

constexpr int kBlockSize = 512;

EffectMeasurement::Parameter describe(const EffectInstance& effect, int index) {
    const double value = static_cast<double>(effect.parameter(index));
    const std::string display = effect.parameterDisplay(index);
    EffectMeasurement::Parameter parameter{effect.parameterName(index), shortNumber(value, 3), {}};
    // Many effects show the normalised value itself, with a unit after it that says nothing.
    const auto shown = parseNumber(display);
    if (!display.empty() && (!shown || std::abs(*shown - value) > 0.001)) {
        const std::string label = effect.parameterLabel(index);
        parameter.words = label.empty() ? display : display + " " + label;
    }
    return parameter;
}

} // namespace

EffectMeasurement::EffectMeasurement(const std::shared_ptr<const PluginModule>& module,
                                     const EffectSettings& settings, double longestGap)
    : impulse_(module, settings, kSampleRate, longestGap) {
    EffectInstance instance(module);
    instance.start(kSampleRate, kBlockSize);
    settings.apply(instance);
    effect_ = instance.name();
    vendor_ = instance.vendorName();
    const std::vector<std::string> names = instance.programNames();
    const int current = instance.currentProgram();
    if (current >= 0 && current < static_cast<int>(names.size())) {
        program_ = current;
        programText_ = names[static_cast<std::size_t>(current)];
    }
    for (int i = 0; i < instance.parameterCount(); ++i) {
        texts_.push_back(describe(instance, i));
    }
    analyse();
}

EffectMeasurement::EffectMeasurement(const std::string& packed)
    : EffectMeasurement(json::from_cbor(packed)) {}

EffectMeasurement::EffectMeasurement(const json& unpacked)
    : impulse_(unpacked.at("response")), effect_(unpacked.at("effect")),
      vendor_(unpacked.at("vendor")), program_(unpacked.at("program")),
      programText_(unpacked.at("programText")) {
    for (const json& parameter : unpacked.at("parameters")) {
        texts_.push_back({parameter.at(0), parameter.at(1), parameter.at(2)});
    }
    analyse();
}

std::string EffectMeasurement::packed() const {
    json parameters = json::array();
    for (const Parameter& parameter : texts_) {
        parameters.push_back(json::array({parameter.name, parameter.value, parameter.words}));
    }
    std::string bytes;
    json::to_cbor({{"response", impulse_.packed()},
                   {"effect", effect_},
                   {"vendor", vendor_},
                   {"program", program_},
                   {"programText", programText_},
                   {"parameters", std::move(parameters)}},
                  bytes);
    return bytes;
}

void EffectMeasurement::analyse() {
    for (int in = 0; in < impulse_.inputs(); ++in) {
        for (int out = 0; out < impulse_.outputs(); ++out) {
            analyses_.emplace_back(impulse_.path(in, out), kSampleRate);
        }
    }
}

const EchoAnalysis& EffectMeasurement::echoes(int input, int output) const {
    return analyses_[static_cast<std::size_t>(input) *
                         static_cast<std::size_t>(impulse_.outputs()) +
                     static_cast<std::size_t>(output)];
}

EffectMeasurement::Path EffectMeasurement::leadingPath() const {
    Path strongest{0, 0};
    double level = -1.0;
    bool hasEcho = false;
    for (int in = 0; in < impulse_.inputs(); ++in) {
        for (int out = 0; out < impulse_.outputs(); ++out) {
            const EchoAnalysis& path = echoes(in, out);
            if (path.arrivals().empty()) {
                continue;
            }
            const bool echo = path.echoCount() > 0;
            const double candidate = (echo ? path.echo(0) : path.arrivals().front()).level;
            if (echo < hasEcho || (echo == hasEcho && candidate <= level)) {
                continue;
            }
            hasEcho = echo;
            level = candidate;
            strongest = {in, out};
        }
    }
    return strongest;
}

} // namespace tvhost
