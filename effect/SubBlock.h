// A sub-block: samples in a row that all read the same parameters and do not wrap the delay lines.
//
// What it buys: a four-pole filter waits most of its time for its own last result, so that a sample
// at a time costs four times what it needs to. A sub-block has both channels and both chains of a
// filter side by side in wide registers, and its other steps and a second filter run in the waiting
// time. What allows it: the samples of a sub-block lie at places of the lines of their own, so no
// tap of it depends on what another of them writes.
//
// makeSubBlock makes one, a kernel takes it through the signal path.
#pragma once

#include "effect/DelayFields.h"
#include "effect/LineClearing.h"
#include "effect/StereoBlock.h"
#include "plugin/vst2/AEffect.h"

class SweepPass;

// The longest sub-block, in frames, and what the length of each is a multiple of.
constexpr VstInt32 kMaxSubBlock = 256;
constexpr VstInt32 kSubBlockStep = 4;

// What each sample of the effect reads of its parameters and of its place.
struct SampleFields {
    std::int64_t delayLength;
    std::int64_t delayPosition;
    double lowPass;
    double highPass;
    double leftRight;
    double mix;
    double panDepth;
    float feedBack;
    bool highPassType;
    bool lowPassType;
};

// A filter, and what its gains are held to be.
struct HeldFilter {
    FourPoleFilter* filter;
    double lowGain;
    double midGain;
    double highGain;
};

// Left and right are alike but for the sweep, which dips one of the outputs: here they are told
// apart by that.
struct FilterPair {
    HeldFilter steady;
    HeldFilter dipped;
};

struct Side {
    const float* in;
    float* out;      // may be one of the inputs, but not lie partly over them or the other output
    float* line;     // at the first sample
    float* nextLine; // where the samples after this sub-block will probably be
    float gain;      // balance, of the other side's line as it comes out here
};

struct SubBlock {
    VstInt32 frames; // kSubBlockStep to kMaxSubBlock; as a result, how many went through

    Side steady;
    Side dipped;

    const DelayFields* live; // what other threads may write meanwhile
    SampleFields held;       // the same at the beginning; delayPosition + frames < delayLength
    const LineClearing* clearing;
    std::uint32_t clearingsBegun; // at the beginning

    FilterPair pairs[2]; // in the order in which they run
    int pairsRunning;    // 0 to 2
    int pairsInside;     // how many of them stand inside the loop; the rest stand behind it

    const double* sines;     // of the sweep, one a frame; null without a sweep
    const double* nextSines; // where those of the samples after this sub-block will probably be
};

// The sub-block that `live` allows at this moment, of at most `frames` of the block's. False where
// the next sample has to go by itself: at the start of a pass, so that no sub-block starts where
// the lines are rewound to, shortly before its end, and while the lines are being cleared, since
// what was read of them in advance would be old echoes that come back.
bool makeSubBlock(const DelayFields& live, const LineClearing& clearing, SweepPass& sweep,
                  const StereoBlock& block, VstInt32 frames, SubBlock& subBlock);

// Takes the samples through the signal path and sets subBlock.frames to how many. Every 16 frames
// it looks in memory whether all is still as it is held to be and no clearing has begun; else the
// sub-block ends before them, which may be before its first. By that look the lines have been read
// of as far as the next. Neither allocates nor locks.
using RenderSubBlock = void (*)(SubBlock& subBlock);

// The same bits, by different instruction sets.
void renderSubBlockSse2(SubBlock& subBlock); // for any x86-64
void renderSubBlockAvx(SubBlock& subBlock);  // for machines with AVX

bool machineHasAvx();

// The fastest that this machine runs, chosen when the code is loaded.
extern const RenderSubBlock kRenderSubBlock;
