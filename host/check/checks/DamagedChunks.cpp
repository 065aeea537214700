#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr int kTries = 60;
constexpr int kBlock = 512;

} // namespace

void damagedChunks(CheckRun& run) {
    CheckedEffect effect(run);
    if (!effect.has(effFlagsProgramChunks)) {
        throw CheckSkipped("it keeps no state in chunks");
    }
    for (int i = 0; i < kTries; ++i) {
        const int kind = i % 2;
        void* data = nullptr;
        const VstIntPtr size = effect.call(effGetChunk, kind, 0, &data);
        if (!data || size <= 0) {
            continue;
        }
        const char* const bytes = static_cast<const char*>(data);
        std::vector<char> chunk(bytes, bytes + size);
        if (i % 3 == 0) {
            chunk.resize(static_cast<std::size_t>(run.number(1, static_cast<int>(chunk.size()))));
        }
        if (i % 3 == 1) {
            std::fill(chunk.begin(), chunk.end(), static_cast<char>(run.number(0, 255)));
        }
        if (i % 3 == 2) {
            for (int flips = run.number(1, 16); flips > 0; --flips) {
                const int at = run.number(0, static_cast<int>(chunk.size()) - 1);
                chunk[static_cast<std::size_t>(at)] ^= static_cast<char>(1 << run.number(0, 7));
            }
        }
        run.doing(i % 3 == 0   ? "given a chunk that was cut"
                  : i % 3 == 1 ? "given a chunk of one byte throughout"
                               : "given a chunk with some bits turned");
        effect.call(effSetChunk, kind, static_cast<VstIntPtr>(chunk.size()), chunk.data());
        effect.parameters();
    }
    if (effect.has(effFlagsCanReplacing) && effect.outputCount() > 0) {
        effect.start(48000.0, kBlock);
        effect.render(silence(1, 4 * kBlock), kBlock);
    }
}

} // namespace tvhost::checks
