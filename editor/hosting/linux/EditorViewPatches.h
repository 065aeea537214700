// All that Linux changes in the editor's own classes.
#pragma once

// Puts what the views draw into frames of this system's own: a knob whose step has no frame draws
// nothing, the background fills its part of what is painted, and what a control was painted as is
// noted. Repeated calls change nothing; the rest of the patches are there from the start.
void patchEditorDrawing();
