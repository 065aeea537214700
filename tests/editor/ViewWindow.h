// A window around one view, without a frame.
#pragma once

#include "tests/support/screen/HostWindow.h"

#import <AppKit/AppKit.h>

// Needs an X server and prepared views before.
class ViewWindow {
public:
    // Shows it with the view's lower left corner at that of the window, over dark grey.
    explicit ViewWindow(NSView* view, NSSize size);
    ~ViewWindow();
    ViewWindow(const ViewWindow&) = delete;
    ViewWindow& operator=(const ViewWindow&) = delete;

    // Paints everything anew.
    void repaint();
    ScreenPart screen() const;

private:
    NSWindow* window_;
};

// What the screen shows of a window.
ScreenPart screenOf(NSWindow* window);
// Pixels of `part` at a place of the window, in points from its lower left.
const Pixel& pixelAt(const ScreenPart& part, int x, int y);

inline constexpr Pixel kWindowGrey{51, 51, 51, 255};
