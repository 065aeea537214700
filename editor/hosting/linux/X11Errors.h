// Errors of the editors' own connection to the X server. A host may destroy its window, and ours in
// it, at any time: requests to a window that is gone are then no reason to end the host.
#pragma once

#include <X11/Xlib.h>

// Between the two, errors on `display` are quiet and those of all other connections go where they
// went before. The end waits for the server's answers. A second begin changes nothing.
void beginQuietErrors(Display* display);
void endQuietErrors();

// For the time between them.
bool windowExists(Display* display, Window window);

// The handler in place. There is no way to ask for it but to set another for a moment.
XErrorHandler currentErrorHandler();
