#include "tests/host/ScreenWindow.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using Connection = std::unique_ptr<Display, int (*)(Display*)>;

Connection connect() {
    Connection connection(XOpenDisplay(nullptr), XCloseDisplay);
    if (!connection)
        throw std::runtime_error("no X server");
    return connection;
}

std::string titleOf(Display* display, Window window) {
    Atom type;
    int format;
    unsigned long count, rest;
    unsigned char* text = nullptr;
    XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, 1000, False,
                       XInternAtom(display, "UTF8_STRING", False), &type, &format, &count, &rest,
                       &text);
    const std::string title = text ? reinterpret_cast<char*>(text) : "";
    if (text)
        XFree(text);
    return title;
}

std::string classOf(Display* display, Window window) {
    XClassHint hint{};
    if (!XGetClassHint(display, window, &hint))
        return "";
    const std::string name = hint.res_class;
    XFree(hint.res_name);
    XFree(hint.res_class);
    return name;
}

bool isFixed(Display* display, Window window) {
    XSizeHints hints{};
    long supplied;
    XGetWMNormalHints(display, window, &hints, &supplied);
    return (hints.flags & PMinSize) && (hints.flags & PMaxSize) &&
           hints.min_width == hints.max_width && hints.min_height == hints.max_height;
}

std::vector<Window> shownWindows(Display* display) {
    Window root, parent;
    Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
    const std::vector<Window> windows(children, children + count);
    if (children)
        XFree(children);
    return windows;
}

} // namespace

std::optional<ScreenWindow> findWindow(const std::string& title) {
    const Connection connection = connect();
    // A window may go while it is looked at.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    for (const Window window : shownWindows(connection.get())) {
        XWindowAttributes attributes;
        if (titleOf(connection.get(), window) == title &&
            XGetWindowAttributes(connection.get(), window, &attributes) &&
            attributes.map_state == IsViewable)
            return ScreenWindow{window,           classOf(connection.get(), window),
                                attributes.x,     attributes.y,
                                attributes.width, attributes.height,
                                attributes.depth, isFixed(connection.get(), window)};
    }
    return std::nullopt;
}

ScreenWindow awaitWindow(const std::string& title) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (std::chrono::steady_clock::now() < end) {
        if (const auto window = findWindow(title))
            return *window;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    throw std::runtime_error("no window " + title);
}

void askToClose(const ScreenWindow& window) {
    const Connection connection = connect();
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window.id;
    event.xclient.message_type = XInternAtom(connection.get(), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(connection.get(), "WM_DELETE_WINDOW", False));
    XSendEvent(connection.get(), window.id, False, NoEventMask, &event);
    XSync(connection.get(), False);
}

unsigned long colourAt(int x, int y) {
    const Connection connection = connect();
    XImage* const image = XGetImage(connection.get(), DefaultRootWindow(connection.get()), x, y, 1,
                                    1, AllPlanes, ZPixmap);
    const unsigned long colour = XGetPixel(image, 0, 0) & 0xFFFFFFu;
    XDestroyImage(image);
    return colour;
}
