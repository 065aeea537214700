// One program: the nine parameters and a name.
#pragma once

struct DelayProgram {
    DelayProgram();

    float delayTime; // normalised, as are all values
    float feedBack;
    double lowPass;
    double highPass;
    bool highPassType; // true: inside the feedback loop, false: behind it
    bool lowPassType;
    double leftRight; // 0.5 is the centre
    double panDepth;
    double mix;
    char name[256]; // 24 characters and the terminator are used
};

constexpr int kNumPrograms = 26;

// Overwrites kNumPrograms records, every field of each, with what the effect is shipped with.
void fillFactoryPrograms(DelayProgram* programs);
