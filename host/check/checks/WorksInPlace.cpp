#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 256;
constexpr int kFrames = 64 * kBlock;
constexpr double kMostDb = -90.0;

Sound rendered(CheckRun& run, const Sound& input, bool inPlace) {
    CheckedEffect effect(run);
    effect.requireInput();
    effect.start(kRate, kBlock);
    const auto block = [] { return kBlock; };
    return effect.render(input, kBlock, block, inPlace);
}

} // namespace

void worksInPlace(CheckRun& run) {
    const Sound input = noise(run, 64, kFrames, 0.25f);
    run.doing("with outputs of its own");
    const Sound apart = rendered(run, input, false);
    if (differenceInDb(apart, rendered(run, input, false)) > kMostDb) {
        throw CheckSkipped("it sounds different each time");
    }
    run.doing("with outputs that are the inputs");
    const double difference = differenceInDb(apart, rendered(run, input, true));
    if (difference > kMostDb) {
        run.finding("differs", "where outputs are the inputs, it makes another sound: the "
                               "difference lies at " +
                                   fixedNumber(difference, 1) + " dB");
    }
}

} // namespace tvhost::checks
