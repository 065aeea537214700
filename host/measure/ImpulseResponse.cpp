#include "host/measure/ImpulseResponse.h"

#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectInstance.h"
#include "host/render/TailGate.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace tvhost {

using nlohmann::json;

namespace {

constexpr int kBlockSize = 1024;
constexpr float kQuiet = 1e-6f; // -120 dB
constexpr double kLongestSeconds = 12.0;

} // namespace

ImpulseResponse::ImpulseResponse(const std::shared_ptr<const PluginModule>& module,
                                 const EffectSettings& settings, double sampleRate,
                                 double longestGap)
    : rate_(sampleRate), longestGap_(longestGap) {
    for (int input = 0; input < inputCount_; ++input) {
        measure(module, settings, input);
    }
    takeLatencyOff();
    std::size_t longest = 0;
    for (const std::vector<float>& path : paths_) {
        longest = std::max(longest, path.size());
    }
    for (std::vector<float>& path : paths_) {
        path.resize(longest);
    }
}

ImpulseResponse::ImpulseResponse(const json& packed)
    : rate_(packed.at("rate")), inputCount_(packed.at("inputs")),
      outputCount_(packed.at("outputs")), allInputs_(packed.at("allInputs")),
      allOutputs_(packed.at("allOutputs")), latency_(packed.at("latency")) {
    for (const json& path : packed.at("paths")) {
        const json::binary_t& bytes = path.get_binary();
        std::vector<float>& samples = paths_.emplace_back(bytes.size() / sizeof(float));
        std::memcpy(samples.data(), bytes.data(), bytes.size());
    }
}

json ImpulseResponse::packed() const {
    json paths = json::array();
    for (const std::vector<float>& path : paths_) {
        json::binary_t bytes;
        bytes.resize(path.size() * sizeof(float));
        std::memcpy(bytes.data(), path.data(), bytes.size());
        paths.push_back(std::move(bytes));
    }
    return {{"rate", rate_},
            {"inputs", inputCount_},
            {"outputs", outputCount_},
            {"allInputs", allInputs_},
            {"allOutputs", allOutputs_},
            {"latency", latency_},
            {"paths", std::move(paths)}};
}

const std::vector<float>& ImpulseResponse::path(int input, int output) const {
    return paths_[pathIndex(input, output)];
}

void ImpulseResponse::measure(const std::shared_ptr<const PluginModule>& module,
                              const EffectSettings& settings, int input) {
    EffectInstance effect(module);
    effect.requireAudio();
    effect.start(rate_, kBlockSize);
    settings.apply(effect);
    effect.followIoChange();
    latency_ = effect.latency();
    allInputs_ = effect.inputCount();
    allOutputs_ = effect.outputCount();
    inputCount_ = std::min(allInputs_, kMostChannels);
    outputCount_ = std::min(allOutputs_, kMostChannels);

    std::vector<std::vector<float>> buffers(static_cast<std::size_t>(allInputs_ + allOutputs_),
                                            std::vector<float>(kBlockSize));
    std::vector<float*> pointers;
    pointers.reserve(buffers.size());
    for (std::vector<float>& buffer : buffers) {
        pointers.push_back(buffer.data());
    }
    float** const in = pointers.data();
    float** const out = pointers.data() + allInputs_;

    const std::size_t first = paths_.size();
    paths_.resize(first + static_cast<std::size_t>(outputCount_));
    const auto quietFrames = static_cast<std::int64_t>(longestGap_ * rate_);
    const auto longest =
        static_cast<std::int64_t>(std::max(kLongestSeconds, 2.0 * longestGap_) * rate_);
    std::int64_t quietFrom = 0;
    for (std::int64_t frame = 0; frame - quietFrom < quietFrames && frame < longest;
         frame += kBlockSize) {
        // Effects may write over their input, so each block starts from silence.
        for (int c = 0; c < allInputs_; ++c) {
            std::fill_n(in[c], kBlockSize, 0.0f);
        }
        if (frame == 0) {
            in[input][0] = 1.0f;
        }
        effect.process(in, out, kBlockSize);
        for (int c = 0; c < outputCount_; ++c) {
            for (int i = 0; i < kBlockSize; ++i) {
                if (!std::isfinite(out[c][i])) {
                    throw UserError(effect.name() +
                                    " produced NaN or infinity from an impulse at " +
                                    shortNumber(static_cast<double>(frame + i) / rate_, 6) +
                                    " s; try other settings");
                }
                if (std::abs(out[c][i]) >= kQuiet) {
                    quietFrom = std::max(quietFrom, frame + i + 1);
                }
            }
            std::vector<float>& path = paths_[first + static_cast<std::size_t>(c)];
            path.insert(path.end(), out[c], out[c] + kBlockSize);
        }
    }
}

// Never more than there is: an effect may say that it is later than it is.
void ImpulseResponse::takeLatencyOff() {
    std::int64_t first = latency_;
    for (const std::vector<float>& path : paths_) {
        const auto heard = std::find_if(path.begin(), path.end(),
                                        [](float sample) { return std::abs(sample) >= kQuiet; });
        first = std::min<std::int64_t>(first, heard - path.begin());
    }
    latency_ = first;
    for (std::vector<float>& path : paths_) {
        path.erase(path.begin(), path.begin() + first);
    }
}

} // namespace tvhost
