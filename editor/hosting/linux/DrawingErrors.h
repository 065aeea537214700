#pragma once

// Lets a knob whose step has no frame draw nothing. What it raises would otherwise leave AppKit's
// window in the middle of its painting for good. Repeated calls change nothing.
void containDrawingErrors();
