#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

namespace tvhost::checks {

namespace {

constexpr int kBlock = 512;
constexpr int kFrames = 8 * kBlock;
constexpr float kLevel = 0.25f;

} // namespace

void everyRate(CheckRun& run) {
    std::vector<double> rates{8000.0,  11025.0,  12000.0,  16000.0,  22050.0,  24000.0, 32000.0,
                              37800.0, 44056.25, 44100.0,  44100.5,  47952.05, 48000.0, 88200.0,
                              96000.0, 176400.0, 192000.0, 352800.0, 384000.0};
    for (int i = 0; i < 4; ++i) {
        rates.push_back(8000.0 + 376000.0 * static_cast<double>(run.uniform()));
    }
    CheckedEffect changing(run);
    changing.requireSound();
    const Sound sound = noise(run, std::max(changing.inputCount(), 1), kFrames, kLevel);
    const auto look = [&](CheckedEffect& effect, double rate, const char* which) {
        const std::string at = "at " + shortNumber(rate, 3) + " Hz";
        run.doing(at);
        effect.start(rate, kBlock);
        if (!isFinite(effect.render(sound, kBlock))) {
            run.finding("not finite", std::string(which) + " gives what is no number " + at);
        }
        effect.stop();
    };
    for (const double rate : rates) {
        look(changing, rate, "an effect that changes its rate");
        CheckedEffect fresh(run);
        look(fresh, rate, "a new effect");
    }
}

} // namespace tvhost::checks
