#include "editor/SliderGeometry.h"

#include "plugin/Truncation.h"

std::int32_t trackExtent(double viewExtent) {
    return truncateToInt32(viewExtent);
}

SliderPoint knobPictureCorner(double knobX, double knobY, double knobHeight) {
    // What fits the pictures: AppKit's knob is 21 points high and wide, theirs is 13.
    constexpr double kRight = 4.0;
    constexpr double kUp = 4.0;
    return {knobX + kRight, knobY - kUp + knobHeight};
}
