// The fields of the effect, as a plain record that the fast signal path can copy and watch.
#pragma once

#include "effect/DelayProgram.h"
#include "effect/FourPoleFilter.h"

#include <cstdint>

class tveditor13;

// Names and order are settled. Any thread may write what a parameter sets, at any time and without
// a lock, while the audio thread reads it; sweepPhase, sineIndex, lastSampleRate and panSide are
// the audio thread's alone.
struct DelayFields {
    static constexpr std::int64_t kDelayCapacity = 192000; // samples of one line
    static constexpr std::int64_t kSineTableSize = 179692;

    tveditor13* uiEditor;   // the base's `editor` in its own type
    bool editorUpdateHold;  // true while the editor sets a parameter: it is not told of it
    DelayProgram* programs; // kNumPrograms
    float* delayBufferLeft; // kDelayCapacity
    float* delayBufferRight;
    float delayTime;   // normalised
    float feedBack;    // gain of what returns into the loop
    double* sineTable; // kSineTableSize, half a period
    FourPoleFilter* highPassLeft;
    FourPoleFilter* highPassRight;
    FourPoleFilter* lowPassLeft;
    FourPoleFilter* lowPassRight;
    std::int64_t delayLength; // samples
    std::int64_t spareLength;
    std::int64_t delayPosition; // read and write index of both lines
    std::int64_t sparePosition;
    double lowPass;              // depth; off at 0.0 and below
    double highPass;             // depth; off at 0.0 and below
    bool highPassType;           // true: inside the loop, false: behind it
    bool lowPassType;            // true: inside the loop, false: behind it
    double leftRight;            // balance of the wet signal, 0.5 is the centre
    double mix;                  // wet level
    double sweepPhase;           // delayPosition over delayLength
    std::int64_t sineIndex;      // of the sweep, into sineTable
    std::int64_t lastSampleRate; // Hz, truncated, that the last block ended with
    double panDepth;             // depth of the sweep
    bool panSide;                // the output that the sweep dips: true is the left one
    float spareGain;
    float spareOffset;
};
