// Where the bitmap slider draws, in points of its view. Sliders are flipped: y grows downward.
#pragma once

#include <cstdint>

struct SliderPoint {
    double x;
    double y;
};

// The width or the height of the track for that of a view: whole points, cut towards zero.
std::int32_t trackExtent(double viewExtent);

// The lower left corner of the knob's picture, for the upper left corner and the height of the
// place that AppKit gives the knob.
SliderPoint knobPictureCorner(double knobX, double knobY, double knobHeight);
