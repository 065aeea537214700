#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

namespace tvhost::checks {

namespace {

constexpr int kLargest = 1024;
constexpr int kUsual = 512;
constexpr int kFrames = 44100;
constexpr double kMostDb = -60.0;

Sound rendered(CheckRun& run, double rate, const Sound& input, bool varying) {
    CheckedEffect effect(run);
    effect.requireInput();
    effect.start(rate, kLargest);
    return effect.render(input, kLargest,
                         [&] { return varying ? run.number(1, kLargest) : kUsual; });
}

} // namespace

void blocksAgree(CheckRun& run) {
    const Sound input = noise(run, 64, kFrames, 0.25f);
    for (const double rate : {44100.0, 44100.5}) {
        const std::string at = "at " + shortNumber(rate, 1) + " Hz";
        run.doing(at);
        const Sound usual = rendered(run, rate, input, false);
        if (differenceInDb(usual, rendered(run, rate, input, false)) > kMostDb) {
            throw CheckSkipped("it sounds different each time");
        }
        const double difference = differenceInDb(usual, rendered(run, rate, input, true));
        if (difference > kMostDb) {
            run.finding("differs", "blocks of other sizes make another sound " + at +
                                       ": the difference lies at " + fixedNumber(difference, 1) +
                                       " dB");
        }
    }
}

} // namespace tvhost::checks
