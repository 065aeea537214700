// The programs that the effect is shipped with, as a table of their own for comparison.
#pragma once

#include <cstdint>

struct FactoryRow {
    const char* name;
    float delayTime;
    float feedBack;
    double lowPass;
    double highPass;
    bool lowPassType;
    bool highPassType;
    double leftRight;
    double panDepth;
    double mix;
    std::int64_t lengthAt44100; // samples
};

extern const FactoryRow kFactoryTable[26];
