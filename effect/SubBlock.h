// A sub-block: samples in a row that all read the same parameters and do not wrap the delay lines,
// so that no tap among them depends on what another of them writes. Each step of the signal path
// can run over all of them before the next step does.
#pragma once

#include "effect/DelayFields.h"
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

// Takes the sub-block's samples through the signal path and sets subBlock.frames to how many. While
// it does, it keeps looking, in memory, at the fields of `live` and at the gains of the sub-block's
// pairs. It ends before a sample for which one that the sample depends on is no longer what it is
// in `held`, or was in the gains at the call; that may be the first sample. Neither allocates nor
// locks.
using RenderSubBlock = void (*)(SubBlock& subBlock, const DelayFields& live,
                                const DelayFields& held);

// The same bits, by different instruction sets.
void renderSubBlockSse2(SubBlock& subBlock, const DelayFields& live,
                        const DelayFields& held); // for any x86-64
void renderSubBlockAvx(SubBlock& subBlock, const DelayFields& live,
                       const DelayFields& held); // for machines with AVX

bool machineHasAvx();

// The fastest that this machine runs, chosen when the code is loaded.
extern const RenderSubBlock kRenderSubBlock;
