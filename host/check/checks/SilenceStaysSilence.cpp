#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
constexpr int kFrames = 24000;
constexpr int kMostPrograms = 32;
constexpr float kSilent = 1e-5f; // -100 dB

} // namespace

void silenceStaysSilence(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireInput();
    if (effect.isSynth()) {
        throw CheckSkipped("it makes sound by itself");
    }
    const int programs = std::clamp(effect.programCount(), 1, kMostPrograms);
    for (int program = 0; program < programs; ++program) {
        if (effect.programCount() > 1) {
            effect.setProgram(program);
        }
        const std::string in = "in program " + std::to_string(program);
        run.doing(in);
        effect.start(kRate, kBlock);
        const float level = peak(effect.render(silence(1, kFrames), kBlock));
        effect.stop();
        if (level > kSilent) {
            run.finding("sounds", "silence comes out as sound of up to " +
                                      decibelText(static_cast<double>(level)) + "FS " + in);
        }
    }
}

} // namespace tvhost::checks
