// The window that an editor has inside an X11 window of the host.
#pragma once

#import <AppKit/AppKit.h>

#include <X11/Xlib.h>

// A window of the editor's size inside an X11 window of the host, at its upper left corner. Its
// content view is the host view. It never takes the keyboard: keys stay the host's.
@interface TarnsX11HostWindow : NSWindow {
    NSView* pressedView; // gets the drags and the release of a press
}

// `parent` must exist.
- (id)initInside:(Window)parent;

@end
