// The editor's face, put together from the project's pictures.
#pragma once

#include "tests/support/screen/HostWindow.h"

#include <array>

// In the order of the parameters: frames of the seven knobs, states of the two switches at 4 and 5.
using FaceControls = std::array<int, 9>;

// The face at one pixel a point.
ScreenPart expectedFace(const FaceControls& controls);

// Whether each pixel is that of the face, but for its rounding. Neighbouring frames, and the states
// of a switch, differ by more.
bool showsFace(const ScreenPart& screen, const FaceControls& controls);

// The frame, 0 to 127, that is most like what a knob shows; the state, 0 or 1, likewise.
FaceControls shownControls(const ScreenPart& screen);

struct FaceDifference {
    double mean; // of a channel
    int largest; // of a pixel's channel
};

FaceDifference differenceOf(const ScreenPart& one, const ScreenPart& other);
