// A sub-block: samples in a row that all read the same parameters and do not wrap the delay lines,
// so that no tap among them depends on what another of them writes. Each step of the signal path
// can run over all of them before the next step does.
#pragma once

#include "effect/FourPoleFilter.h"
#include "plugin/vst2/AEffect.h"

#include <cstdint>

// The longest sub-block, in frames.
constexpr int kMaxSubBlock = 64;

struct FilterPair {
    FourPoleFilter* left;
    FourPoleFilter* right;
};

struct SubBlock {
    VstInt32 frames; // 1 to kMaxSubBlock; as a result, how many went through

    const float* inLeft;
    const float* inRight;
    // May be the input arrays, in any order, but not lie partly over them or each other.
    float* outLeft;
    float* outRight;
    float* lineLeft; // the delay lines, at the first sample
    float* lineRight;

    FilterPair pairs[2]; // in the order in which they run
    int pairsRunning;    // 0 to 2
    int pairsInside;     // how many of them stand inside the loop; the rest stand behind it

    float feedBack;
    float gainToLeft; // balance
    float gainToRight;
    double mix;

    const double* sineTable; // half a period
    double sineTableSize;
    double panDepth;
    bool panSide;    // the output that the sweep dips: true is the left one
    VstInt32 start;  // delay position of the first sample
    VstInt32 length; // of the delay; start + frames is below it

    double sweepPhase;  // result: of the last sample
    VstInt32 sineIndex; // result: of the last sample
};

// The fields of the effect that a sample depends on, as they lie there; those in between are the
// audio thread's own.
struct SampleFields {
    std::int64_t delayLength;
    std::int64_t spareLength;
    std::int64_t delayPosition;
    std::int64_t sparePosition;
    double lowPass;
    double highPass;
    bool highPassType;
    bool lowPassType;
    double leftRight;
    double mix;
    double sweepPhase;
    std::int64_t sineIndex;
    std::int64_t lastSampleRate;
    double panDepth;
};

static_assert(sizeof(SampleFields) == 104);

// Takes the sub-block's samples through the signal path and sets subBlock.frames to how many. While
// it does, it reads for each sample anew, from memory, `live`, `liveFeedBack` and the gains of the
// sub-block's pairs; the sub-block ends before a sample that finds in them something else than
// `held`, subBlock.feedBack and the gains hold at the call, perhaps with the first sample. Neither
// allocates nor locks.
using RenderSubBlock = void (*)(SubBlock& subBlock, const SampleFields& live,
                                const SampleFields& held, const float& liveFeedBack);

// The same bits, by different instruction sets.
void renderSubBlockSse2(SubBlock& subBlock, const SampleFields& live, const SampleFields& held,
                        const float& liveFeedBack); // for any x86-64
void renderSubBlockAvx(SubBlock& subBlock, const SampleFields& live, const SampleFields& held,
                       const float& liveFeedBack); // for machines with AVX

bool machineHasAvx();

// The fastest that this machine runs, chosen when the code is loaded.
extern const RenderSubBlock renderSubBlock;
