#include "editor/hosting/linux/X11Errors.h"

namespace {

Display* quietDisplay = nullptr;
XErrorHandler handlerBefore = nullptr;

int handleError(Display* display, XErrorEvent* error) {
    return display == quietDisplay ? 0 : handlerBefore(display, error);
}

} // namespace

void beginQuietErrors(Display* display) {
    if (quietDisplay == nullptr) {
        quietDisplay = display;
        handlerBefore = currentErrorHandler();
        XSetErrorHandler(handleError);
    }
}

void endQuietErrors() {
    if (quietDisplay != nullptr) {
        XSync(quietDisplay, False);
        XSetErrorHandler(handlerBefore);
        quietDisplay = nullptr;
    }
}

bool windowExists(Display* display, Window window) {
    XWindowAttributes attributes;
    return XGetWindowAttributes(display, window, &attributes) != 0;
}

XErrorHandler currentErrorHandler() {
    const XErrorHandler handler = XSetErrorHandler(nullptr);
    XSetErrorHandler(handler);
    return handler;
}
