// The samples of a block that are still to come.
#pragma once

#include "plugin/vst2/AEffect.h"

struct StereoBlock {
    const float* inLeft;
    const float* inRight;
    float* outLeft;
    float* outRight;

    void advance(VstInt32 frames) {
        inLeft += frames;
        inRight += frames;
        outLeft += frames;
        outRight += frames;
    }
};
