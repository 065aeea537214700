// The parameters as the host numbers them.
#pragma once

enum ParameterIndex {
    kDelay = 0,
    kFeedBack = 1,
    kLowPass = 2,
    kHighPass = 3,
    kLowPassType = 4,
    kHighPassType = 5,
    kLeftRight = 6,
    kPanDepth = 7,
    kMix = 8,
    kNumParams = 9,
};
