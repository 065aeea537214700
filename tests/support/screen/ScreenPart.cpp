#include "tests/support/screen/ScreenPart.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <stdexcept>

ScreenPart grabScreen(int left, int top, int width, int height) {
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        throw std::runtime_error("no X server");
    }
    XImage* const image =
        XGetImage(display, DefaultRootWindow(display), left, top, static_cast<unsigned>(width),
                  static_cast<unsigned>(height), AllPlanes, ZPixmap);
    ScreenPart part{width, height, {}};
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const unsigned long rgb = XGetPixel(image, column, row);
            part.pixels.push_back({static_cast<std::uint8_t>(rgb >> 16),
                                   static_cast<std::uint8_t>(rgb >> 8),
                                   static_cast<std::uint8_t>(rgb), 255});
        }
    }
    XDestroyImage(image);
    XCloseDisplay(display);
    return part;
}
