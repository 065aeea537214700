// Stereo chorus: two delay lines read at a position that a triangle sweeps, with feedback.
//
// Every time constant is written for 44100 samples per second; at another rate the delays keep
// their length in samples. The setters and `restartLfo` may run on another thread than `process`:
// they take effect at the next sample, without a lock. Nothing here allocates.
#pragma once

#include <cstdint>

#include "soundlib/SmoothingFilter.h"

// Plain record. Whoever makes one supplies the two lines of 8192 doubles and the two smoothers;
// ChorusUnitMaker.h does it ready to run.
struct ChorusUnit {
    float rateValue;     // 0 to 1
    float depthValue;    // 0 to 1
    float feedbackValue; // gain
    float delayValue;    // 0 to 1, of 441 samples
    float wetValue;      // gain
    float modeValue;     // read nowhere
    double lfoRate;      // Hz
    double feedback;
    double feedbackScale;
    double lfoDepth; // samples
    double lfoLimit; // samples
    double* delayLineLeft;
    double* delayLineRight;
    std::int32_t writeIndex; // 0 to 8191
    double lfoStep;          // samples per sample, signed
    double lfoValue;         // samples
    double lastLeft;
    double lastRight;
    double wetGainLeft;
    double dryGainLeft;
    double wetGainRight;
    double dryGainRight;
    bool monoInput; // folds the inputs to their mean, for the dry path as well
    SmoothingFilter* delaySmoother;
    SmoothingFilter* wetSmoother;

    // 0 to 1 gives 0.05 Hz to about 9.55 Hz, exponentially. Restarts the LFO.
    void setRate(float value);

    // 0 to 1 gives a swing of 0 to 441 samples; 0.05 and below switch the modulation off. Restarts
    // the LFO.
    void setDepth(float value);

    // 0 to 1 gives a base delay of 0 to 441 samples, reached through `delaySmoother`.
    void setDelay(float value);

    // Gain from each line's output back to its input. From 1 upward the lines grow without bound.
    void setFeedback(float value);

    // Gain of the delayed signal, reached through `wetSmoother`.
    void setWet(float value);

    // There is one mode: any value sets the output gains and the feedback scale to 1 and stereo
    // input.
    void setMode(float value);
};

// Processes one block. `inputs` and `outputs` hold two channels each and may be the same buffers.
// Output stays within -0.99 and 0.99. A `sampleFrames` of 0 or below does nothing.
void process(ChorusUnit* unit, float** inputs, float** outputs, std::int32_t sampleFrames);

// Takes over the current rate and depth and restarts the LFO from 0, rising.
void restartLfo(ChorusUnit* unit);

// Limits `value` to the range -0.999 to 0.999.
double clampSample(double value);
