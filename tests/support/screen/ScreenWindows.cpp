#include "tests/support/screen/ScreenWindows.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace {

// Windows go while they are looked at.
int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

class Connection {
public:
    Connection() : display(XOpenDisplay(nullptr)), before_(XSetErrorHandler(ignoreError)) {
        if (display == nullptr) {
            XSetErrorHandler(before_);
            throw std::runtime_error("no X server");
        }
    }
    ~Connection() {
        XCloseDisplay(display);
        XSetErrorHandler(before_);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    Window root() const { return DefaultRootWindow(display); }
    Atom atom(const char* name) const { return XInternAtom(display, name, False); }

    // The window in a property of the root, 0 without it.
    Window windowProperty(const char* name) const {
        Atom type;
        int format;
        unsigned long count = 0, rest;
        unsigned char* data = nullptr;
        Window window = 0;
        if (XGetWindowProperty(display, root(), atom(name), 0, 1, False, XA_WINDOW, &type, &format,
                               &count, &rest, &data) == Success &&
            data != nullptr) {
            if (count == 1 && format == 32) {
                std::memcpy(&window, data, sizeof(window));
            }
            XFree(data);
        }
        return window;
    }

    // As window managers show it.
    std::string nameOf(Window window) const {
        Atom type;
        int format;
        unsigned long count = 0, rest;
        unsigned char* data = nullptr;
        std::string name;
        if (XGetWindowProperty(display, window, atom("_NET_WM_NAME"), 0, 1000, False,
                               atom("UTF8_STRING"), &type, &format, &count, &rest,
                               &data) == Success &&
            data != nullptr) {
            name.assign(reinterpret_cast<const char*>(data), count);
            XFree(data);
        }
        return name;
    }

    void addShownBelow(Window window, std::vector<ShownWindow>& shown) const {
        Window ignoredRoot, parent;
        Window* children = nullptr;
        unsigned count = 0;
        if (XQueryTree(display, window, &ignoredRoot, &parent, &children, &count) == 0 ||
            children == nullptr) {
            return;
        }
        for (const Window child : std::vector<Window>(children, children + count)) {
            XWindowAttributes attributes;
            int left, top;
            Window ignored;
            if (XGetWindowAttributes(display, child, &attributes) == 0 ||
                attributes.map_state != IsViewable ||
                XTranslateCoordinates(display, child, root(), 0, 0, &left, &top, &ignored) == 0) {
                continue;
            }
            shown.push_back({child, nameOf(child), left, top, attributes.width, attributes.height});
            addShownBelow(child, shown);
        }
        XFree(children);
    }

    Display* const display;

private:
    XErrorHandler before_;
};

} // namespace

std::vector<ShownWindow> shownWindows() {
    const Connection screen;
    std::vector<ShownWindow> shown;
    screen.addShownBelow(screen.root(), shown);
    return shown;
}

std::optional<ShownWindow> findWindow(const std::string& name) {
    for (const ShownWindow& window : shownWindows()) {
        if (window.name == name) {
            return window;
        }
    }
    return std::nullopt;
}

std::optional<ShownWindow> innermostWindow(const ShownWindow& outer, int width, int height) {
    std::optional<ShownWindow> innermost;
    for (const ShownWindow& window : shownWindows()) {
        const ShownWindow& around = innermost ? *innermost : outer;
        if (around.contains(window) && window.width >= width && window.height >= height) {
            innermost = window;
        }
    }
    return innermost;
}

ShownWindow awaitWindow(const std::string& name) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (std::chrono::steady_clock::now() < end) {
        if (const std::optional<ShownWindow> window = findWindow(name)) {
            return *window;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    throw std::runtime_error("no window " + name);
}

std::string programClassOf(unsigned long window) {
    const Connection screen;
    XClassHint hint{};
    if (XGetClassHint(screen.display, window, &hint) == 0) {
        return "";
    }
    const std::string name = hint.res_class;
    XFree(hint.res_name);
    XFree(hint.res_class);
    return name;
}

bool isOfFixedSize(unsigned long window) {
    const Connection screen;
    XSizeHints hints{};
    long supplied = 0;
    XGetWMNormalHints(screen.display, window, &hints, &supplied);
    return (hints.flags & PMinSize) != 0 && (hints.flags & PMaxSize) != 0 &&
           hints.min_width == hints.max_width && hints.min_height == hints.max_height;
}

bool windowManagerRuns() {
    return Connection().windowProperty("_NET_SUPPORTING_WM_CHECK") != 0;
}

unsigned long activeWindow() {
    return Connection().windowProperty("_NET_ACTIVE_WINDOW");
}

void askToClose(unsigned long window) {
    const Connection screen;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = screen.atom("WM_PROTOCOLS");
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(screen.atom("WM_DELETE_WINDOW"));
    XSendEvent(screen.display, window, False, NoEventMask, &event);
    XSync(screen.display, False);
}

std::optional<ScreenPlace> middleOfBars(unsigned long colour, int length) {
    const Connection screen;
    XWindowAttributes whole;
    XGetWindowAttributes(screen.display, screen.root(), &whole);
    XImage* const image =
        XGetImage(screen.display, screen.root(), 0, 0, static_cast<unsigned>(whole.width),
                  static_cast<unsigned>(whole.height), AllPlanes, ZPixmap);
    if (image == nullptr) {
        return std::nullopt;
    }
    int left = whole.width, right = 0, top = whole.height, bottom = 0;
    for (int row = 0; row < whole.height; ++row) {
        int run = 0;
        for (int column = 0; column < whole.width; ++column) {
            run = (XGetPixel(image, column, row) & 0xFFFFFF) == colour ? run + 1 : 0;
            if (run >= length) {
                left = std::min(left, column + 1 - run);
                right = std::max(right, column);
                top = std::min(top, row);
                bottom = row;
            }
        }
    }
    XDestroyImage(image);
    if (left > right) {
        return std::nullopt;
    }
    return ScreenPlace{(left + right) / 2, (top + bottom) / 2};
}

ShownWindowCounter::ShownWindowCounter() : display_(XOpenDisplay(nullptr)) {
    if (display_ == nullptr) {
        throw std::runtime_error("no X server");
    }
    XSelectInput(display_, DefaultRootWindow(display_), SubstructureNotifyMask);
    XSync(display_, False);
}

ShownWindowCounter::~ShownWindowCounter() {
    XCloseDisplay(display_);
}

int ShownWindowCounter::count() {
    XSync(display_, False);
    XEvent event;
    while (XPending(display_) > 0) {
        XNextEvent(display_, &event);
        count_ += event.type == MapNotify ? 1 : 0;
    }
    return count_;
}
