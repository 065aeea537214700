#include "editor/SliderGeometry.h"

#include "plugin/Truncation.h"

std::int32_t trackExtent(double viewExtent) {
    return truncateToInt32(viewExtent);
}

SliderPoint knobPictureCorner(double knobX, double knobY, double knobHeight) {
    // What fits the pictures: theirs are larger than AppKit's knob.
    constexpr double kRight = 4.0;
    constexpr double kDown = 4.0;
    return {knobX + kRight, knobY - kDown + knobHeight};
}
