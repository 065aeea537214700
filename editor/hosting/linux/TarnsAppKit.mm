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

// For this process alone, ahead of what the user has set for all GNUstep programs: the host is
// none.
void fixSettings() {
    NSUserDefaults* const defaults = [NSUserDefaults standardUserDefaults];
    NSMutableDictionary* const settings = [NSMutableDictionary
        dictionaryWithDictionary:[defaults volatileDomainForName:NSArgumentDomain]];
    // A point is a pixel of the host's window.
    [settings setObject:@"1.0" forKey:@"GSScaleFactor"];
    // No icon for an application that the user never started.
    [settings setObject:@"YES" forKey:@"GSSuppressAppIcon"];
    // No trial windows to measure the window manager's frames: ours have none.
    [settings setObject:@"NO" forKey:@"GSBackHandlesWindowDecorations"];
    [defaults removeVolatileDomainForName:NSArgumentDomain];
    [defaults setVolatileDomain:settings forName:NSArgumentDomain];
}

bool startApplication() {
    @try {
        fixSettings();
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
