#include "tests/effect/EffectState.h"

#include "effect/VstXSynth.h"
#include "tests/support/Bits.h"
#include "tests/support/ReferenceDelay.h"

#include <cstring>
#include <sstream>

namespace {

template <typename Number>
void compare(std::ostream& out, const char* name, Number effect, Number model) {
    const bool bothNotNumbers = effect != effect && model != model;
    if (!bothNotNumbers && std::memcmp(&effect, &model, sizeof(Number)) != 0) {
        out << name << " is " << effect << " and should be " << model << "; ";
    }
}

void compareFilter(std::ostream& out, const char* name, const FourPoleFilter* effect,
                   const ReferenceFilter& model) {
    static_assert(sizeof(FourPoleFilter) == 16 * sizeof(double));
    double effectValues[16];
    double modelValues[16];
    std::memcpy(effectValues, effect, sizeof(effectValues));
    std::memcpy(modelValues, &model, sizeof(modelValues));
    const std::ptrdiff_t at = firstDifference(effectValues, modelValues, 16);
    if (at >= 0) {
        out << name << " differs in its double " << at << ": " << effectValues[at] << " instead of "
            << modelValues[at] << "; ";
    }
}

void compareLine(std::ostream& out, const char* name, const float* effect,
                 const std::vector<float>& model) {
    const std::ptrdiff_t at = firstDifference(effect, model.data(), model.size());
    if (at >= 0) {
        out << name << " differs at " << at << ": " << effect[at] << " instead of "
            << model[static_cast<std::size_t>(at)] << "; ";
    }
}

void comparePrograms(std::ostream& out, const VstXSynth& effect, const ReferenceDelay& model) {
    for (std::size_t i = 0; i < model.programs.size(); ++i) {
        const DelayProgram& a = effect.programs[i];
        const ReferenceDelay::Program& b = model.programs[i];
        if (!sameNumber(a.delayTime, b.delayTime) || !sameNumber(a.feedBack, b.feedBack) ||
            !sameNumber(a.lowPass, b.lowPass) || !sameNumber(a.highPass, b.highPass) ||
            a.highPassType != b.highPassType || a.lowPassType != b.lowPassType ||
            !sameNumber(a.leftRight, b.leftRight) || !sameNumber(a.panDepth, b.panDepth) ||
            !sameNumber(a.mix, b.mix) || a.name != b.name) {
            out << "the record of program " << i << " differs; ";
        }
    }
}

} // namespace

std::string stateDifference(const VstXSynth& effect, const ReferenceDelay& model) {
    std::ostringstream out;
    out.precision(17);
    compare(out, "delayTime", effect.delayTime, model.delayTime);
    compare(out, "feedBack", effect.feedBack, model.feedBack);
    compare(out, "lowPass", effect.lowPass, model.lowPass);
    compare(out, "highPass", effect.highPass, model.highPass);
    compare(out, "lowPassType", effect.lowPassType, model.lowPassType);
    compare(out, "highPassType", effect.highPassType, model.highPassType);
    compare(out, "leftRight", effect.leftRight, model.leftRight);
    compare(out, "panDepth", effect.panDepth, model.panDepth);
    compare(out, "mix", effect.mix, model.mix);
    compare(out, "delayLength", effect.delayLength, model.delayLength);
    compare(out, "delayPosition", effect.delayPosition, model.delayPosition);
    compare(out, "sweepPhase", effect.sweepPhase, model.sweepPhase);
    compare(out, "sineIndex", effect.sineIndex, model.sineIndex);
    compare(out, "panSide", effect.panSide, model.panSide);
    compare(out, "lastSampleRate", effect.lastSampleRate, model.lastSampleRate);
    compareFilter(out, "lowPassLeft", effect.lowPassLeft, model.lowPassLeft);
    compareFilter(out, "lowPassRight", effect.lowPassRight, model.lowPassRight);
    compareFilter(out, "highPassLeft", effect.highPassLeft, model.highPassLeft);
    compareFilter(out, "highPassRight", effect.highPassRight, model.highPassRight);
    compareLine(out, "the left line", effect.delayBufferLeft, model.delayBufferLeft);
    compareLine(out, "the right line", effect.delayBufferRight, model.delayBufferRight);
    comparePrograms(out, effect, model);
    return out.str();
}
