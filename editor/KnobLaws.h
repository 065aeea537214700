// The arithmetic of a knob: what a drag makes of the pointer's travel, and which angle, frame and
// handle a step has. Angles are in degrees, counterclockwise from the right; lengths in points.
#pragma once

#include <cstddef>
#include <cstdint>

// The angle of `step` on a knob of `count` steps: 225 at step 0, -45 at the last one. Nothing is
// clamped, and a step beyond the last lies beyond -45.
float angleOfStep(std::int32_t step, std::size_t count);

// The angle at pointer height `y`, one degree a point, within -45 to 225: how far the pointer
// stands below `mouseDownY`, on top of `baseAngle`. Sums wrap at 32 bits.
float draggedAngle(std::int32_t baseAngle, std::int32_t mouseDownY, std::int32_t y);

// The step that an angle falls into, of `count` steps.
std::int32_t stepAtAngle(float angle, std::size_t count);

// The frame of the filmstrip that shows `step`: 0 to 127 for steps 0 to 100, not clamped.
std::int64_t frameOfStep(std::int32_t step);

struct HandleSquare {
    double x;
    double y;
    double side;
};

// A handle of diameter `width` on a circle `insets` inside the rim, at `angle`, in a view of
// `viewWidth` by `viewHeight`.
HandleSquare handleAtAngle(float angle, std::int32_t width, std::int32_t insets, double viewWidth,
                           double viewHeight);
