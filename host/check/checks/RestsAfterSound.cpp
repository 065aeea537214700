#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <immintrin.h>

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 512;
constexpr int kSoundFrames = 24000;
constexpr int kBlocks = 30 * 48000 / kBlock; // half a minute of silence
constexpr int kLastBlocks = 5 * 48000 / kBlock;
constexpr unsigned kDenormalSeen = 1u << 1; // the processor's flag for a tiny operand

} // namespace

void restsAfterSound(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireInput();
    effect.start(kRate, kBlock);
    effect.render(noise(run, effect.inputCount(), kSoundFrames, 0.25f), kBlock);
    BlockBuffers buffers(effect.inputCount(), effect.outputCount(), kBlock);
    int crawling = 0;
    for (int i = 0; i < kBlocks; ++i) {
        for (int c = 0; c < effect.inputCount(); ++c) {
            std::fill_n(buffers.inputs()[c], kBlock, 0.0f);
        }
        _mm_setcsr(_mm_getcsr() & ~kDenormalSeen);
        effect.process(buffers, kBlock);
        const bool seen = (_mm_getcsr() & kDenormalSeen) != 0;
        crawling += seen && i >= kBlocks - kLastBlocks ? 1 : 0;
    }
    if (crawling > kLastBlocks / 2) {
        run.finding("denormal", "half a minute after the sound has ended it still calculates with "
                                "denormal numbers, in " +
                                    std::to_string(crawling) + " of the last " +
                                    std::to_string(kLastBlocks) + " blocks");
    }
}

} // namespace tvhost::checks
