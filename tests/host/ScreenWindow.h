// The windows of the programs on a screen without a window manager, seen from outside. Xlib's own
// header spoils names that test frameworks use.
#pragma once

#include <optional>
#include <string>

struct ScreenWindow {
    unsigned long id;
    std::string programClass;
    int left, top, width, height; // pixels
    int depth;
    bool sizeIsFixed;
};

// The shown window of the display in DISPLAY that is called `title`.
std::optional<ScreenWindow> findWindow(const std::string& title);

// Waits up to a minute for it. Throws std::runtime_error when it doesn't come.
ScreenWindow awaitWindow(const std::string& title);

// What a window manager does when the user clicks on its button.
void askToClose(const ScreenWindow& window);

// The colour 0xRRGGBB of a pixel of the screen.
unsigned long colourAt(int x, int y);
