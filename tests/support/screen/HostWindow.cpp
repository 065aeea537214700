#include "tests/support/screen/HostWindow.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <stdexcept>

namespace {

Display* openDisplay() {
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        throw std::runtime_error("no X server");
    }
    return display;
}

Window showWindow(Display* display, int left, int top, int width, int height,
                  unsigned long colour) {
    const Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), left, top,
                                              static_cast<unsigned>(width),
                                              static_cast<unsigned>(height), 0, 0, colour);
    XMapRaised(display, window);
    XSync(display, False);
    return window;
}

std::vector<Window> childrenOf(Display* display, Window window) {
    Window root, parent;
    Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(display, window, &root, &parent, &children, &count);
    std::vector<Window> found(children, children + count);
    if (children != nullptr) {
        XFree(children);
    }
    return found;
}

int windowsBelow(Display* display, Window window) {
    int count = 0;
    for (const Window child : childrenOf(display, window)) {
        count += 1 + windowsBelow(display, child);
    }
    return count;
}

} // namespace

HostWindow::HostWindow(int left, int top, int width, int height)
    : display_(openDisplay()), window_(showWindow(display_, left, top, width, height, 0x0000FF)),
      left_(left), top_(top) {}

HostWindow::~HostWindow() {
    XCloseDisplay(display_); // destroys what it made
}

void HostWindow::takeKeyboard() {
    XSelectInput(display_, window_, KeyPressMask);
    XSetInputFocus(display_, window_, RevertToPointerRoot, CurrentTime);
    XSync(display_, False);
}

int HostWindow::keysPressed() {
    XSync(display_, False);
    XEvent event;
    while (XCheckTypedWindowEvent(display_, window_, KeyPress, &event)) {
        ++keys_;
    }
    return keys_;
}

void HostWindow::destroy() {
    XDestroyWindow(display_, window_);
    XSync(display_, False);
}

void HostWindow::cover() {
    covering_ = showWindow(display_, left_ - 10, top_ - 10, kWidth + 20, kHeight + 20, 0x00FF00);
}

void HostWindow::uncover() {
    XDestroyWindow(display_, covering_);
    XSync(display_, False);
}

std::vector<HostWindow::Child> HostWindow::children() const {
    std::vector<Child> found;
    for (const Window child : childrenOf(display_, window_)) {
        XWindowAttributes attributes;
        XGetWindowAttributes(display_, child, &attributes);
        found.push_back({attributes.x, attributes.y, attributes.width, attributes.height,
                         attributes.map_state == IsViewable, attributes.override_redirect != 0});
    }
    return found;
}

void HostWindow::resizeChild(int width, int height) {
    XResizeWindow(display_, childrenOf(display_, window_).at(0), static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XSync(display_, False);
}

void HostWindow::smearChild(int left, int top, int width, int height, unsigned long colour) {
    const Window child = childrenOf(display_, window_).at(0);
    XGCValues values{};
    values.foreground = colour;
    const GC context = XCreateGC(display_, child, GCForeground, &values);
    XFillRectangle(display_, child, context, left, top, static_cast<unsigned>(width),
                   static_cast<unsigned>(height));
    XFreeGC(display_, context);
    XSync(display_, False);
}

ScreenPart screenAt(int left, int top) {
    return grabScreen(left, top, HostWindow::kWidth, HostWindow::kHeight);
}

int windowsOnScreen() {
    Display* const display = openDisplay();
    const int count = windowsBelow(display, DefaultRootWindow(display));
    XCloseDisplay(display);
    return count;
}

unsigned long keyboardFocus() {
    Display* const display = openDisplay();
    Window focus;
    int revert;
    XGetInputFocus(display, &focus, &revert);
    XCloseDisplay(display);
    return focus;
}

namespace {

int errors = 0;

int countError(Display*, XErrorEvent*) {
    ++errors;
    return 0;
}

} // namespace

ErrorCounter::ErrorCounter() : display_(openDisplay()) {
    errors = 0;
    XSetErrorHandler(countError);
}

ErrorCounter::~ErrorCounter() {
    XCloseDisplay(display_);
}

void ErrorCounter::cause() {
    XMapWindow(display_, 1);
    XSync(display_, False);
}

int ErrorCounter::count() const {
    return errors;
}
