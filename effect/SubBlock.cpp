#include "effect/SubBlock.h"

#include "effect/Balance.h"
#include "effect/FieldWatch.h"
#include "effect/SweepPass.h"

#include <algorithm>

namespace {

class PairList {
public:
    PairList(SubBlock& subBlock, bool dipsLeft) : subBlock_(subBlock), dipsLeft_(dipsLeft) {
        subBlock.pairsRunning = 0;
    }

    void add(FourPoleFilter* left, FourPoleFilter* right) {
        subBlock_.pairs[subBlock_.pairsRunning++] = {holdFilter(dipsLeft_ ? right : left),
                                                     holdFilter(dipsLeft_ ? left : right)};
    }

private:
    SubBlock& subBlock_;
    bool dipsLeft_;
};

} // namespace

bool makeSubBlock(const DelayFields& live, const LineClearing& clearing, SweepPass& sweep,
                  const StereoBlock& block, VstInt32 frames, SubBlock& subBlock) {
    if (clearing.running()) {
        return false;
    }
    subBlock.clearing = &clearing;
    subBlock.clearingsBegun = clearing.begun();
    subBlock.live = &live;
    subBlock.held = readSampleFields(live);
    const SampleFields& held = subBlock.held;
    const std::int64_t start = held.delayPosition;
    if (start == 0 || held.delayLength <= start + kSubBlockStep || frames < kSubBlockStep) {
        return false;
    }
    const std::int64_t fitting =
        std::min<std::int64_t>({held.delayLength - 1 - start, frames, kMaxSubBlock});
    subBlock.frames = static_cast<VstInt32>(fitting) / kSubBlockStep * kSubBlockStep;

    // Where the next sub-block will begin: after these samples, or after the first of a new pass.
    const std::int64_t end = start + subBlock.frames;
    const std::int64_t next = end + kSubBlockStep < held.delayLength ? end : 1;

    const BalanceGains gains = balanceGains(held.leftRight);
    const bool dipsLeft = live.panSide;
    const auto side = [&](bool isLeft) -> Side {
        float* const line = isLeft ? live.delayBufferLeft : live.delayBufferRight;
        return {isLeft ? block.inLeft : block.inRight, isLeft ? block.outLeft : block.outRight,
                line + start, line + next, isLeft ? gains.toLeft : gains.toRight};
    };
    subBlock.steady = side(!dipsLeft);
    subBlock.dipped = side(dipsLeft);

    PairList pairs(subBlock, dipsLeft);
    const bool lowPassOn = held.lowPass > 0.0;
    const bool highPassOn = held.highPass > 0.0;
    if (lowPassOn && held.lowPassType) {
        pairs.add(live.lowPassLeft, live.lowPassRight);
    }
    if (highPassOn && held.highPassType) {
        pairs.add(live.highPassLeft, live.highPassRight);
    }
    subBlock.pairsInside = subBlock.pairsRunning;
    if (lowPassOn && !held.lowPassType) {
        pairs.add(live.lowPassLeft, live.lowPassRight);
    }
    if (highPassOn && !held.highPassType) {
        pairs.add(live.highPassLeft, live.highPassRight);
    }

    subBlock.sines = nullptr; // without depth all factors of the sweep are 1.0
    if (held.panDepth != 0.0) {
        subBlock.sines = sweep.sines(live.sineTable, start, held.delayLength, subBlock.frames);
        subBlock.nextSines = sweep.expected(next);
    }
    return true;
}
