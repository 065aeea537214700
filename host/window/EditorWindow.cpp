#include "host/window/EditorWindow.h"

#include "host/base/OutputFile.h"
#include "host/base/UserError.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xcomposite.h>

#include <cstdlib>
#include <string_view>

#include <poll.h>
#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kStatusOfFailure = 2;

// Xlib's own would end the program, even for a plug-in's window that has gone a moment ago.
int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

int serverGone(Display*) {
    removeUnfinishedOutput();
    constexpr std::string_view kText =
        "tvhost: the X server has gone or closed the connection; give a display that stays\n";
    const ssize_t written = write(STDERR_FILENO, kText.data(), kText.size());
    static_cast<void>(written);
    _exit(kStatusOfFailure);
}

Display* openDisplay() {
    XSetErrorHandler(ignoreError);
    XSetIOErrorHandler(serverGone);
    const char* const name = std::getenv("DISPLAY");
    if (!name || !*name) {
        throw UserError("there is no display to show an editor on; set DISPLAY to one, such as :0, "
                        "or make a picture with 'tvhost snapshot'");
    }
    Display* const display = XOpenDisplay(nullptr);
    if (!display) {
        throw UserError(std::string("the display \"") + name +
                        "\" cannot be opened; set DISPLAY to one that can, such as :0");
    }
    return display;
}

// The part of `pixel` under `mask`, from 0 to 255.
std::uint32_t channel(unsigned long pixel, unsigned long mask) {
    const unsigned long unit = mask & (~mask + 1);
    return static_cast<std::uint32_t>((pixel & mask) / unit * 255 / (mask / unit));
}

unsigned long pixelOf(std::uint32_t colour, const Visual& visual) {
    const auto part = [](std::uint32_t value, unsigned long mask) {
        const unsigned long unit = mask & (~mask + 1);
        return value * (mask / unit) / 255 * unit;
    };
    return part(colour >> 16, visual.red_mask) | part(colour >> 8 & 255u, visual.green_mask) |
           part(colour & 255u, visual.blue_mask);
}

} // namespace

EditorWindow::EditorWindow(const std::string& title, EditorSize size, Kind kind)
    : display_(openDisplay()), current_(size) {
    const int screen = DefaultScreen(display_);
    const Visual& visual = *DefaultVisual(display_, screen);
    if (visual.c_class != TrueColor) {
        XCloseDisplay(display_);
        throw UserError("the display shows no true colours; set DISPLAY to one that does");
    }
    XSetWindowAttributes attributes{};
    attributes.background_pixel = pixelOf(kBackground, visual);
    attributes.event_mask = StructureNotifyMask;
    attributes.override_redirect = kind == Kind::kBare;
    window_ = XCreateWindow(display_, RootWindow(display_, screen), 0, 0,
                            static_cast<unsigned>(size.width), static_cast<unsigned>(size.height),
                            0, CopyFromParent, InputOutput, CopyFromParent,
                            CWBackPixel | CWEventMask | CWOverrideRedirect, &attributes);

    Xutf8SetWMProperties(display_, window_, title.c_str(), title.c_str(), nullptr, 0, nullptr,
                         nullptr, nullptr);
    XChangeProperty(display_, window_, XInternAtom(display_, "_NET_WM_NAME", False),
                    XInternAtom(display_, "UTF8_STRING", False), 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(title.data()),
                    static_cast<int>(title.size()));
    char name[] = "tvhost";
    char programClass[] = "Tvhost";
    XClassHint hint{name, programClass};
    XSetClassHint(display_, window_, &hint);
    deleteWord_ = XInternAtom(display_, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(display_, window_, &deleteWord_, 1);
    fixSize();
    int first = 0;
    if (kind == Kind::kBare && XCompositeQueryExtension(display_, &first, &first)) {
        XCompositeRedirectWindow(display_, window_, CompositeRedirectAutomatic);
        redirected_ = true;
    }
    XMapRaised(display_, window_);
    XSync(display_, False);
}

EditorWindow::~EditorWindow() {
    if (!gone_) {
        XDestroyWindow(display_, window_);
    }
    XCloseDisplay(display_);
}

void* EditorWindow::handle() const {
    return reinterpret_cast<void*>(window_);
}

void EditorWindow::fixSize() {
    XSizeHints hints{};
    hints.flags = PMinSize | PMaxSize;
    hints.min_width = hints.max_width = current_.width;
    hints.min_height = hints.max_height = current_.height;
    XSetWMNormalHints(display_, window_, &hints);
}

void EditorWindow::resize(EditorSize size) {
    current_ = size;
    fixSize();
    XResizeWindow(display_, window_, static_cast<unsigned>(size.width),
                  static_cast<unsigned>(size.height));
    XSync(display_, False);
}

bool EditorWindow::holdsWindow() const {
    Window root;
    Window parent;
    Window* children = nullptr;
    unsigned count = 0;
    const bool told = XQueryTree(display_, window_, &root, &parent, &children, &count) != 0;
    if (children) {
        XFree(children);
    }
    return told && count > 0;
}

bool EditorWindow::closed() {
    while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        if (event.type == DestroyNotify && event.xdestroywindow.window == window_) {
            gone_ = true;
        }
        if (event.type == ClientMessage && event.xclient.window == window_ &&
            event.xclient.format == 32 &&
            static_cast<Atom>(event.xclient.data.l[0]) == deleteWord_) {
            closing_ = true;
        }
    }
    return gone_ || closing_;
}

void EditorWindow::wait(std::chrono::milliseconds longest) const {
    pollfd server{ConnectionNumber(display_), POLLIN, 0};
    poll(&server, 1, static_cast<int>(longest.count()));
}

ScreenPicture EditorWindow::picture() const {
    const auto width = static_cast<unsigned>(current_.width);
    const auto height = static_cast<unsigned>(current_.height);
    const int screen = DefaultScreen(display_);
    // A pixmap tells no masks of its own.
    const Visual& visual = *DefaultVisual(display_, screen);
    const bool fits = current_.width <= DisplayWidth(display_, screen) &&
                      current_.height <= DisplayHeight(display_, screen);
    // What the window paints, not what lies on top of it.
    const Pixmap own = redirected_ ? XCompositeNameWindowPixmap(display_, window_) : None;
    XImage* const image =
        fits ? XGetImage(display_, own ? own : window_, 0, 0, width, height, AllPlanes, ZPixmap)
             : nullptr;
    if (own) {
        XFreePixmap(display_, own);
    }
    if (!image) {
        throw UserError("the editor, " + std::to_string(current_.width) + " by " +
                        std::to_string(current_.height) +
                        " pixels, is not all on the screen; give a larger display");
    }
    ScreenPicture picture;
    picture.width = current_.width;
    picture.height = current_.height;
    picture.pixels.reserve(static_cast<std::size_t>(current_.width) *
                           static_cast<std::size_t>(current_.height));
    for (int row = 0; row < current_.height; ++row) {
        for (int column = 0; column < current_.width; ++column) {
            const unsigned long pixel = XGetPixel(image, column, row);
            picture.pixels.push_back(channel(pixel, visual.red_mask) << 16 |
                                     channel(pixel, visual.green_mask) << 8 |
                                     channel(pixel, visual.blue_mask));
        }
    }
    XDestroyImage(image);
    return picture;
}

} // namespace tvhost
