#pragma once

#include <array>

/// Where a control stands on the face: its frame's lower left corner in points, y growing upward.
struct ControlPlace {
    const char* name;
    int left;
    int bottom;
    int width;
    int height;

    double centreX() const { return left + width / 2.0; }
    double centreY() const { return bottom + height / 2.0; }
};

constexpr int kFaceWidth = 344;
constexpr int kFaceHeight = 400;
constexpr int kKnobSize = 48;
constexpr int kKnobFrames = 128;

constexpr std::array<ControlPlace, 7> kKnobPlaces = {{
    {"timeKnob", 60, 202, 48, 48},
    {"mixKnob", 239, 202, 48, 48},
    {"feedBackKnob", 154, 202, 48, 48},
    {"lowPassKnob", 117, 119, 48, 48},
    {"highPassKnob", 192, 119, 48, 48},
    {"panWidthKnob", 75, 37, 48, 48},
    {"panKnob", 222, 37, 48, 48},
}};

constexpr std::array<ControlPlace, 2> kSwitchPlaces = {{
    {"lowPassSwitch", 82, 132, 15, 16},
    {"highPassSwitch", 253, 132, 15, 16},
}};
