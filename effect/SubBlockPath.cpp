// VstXSynth's signal path over a sub-block. The results are those of processSample, bit for bit.
#include "effect/LiveField.h"
#include "effect/SubBlock.h"
#include "effect/VstXSynth.h"

#include <algorithm>

// Processes up to `frames` samples and returns how many: 0 where the next sample has to go by
// itself.
VstInt32 VstXSynth::processSubBlock(const StereoBlock& block, VstInt32 frames) {
    SubBlock subBlock;
    if (!makeSubBlock(*this, clearing_, sweep_, block, frames, subBlock)) {
        return 0;
    }
    kRenderSubBlock(subBlock);
    if (subBlock.frames == 0) {
        return 0;
    }

    const std::int64_t start = subBlock.held.delayPosition;
    const std::int64_t end = start + subBlock.frames;
    sweepPhase = sweepPhaseAt(end - 1, subBlock.held.delayLength);
    sineIndex = sineIndexAt(sweepPhase);
    if (readLive(delayPosition) == start) { // else somebody has rewound the lines meanwhile
        writeLive(delayPosition, end);
    }
    if (clearing_.running() ||
        clearing_.begun() != subBlock.clearingsBegun) { // these are old echoes
        std::fill_n(delayBufferLeft + start, subBlock.frames, 0.0f);
        std::fill_n(delayBufferRight + start, subBlock.frames, 0.0f);
    }
    return subBlock.frames;
}
