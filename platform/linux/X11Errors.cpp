#include "platform/linux/X11Errors.h"

namespace {

Display* silencedDisplay = nullptr;
XErrorHandler handlerOfOthers = nullptr;

int handleError(Display* display, XErrorEvent* error) {
    return display == silencedDisplay ? 0 : handlerOfOthers(display, error);
}

int ignoreError(Display* display, XErrorEvent* error) {
    return 0;
}

} // namespace

void silenceErrorsOf(Display* display, XErrorHandler otherHandler) {
    silencedDisplay = display;
    handlerOfOthers = otherHandler;
    XSetErrorHandler(handleError);
}

XErrorHandler currentErrorHandler() {
    const XErrorHandler handler = XSetErrorHandler(nullptr);
    XSetErrorHandler(handler);
    return handler;
}

bool windowExists(Display* display, Window window) {
    const XErrorHandler previous = XSetErrorHandler(ignoreError);
    XWindowAttributes attributes;
    const bool exists = XGetWindowAttributes(display, window, &attributes) != 0;
    XSetErrorHandler(previous);
    return exists;
}
