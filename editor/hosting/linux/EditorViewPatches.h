// All that Linux changes in the editor's own classes.
#pragma once

// Lets a knob whose step has no frame draw nothing. What it raises would otherwise leave AppKit's
// window in the middle of its painting for good. Repeated calls change nothing; the rest of the
// patches are there from the start.
void containDrawingErrors();
