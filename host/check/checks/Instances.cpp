// Many effects at a time, which know nothing of one another.
#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <memory>

#include <unistd.h>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 256;
constexpr int kMany = 256;
constexpr long kMostMemory = 3L << 30; // bytes; large ones are fewer
constexpr auto kLongest = std::chrono::seconds(20);
constexpr float kNear = 1e-4f;

long residentBytes() {
    long all = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

} // namespace

void manyInstances(CheckRun& run) {
    std::vector<std::unique_ptr<CheckedEffect>> effects;
    const auto begin = std::chrono::steady_clock::now();
    while (effects.size() < kMany && residentBytes() < kMostMemory &&
           std::chrono::steady_clock::now() - begin < kLongest) {
        run.doing("effect " + std::to_string(effects.size() + 1) + " at a time");
        try {
            effects.push_back(std::make_unique<CheckedEffect>(run));
        } catch (const UserError&) {
            run.finding("refused", "it makes no effect where there are " +
                                       std::to_string(effects.size()) + " already");
            return;
        }
        CheckedEffect& effect = *effects.back();
        if (effect.has(effFlagsCanReplacing) && effect.outputCount() > 0) {
            effect.start(kRate, kBlock);
            effect.render(noise(run, std::max(effect.inputCount(), 1), kBlock, 0.25f), kBlock);
        }
    }
    while (!effects.empty()) {
        run.doing("closing one of " + std::to_string(effects.size()));
        const int chosen = run.number(0, static_cast<int>(effects.size()) - 1);
        effects.erase(effects.begin() + chosen);
    }
}

void instancesApart(CheckRun& run) {
    CheckedEffect one(run);
    one.requireParameters();
    CheckedEffect other(run);
    const std::vector<float> before = other.parameters();
    one.setParameters(one.randomSettings());
    if (one.programCount() > 1) {
        one.setProgram(1);
        one.setParameters(one.randomSettings());
    }
    if (one.has(effFlagsCanReplacing) && one.outputCount() > 0) {
        one.start(kRate, kBlock);
        one.render(noise(run, std::max(one.inputCount(), 1), 4 * kBlock, 0.25f), kBlock);
    }
    const std::vector<float> after = other.parameters();
    for (int i = 0; i < other.parameterCount(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (std::fabs(after[at] - before[at]) > kNear && other.isAutomatable(i)) {
            run.finding("shared", other.parameterWords(i) + " went from " +
                                      shortNumber(static_cast<double>(before[at]), 6) + " to " +
                                      shortNumber(static_cast<double>(after[at]), 6) +
                                      " when it was written to another instance");
        }
    }
}

} // namespace tvhost::checks
