#include "tests/editor/ViewWindow.h"

#include "tests/support/screen/ScreenPart.h"
#include "tests/support/screen/XServer.h"

#import <GNUstepGUI/GSDisplayServer.h>

#include <X11/Xlib.h>

ViewWindow::ViewWindow(NSView* view, NSSize size)
    : window_([[NSWindow alloc] initWithContentRect:NSMakeRect(60, 60, size.width, size.height)
                                          styleMask:NSBorderlessWindowMask
                                            backing:NSBackingStoreBuffered
                                              defer:NO]) {
    [window_ setReleasedWhenClosed:NO];
    [window_ setBackgroundColor:[NSColor colorWithCalibratedWhite:0.2 alpha:1.0]];
    // A window paints itself when it is ordered front, but not yet on the screen.
    [window_ orderFrontRegardless];
    [[window_ contentView] addSubview:view];
    repaint();
}

ViewWindow::~ViewWindow() {
    [window_ close];
    [window_ release];
}

void ViewWindow::repaint() {
    [window_ display];
}

ScreenPart ViewWindow::screen() const {
    return screenOf(window_);
}

ScreenPart screenOf(NSWindow* window) {
    [window flushWindow];
    XSync(static_cast<Display*>([GSCurrentServer() serverDevice]), False);
    const NSRect frame = [window frame];
    return grabScreen(static_cast<int>(NSMinX(frame)),
                      XServer::kHeight - static_cast<int>(NSMaxY(frame)),
                      static_cast<int>(NSWidth(frame)), static_cast<int>(NSHeight(frame)));
}

const Pixel& pixelAt(const ScreenPart& part, int x, int y) {
    return part.at(x, part.height - 1 - y);
}
