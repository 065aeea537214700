#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

namespace tvhost::checks {

namespace {

constexpr int kMostParameters = 1000000;
constexpr int kMostPrograms = 65536;
constexpr int kMostChannels = 1024;
constexpr VstIntPtr kFirstVersion = 2000; // of the interface's second generation
constexpr VstIntPtr kLastVersion = 2499;

void requireCount(CheckRun& run, const char* what, int count, int most) {
    if (count < 0 || count > most) {
        run.finding("count", std::string("its record tells ") + std::to_string(count) + " " + what);
    }
}

} // namespace

void describesItself(CheckRun& run) {
    CheckedEffect effect(run);
    const AEffect& record = effect.record();
    requireCount(run, "parameters", record.numParams, kMostParameters);
    requireCount(run, "programs", record.numPrograms, kMostPrograms);
    requireCount(run, "inputs", record.numInputs, kMostChannels);
    requireCount(run, "outputs", record.numOutputs, kMostChannels);
    if (record.initialDelay < 0) {
        run.finding("latency", "its record tells a latency of " +
                                   std::to_string(record.initialDelay) + " samples");
    }
    if (record.uniqueID == 0) {
        run.finding("identifier", "its unique identifier is 0, by which sessions cannot find it");
    }
    if (effect.has(effFlagsCanReplacing) != (record.processReplacing != nullptr)) {
        run.finding("flags", effect.has(effFlagsCanReplacing)
                                 ? "it says that it can replace and has no entry for that"
                                 : "it has an entry for replacing and doesn't say that it can");
    }
    if (effect.has(effFlagsCanDoubleReplacing) && !record.processDoubleReplacing) {
        run.finding("flags", "it says that it can replace in double precision and has no entry "
                             "for that");
    }
    const VstIntPtr version = effect.call(effGetVstVersion);
    if (version < kFirstVersion || version > kLastVersion) {
        run.finding("version", "it answers " + std::to_string(version) +
                                   " for the version of the interface; 2400 is usual");
    }
    if (effect.text(effGetEffectName).empty() && effect.text(effGetProductString).empty()) {
        run.finding("name", "it tells neither an effect name nor a product name");
    }
}

} // namespace tvhost::checks
