#import "editor/hosting/linux/TarnsX11HostWindow.h"

#include "editor/EditorGeometry.h"

#import <GNUstepGUI/GSDisplayServer.h>

namespace {

// The X server hands keys to what lies below the mouse, though the keyboard is the host's. What
// nobody selects there goes on to the host's window.
void leaveKeysToTheHost(Display* display, Window window) {
    XWindowAttributes attributes;
    if (XGetWindowAttributes(display, window, &attributes) != 0) {
        XSelectInput(display, window,
                     attributes.your_event_mask & ~(KeyPressMask | KeyReleaseMask));
    }
}

} // namespace

@implementation TarnsX11HostWindow

- (id)initInside:(Window)parent {
    // The place that is the upper left corner to AppKit, whatever it takes the window to lie in.
    NSScreen* const screen = [[NSScreen screens] objectAtIndex:0];
    const NSRect content =
        NSMakeRect(0, NSMaxY([screen frame]) - kEditorHeight, kEditorWidth, kEditorHeight);
    self = [super initWithContentRect:content
                            styleMask:NSBorderlessWindowMask
                              backing:NSBackingStoreBuffered
                                defer:NO
                               screen:screen];
    if (self == nil) {
        return nil;
    }
    [self setReleasedWhenClosed:NO];
    [self setAutodisplay:NO];                       // the host's idle call paints
    [self setBackgroundColor:[NSColor blackColor]]; // where a host makes it larger
    auto* const display = static_cast<Display*>([GSCurrentServer() serverDevice]);
    const auto window = reinterpret_cast<Window>([self windowRef]);
    // The window manager has no say in it, not even for the moment before it has its parent.
    XSetWindowAttributes attributes;
    attributes.override_redirect = True;
    XChangeWindowAttributes(display, window, CWOverrideRedirect, &attributes);
    leaveKeysToTheHost(display, window);
    XReparentWindow(display, window, parent, 0, 0);
    [self orderFrontRegardless];
    XMoveWindow(display, window, 0, 0);
    XFlush(display);
    return self;
}

- (BOOL)canBecomeKeyWindow {
    return NO;
}

- (BOOL)canBecomeMainWindow {
    return NO;
}

// A window that can't be key would keep the first click of most views to itself, and activate an
// application. Here every click is meant.
- (void)sendEvent:(NSEvent*)event {
    switch ([event type]) {
    case NSLeftMouseDown:
        pressedView = [[self contentView] hitTest:[event locationInWindow]];
        [pressedView mouseDown:event];
        break;
    case NSLeftMouseDragged:
        [pressedView mouseDragged:event];
        break;
    case NSLeftMouseUp:
        [pressedView mouseUp:event];
        pressedView = nil;
        break;
    default:
        [super sendEvent:event];
        break;
    }
}

@end
