#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <cmath>

namespace tvhost::checks {

namespace {

constexpr int kLargest = 1024;
constexpr int kUsual = 512;
constexpr int kFrames = 44100;
constexpr double kMostDb = -60.0;
constexpr double kWholeRate = 44100.0;
constexpr double kFractions[] = {44100.5, 44099.75, 44056.25};
constexpr double kMostLevelDb = 6.0; // between two rates that hardly differ

Sound rendered(CheckRun& run, double rate, const Sound& input, bool varying) {
    CheckedEffect effect(run);
    effect.requireInput();
    effect.start(rate, kLargest);
    return effect.render(input, kLargest,
                         [&] { return varying ? run.number(1, kLargest) : kUsual; });
}

// Its sound in blocks of one size. Throws CheckSkipped where nothing can be compared.
Sound compared(CheckRun& run, double rate, const Sound& input) {
    const std::string at = "at " + shortNumber(rate, 2) + " Hz";
    run.doing(at);
    Sound usual = rendered(run, rate, input, false);
    if (differenceInDb(usual, rendered(run, rate, input, false)) > kMostDb) {
        throw CheckSkipped("it sounds different each time");
    }
    const double difference = differenceInDb(usual, rendered(run, rate, input, true));
    if (difference > kMostDb) {
        run.finding("differs", "blocks of other sizes make another sound " + at +
                                   ": the difference lies at " + fixedNumber(difference, 1) +
                                   " dB");
    }
    return usual;
}

} // namespace

void blocksAgree(CheckRun& run) {
    const Sound input = noise(run, 64, kFrames, 0.25f);
    const double whole = levelInDb(compared(run, kWholeRate, input));
    for (const double rate : kFractions) {
        const double level = levelInDb(compared(run, rate, input));
        if (std::abs(level - whole) > kMostLevelDb) {
            run.finding("level", "at " + shortNumber(rate, 2) + " Hz its level is " +
                                     fixedNumber(level, 1) + " dB, and at 44100 Hz " +
                                     fixedNumber(whole, 1) + " dB");
        }
    }
}

} // namespace tvhost::checks
