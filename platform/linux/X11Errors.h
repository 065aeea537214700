// Errors of the editors' own connection to the X server. A host may destroy its window, and ours in
// it, at any time: requests to a window that is gone are then no reason to end the host.
#pragma once

#include <X11/Xlib.h>

// Keeps errors on `display` quiet from now on, and hands those of all other connections to
// `otherHandler`. For connections that no one else uses.
void silenceErrorsOf(Display* display, XErrorHandler otherHandler);

// The handler in place. There is no way to ask for it but to set another for a moment.
XErrorHandler currentErrorHandler();

// True when `window` exists on `display`, to which errors are quiet or become so meanwhile.
bool windowExists(Display* display, Window window);
