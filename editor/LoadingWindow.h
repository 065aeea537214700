// A small window that counts up while samples are loaded.
#pragma once

#ifdef __OBJC__
@class NSImage;
@class NSWindow;
#else
struct NSImage;
struct NSWindow;
#endif

// Everything on the event loop's thread. Opening and advancing let the event loop run once, for
// this window alone. `advance` and `close` come after `open`. Where there is no display all three
// do nothing.
class LoadingWindow {
public:
    // Shows it in the middle of the main screen, above all other windows, at a count of 0.
    void open();
    // Counts one step further, beyond the total too.
    void advance();
    // Takes it from the screen. Window and image stay allocated.
    void close();

    NSWindow* window;         // set by `open`; nil without a display
    NSImage* backgroundImage; // the same; draws nothing where its file is missing
};
