#import "editor/hosting/linux/TarnsAppKit.h"

#include "editor/hosting/linux/X11Errors.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

#include <X11/Xlib.h>

#include <clocale>
#include <string>

namespace {

bool ours = false;
bool failed = false;

bool displayIsThere() {
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        return false;
    }
    XCloseDisplay(display);
    return true;
}

// For this process alone; the user's own settings win.
void registerSettings() {
    NSDictionary* const settings = [NSDictionary
        dictionaryWithObjectsAndKeys:
            // No icon for an application that the user never started.
            @"YES", @"GSSuppressAppIcon",
            // No trial windows to measure the window manager's frames: ours have none.
            @"NO", @"GSBackHandlesWindowDecorations", nil];
    [[NSUserDefaults standardUserDefaults] registerDefaults:settings];
}

bool startApplication() {
    @try {
        registerSettings();
        [NSApplication sharedApplication];
        return GSCurrentServer() != nil;
    } @catch (NSException* exception) {
        return false;
    }
}

} // namespace

@implementation TarnsAppKit

+ (BOOL)start {
    if (NSApp != nil && !failed) {
        return YES;
    }
    if (failed || !displayIsThere()) {
        return NO;
    }
    // Foundation adopts the user's locale for the whole process, and numbers that the host writes
    // would change their look.
    const char* const current = std::setlocale(LC_ALL, nullptr);
    const std::string locale = current != nullptr ? current : "C";
    const XErrorHandler handlerOfHost = currentErrorHandler();
    @autoreleasepool {
        ours = startApplication();
    }
    failed = !ours;
    std::setlocale(LC_ALL, locale.c_str());
    XSetErrorHandler(handlerOfHost);
    return ours;
}

+ (BOOL)isOurs {
    return ours;
}

@end
