#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <cstdio>

#include <sys/mman.h>
#include <unistd.h>

namespace tvhost::checks {

namespace {

constexpr int kFrames = 4096;
constexpr int kBlock = 512;

void live(CheckRun& run) {
    CheckedEffect effect(run);
    effect.text(effGetEffectName);
    effect.setParameters(effect.randomSettings());
    if (effect.programCount() > 1) {
        effect.setProgram(1);
    }
    if (effect.has(effFlagsCanReplacing) && effect.outputCount() > 0) {
        effect.start(44100.0, kBlock);
        effect.render(noise(run, effect.inputCount(), kFrames, 0.25f), kBlock);
    }
}

} // namespace

void printsNothing(CheckRun& run) {
    const int caught = memfd_create("printed", MFD_CLOEXEC);
    dup2(caught, STDOUT_FILENO);
    live(run);
    run.unload();
    std::fflush(stdout);

    char text[80];
    const ssize_t length = pread(caught, text, sizeof text, 0);
    if (length > 0) {
        const off_t bytes = lseek(caught, 0, SEEK_END);
        run.finding("printed", "it wrote " + std::to_string(bytes) + " bytes: " +
                                   std::string(text, static_cast<std::size_t>(length)));
    }
}

} // namespace tvhost::checks
