#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
constexpr int kPart = 32; // a host cuts its block where a value changes
constexpr int kFrames = 48000;
constexpr int kMostWrites = 8; // between two parts

} // namespace

void automationInsideBlocks(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    effect.requireParameters();
    std::vector<int> automatable;
    for (int i = 0; i < effect.parameterCount(); ++i) {
        if (effect.isAutomatable(i)) {
            automatable.push_back(i);
        }
    }
    if (automatable.empty()) {
        throw CheckSkipped("none of its parameters can be automated");
    }
    effect.start(kRate, kBlock);
    const int last = static_cast<int>(automatable.size()) - 1;
    const auto write = [&] {
        for (int i = run.number(1, kMostWrites); i > 0; --i) {
            effect.setParameter(automatable[static_cast<std::size_t>(run.number(0, last))],
                                run.uniform());
        }
        return run.number(1, kPart);
    };
    const Sound input = noise(run, std::max(effect.inputCount(), 1), kFrames, 0.25f);
    if (!isFinite(effect.render(input, kPart, write))) {
        run.finding("not finite", "it gives what is no number while its parameters move");
    }
}

} // namespace tvhost::checks
