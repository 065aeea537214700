// VstXSynth's signal path over a stretch. The results are those of processSample, bit for bit.
#include "effect/LiveField.h"
#include "effect/Stretch.h"
#include "effect/VstXSynth.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

// Below this many frames a stretch costs more than it saves.
constexpr VstInt32 kMinStretch = 4;

} // namespace

// SampleFields lies over the effect's own fields.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Winvalid-offsetof"
#define TVDELAY_SAME_PLACE(field)                                                                  \
    static_assert(offsetof(VstXSynth, field) - offsetof(VstXSynth, delayLength) ==                 \
                  offsetof(SampleFields, field))
TVDELAY_SAME_PLACE(delayPosition);
TVDELAY_SAME_PLACE(lowPass);
TVDELAY_SAME_PLACE(highPass);
TVDELAY_SAME_PLACE(highPassType);
TVDELAY_SAME_PLACE(lowPassType);
TVDELAY_SAME_PLACE(leftRight);
TVDELAY_SAME_PLACE(mix);
TVDELAY_SAME_PLACE(panDepth);
#undef TVDELAY_SAME_PLACE
#pragma clang diagnostic pop

// Processes up to `frames` samples and returns how many: 0 where the next sample has to go by
// itself.
VstInt32 VstXSynth::processStretch(const StereoBlock& block, VstInt32 frames) {
    const auto& live = reinterpret_cast<const SampleFields&>(delayLength);
    const std::uint32_t clearings = readLive(lineClearings);
    SampleFields fields;
    std::memcpy(&fields, &live, sizeof(fields));

    // The first sample of a pass goes by itself, so that a stretch never starts where the lines are
    // rewound to.
    const std::int64_t start = fields.delayPosition;
    if (start == 0 || fields.delayLength <= start + kMinStretch ||
        fields.delayLength > kDelayCapacity) {
        return 0;
    }
    const std::int64_t beforeWrap = fields.delayLength - 1 - start;

    Stretch stretch;
    const bool lowOn = fields.lowPass > 0.0;
    const bool highOn = fields.highPass > 0.0;
    int pairs = 0;
    if (lowOn && fields.lowPassType) {
        stretch.pairs[pairs++] = {lowPassLeft, lowPassRight};
    }
    if (highOn && fields.highPassType) {
        stretch.pairs[pairs++] = {highPassLeft, highPassRight};
    }
    stretch.pairsInside = pairs;
    if (lowOn && !fields.lowPassType) {
        stretch.pairs[pairs++] = {lowPassLeft, lowPassRight};
    }
    if (highOn && !fields.highPassType) {
        stretch.pairs[pairs++] = {highPassLeft, highPassRight};
    }
    stretch.pairsRunning = pairs;

    stretch.frames =
        static_cast<VstInt32>(std::min<std::int64_t>({beforeWrap, frames, kMaxStretch}));
    stretch.feedBack = readLive(feedBack);
    stretch.inLeft = block.inLeft;
    stretch.inRight = block.inRight;
    stretch.outLeft = block.outLeft;
    stretch.outRight = block.outRight;
    stretch.lineLeft = delayBufferLeft + start;
    stretch.lineRight = delayBufferRight + start;

    const BalanceGains gains = balanceGains(fields.leftRight);
    stretch.gainToLeft = gains.toLeft;
    stretch.gainToRight = gains.toRight;
    stretch.mix = fields.mix;
    stretch.sineTable = sineTable;
    stretch.sineTableSize = static_cast<double>(kSineTableSize);
    stretch.panDepth = fields.panDepth;
    stretch.panSide = panSide;
    stretch.start = static_cast<VstInt32>(start);
    stretch.length = static_cast<VstInt32>(fields.delayLength);

    renderStretch(stretch, live, fields, feedBack);
    if (stretch.frames == 0) {
        return 0;
    }

    sweepPhase = stretch.sweepPhase;
    sineIndex = stretch.sineIndex;
    if (readLive(delayPosition) == start) { // else somebody has rewound the lines meanwhile
        writeLive(delayPosition, start + stretch.frames);
    }
    if (readLive(lineClearings) != clearings) { // they are to be silent, and here are old echoes
        std::fill_n(stretch.lineLeft, stretch.frames, 0.0f);
        std::fill_n(stretch.lineRight, stretch.frames, 0.0f);
    }
    return stretch.frames;
}
