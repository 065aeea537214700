#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr int kBlock = 512;
constexpr int kRandomSettings = 3;

} // namespace

void settingsAtEveryRate(CheckRun& run) {
    for (const int rate : {22050, 44100, 48000, 96000, 192000, 384000}) {
        const auto look = [&](const std::vector<float>& values, const std::string& with) {
            run.doing(with + " at " + std::to_string(rate) + " Hz");
            CheckedEffect effect(run);
            effect.start(rate, kBlock);
            effect.setParameters(values);
            const Sound second = noise(run, std::max(effect.inputCount(), 1), rate, 0.25f);
            effect.render(second, kBlock);
        };
        std::size_t count = 0;
        std::vector<std::vector<float>> settings;
        {
            CheckedEffect effect(run);
            effect.requireSound();
            effect.requireParameters();
            count = static_cast<std::size_t>(effect.parameterCount());
            for (int i = 0; i < kRandomSettings; ++i) {
                settings.push_back(effect.randomSettings());
            }
        }
        look(std::vector<float>(count, 0.0f), "with all parameters at 0");
        look(std::vector<float>(count, 1.0f), "with all parameters at 1");
        for (const std::vector<float>& values : settings) {
            look(values, "with random settings");
        }
    }
}

} // namespace tvhost::checks
