// Where each control of the editor lies and which parameter it stands for.
#pragma once

#include "effect/ParameterIndex.h"

#include <array>

// In points of the root view, origin at the lower left.
struct ControlPlace {
    ParameterIndex parameter;
    double x;
    double y;
    double width;
    double height;
};

// From back to front, the knobs behind the switches. Each movement of a control writes all
// parameters in this order too: the low-pass switch comes after the high-pass knob, whose parameter
// moves the low-pass type as well.
inline constexpr std::array<ControlPlace, 7> kKnobPlaces{{{kDelay, 60, 202, 48, 48},
                                                          {kMix, 239, 202, 48, 48},
                                                          {kFeedBack, 154, 202, 48, 48},
                                                          {kLowPass, 117, 119, 48, 48},
                                                          {kHighPass, 192, 119, 48, 48},
                                                          {kPanDepth, 75, 37, 48, 48},
                                                          {kLeftRight, 222, 37, 48, 48}}};
inline constexpr std::array<ControlPlace, 2> kSwitchPlaces{
    {{kLowPassType, 82, 132, 15, 16}, {kHighPassType, 253, 132, 15, 16}}};
