// Where each control of the editor lies and which parameter it stands for.
#pragma once

#include <array>
#include <cstdint>

// In points of the root view, origin at the lower left.
struct ControlPlace {
    double x;
    double y;
    double width;
    double height;
    std::int32_t parameter; // index
};

inline constexpr ControlPlace kTimeKnobPlace{60, 202, 48, 48, 0};
inline constexpr ControlPlace kMixKnobPlace{239, 202, 48, 48, 8};
inline constexpr ControlPlace kFeedBackKnobPlace{154, 202, 48, 48, 1};
inline constexpr ControlPlace kLowPassKnobPlace{117, 119, 48, 48, 2};
inline constexpr ControlPlace kHighPassKnobPlace{192, 119, 48, 48, 3};
inline constexpr ControlPlace kPanWidthKnobPlace{75, 37, 48, 48, 7};
inline constexpr ControlPlace kPanKnobPlace{222, 37, 48, 48, 6};
inline constexpr ControlPlace kLowPassSwitchPlace{82, 132, 15, 16, 4};
inline constexpr ControlPlace kHighPassSwitchPlace{253, 132, 15, 16, 5};

// From back to front; each movement of a control writes the parameters in this order too.
inline constexpr std::array<ControlPlace, 9> kControlPlaces{
    kTimeKnobPlace,     kMixKnobPlace, kFeedBackKnobPlace,  kLowPassKnobPlace,   kHighPassKnobPlace,
    kPanWidthKnobPlace, kPanKnobPlace, kLowPassSwitchPlace, kHighPassSwitchPlace};
