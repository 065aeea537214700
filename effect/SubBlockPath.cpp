// VstXSynth's signal path over a sub-block. The results are those of processSample, bit for bit.
#include "effect/LiveField.h"
#include "effect/SubBlock.h"
#include "effect/VstXSynth.h"

#include <algorithm>

namespace {

// Below this many frames a sub-block costs more than it saves.
constexpr VstInt32 kMinSubBlock = 4;

} // namespace

// Processes up to `frames` samples and returns how many: 0 where the next sample has to go by
// itself.
VstInt32 VstXSynth::processSubBlock(const StereoBlock& block, VstInt32 frames) {
    const DelayFields& live = *this;
    // Over lines that are being cleared sample by sample: what is read of them in advance would be
    // old echoes that come back.
    if (readLive(clearing_)) {
        return 0;
    }
    const std::uint32_t clearings = readLive(clearings_);
    forgetMemory();
    const DelayFields fields = live;

    // The first sample of a pass goes by itself, so that a sub-block never starts where the lines
    // are rewound to.
    const std::int64_t start = fields.delayPosition;
    if (start == 0 || fields.delayLength <= start + kMinSubBlock ||
        fields.delayLength > kDelayCapacity) {
        return 0;
    }
    const std::int64_t beforeWrap = fields.delayLength - 1 - start;

    SubBlock subBlock;
    const bool lowOn = fields.lowPass > 0.0;
    const bool highOn = fields.highPass > 0.0;
    int pairs = 0;
    if (lowOn && fields.lowPassType) {
        subBlock.pairs[pairs++] = {lowPassLeft, lowPassRight};
    }
    if (highOn && fields.highPassType) {
        subBlock.pairs[pairs++] = {highPassLeft, highPassRight};
    }
    subBlock.pairsInside = pairs;
    if (lowOn && !fields.lowPassType) {
        subBlock.pairs[pairs++] = {lowPassLeft, lowPassRight};
    }
    if (highOn && !fields.highPassType) {
        subBlock.pairs[pairs++] = {highPassLeft, highPassRight};
    }
    subBlock.pairsRunning = pairs;

    subBlock.frames =
        static_cast<VstInt32>(std::min<std::int64_t>({beforeWrap, frames, kMaxSubBlock}));
    subBlock.feedBack = fields.feedBack;
    subBlock.inLeft = block.inLeft;
    subBlock.inRight = block.inRight;
    subBlock.outLeft = block.outLeft;
    subBlock.outRight = block.outRight;
    subBlock.lineLeft = delayBufferLeft + start;
    subBlock.lineRight = delayBufferRight + start;

    const BalanceGains gains = balanceGains(fields.leftRight);
    subBlock.gainToLeft = gains.toLeft;
    subBlock.gainToRight = gains.toRight;
    subBlock.mix = fields.mix;
    subBlock.sineTable = sineTable;
    subBlock.sineTableSize = static_cast<double>(kSineTableSize);
    subBlock.panDepth = fields.panDepth;
    subBlock.panSide = panSide;
    subBlock.start = static_cast<VstInt32>(start);
    subBlock.length = static_cast<VstInt32>(fields.delayLength);

    kRenderSubBlock(subBlock, live, fields);
    if (subBlock.frames == 0) {
        return 0;
    }

    sweepPhase = subBlock.sweepPhase;
    sineIndex = subBlock.sineIndex;
    if (readLive(delayPosition) == start) { // else somebody has rewound the lines meanwhile
        writeLive(delayPosition, start + subBlock.frames);
    }
    if (readLive(clearing_) || readLive(clearings_) != clearings) { // here are old echoes
        std::fill_n(subBlock.lineLeft, subBlock.frames, 0.0f);
        std::fill_n(subBlock.lineRight, subBlock.frames, 0.0f);
    }
    return subBlock.frames;
}
