#include "host/base/NumberText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cmath>

namespace tvhost::checks {

namespace {

constexpr int kBlock = 512;
constexpr float kNear = 1e-4f;

std::vector<char> chunkOf(CheckedEffect& effect, int kind) {
    void* data = nullptr;
    const VstIntPtr size = effect.call(effGetChunk, kind, 0, &data);
    if (!data || size <= 0) {
        return {};
    }
    const char* const bytes = static_cast<const char*>(data);
    return {bytes, bytes + size};
}

void give(CheckedEffect& effect, int kind, std::vector<char>& chunk) {
    effect.call(effSetChunk, kind, static_cast<VstIntPtr>(chunk.size()), chunk.data());
}

void compare(CheckRun& run, CheckedEffect& effect, CheckedEffect& saved, const std::string& how) {
    for (int i = 0; i < effect.parameterCount(); ++i) {
        const float answer = effect.parameter(i);
        const float was = saved.parameter(i);
        if (!(std::fabs(answer - was) <= kNear) && effect.isAutomatable(i) &&
            !effect.showsTheSame(saved, i)) {
            run.finding("forgotten", effect.parameterWords(i) + " comes back as " +
                                         shortNumber(static_cast<double>(answer), 6) +
                                         " instead of " + shortNumber(static_cast<double>(was), 6) +
                                         " " + how);
        }
    }
}

} // namespace

void chunksRestore(CheckRun& run) {
    for (const int kind : {0, 1}) {
        const std::string which = kind == 0 ? "from a bank's chunk" : "from a program's chunk";
        run.doing(which);
        CheckedEffect saved(run);
        if (!saved.has(effFlagsProgramChunks)) {
            throw CheckSkipped("it keeps no state in chunks");
        }
        saved.setParameters(saved.randomSettings());
        std::vector<char> chunk = chunkOf(saved, kind);
        if (chunk.empty()) {
            run.finding("empty", "it says that it keeps its state in chunks, and gives none " +
                                     std::string(kind == 0 ? "for a bank" : "for a program"));
            continue;
        }
        {
            CheckedEffect fresh(run);
            give(fresh, kind, chunk);
            compare(run, fresh, saved, which + " given before the start");
        }
        CheckedEffect running(run);
        if (!running.has(effFlagsCanReplacing) || running.outputCount() == 0) {
            continue;
        }
        const Sound sound = silence(1, 4 * kBlock);
        running.start(48000.0, kBlock);
        running.render(sound, kBlock);
        give(running, kind, chunk);
        running.render(sound, kBlock);
        compare(run, running, saved, which + " given while it runs");
    }
}

} // namespace tvhost::checks
