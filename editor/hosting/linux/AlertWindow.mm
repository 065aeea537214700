#include "platform/linux/AlertWindow.h"

#import "editor/hosting/EditorHosting.h"
#import "editor/hosting/linux/AppKitPatches.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

#include <X11/Xlib.h>

// Ends a press that has no end. AppKit follows a press in a loop of its own, and that loop misses a
// release that came in the same moment: it lies before the press, or unread, until something else
// happens.
@interface TarnsPressEnd : NSObject
@end

namespace {

constexpr NSTimeInterval kTurn = 0.05; // seconds

NSString* textOf(const std::string& utf8) {
    return utf8.empty() ? nil : [NSString stringWithUTF8String:utf8.c_str()];
}

Display* serverConnection() {
    return static_cast<Display*>([GSCurrentServer() serverDevice]);
}

bool mouseButtonIsDown() {
    Display* const display = serverConnection();
    Window root, child;
    int rootX, rootY, x, y;
    unsigned state = 0;
    XQueryPointer(display, DefaultRootWindow(display), &root, &child, &rootX, &rootY, &x, &y,
                  &state);
    return (state & Button1Mask) != 0;
}

// Window managers leave the keyboard where it is when a window comes up in a program that had no
// event before. False where it can't be had yet.
bool takeKeyboard(NSWindow* window) {
    Display* const display = serverConnection();
    const auto handle = reinterpret_cast<Window>([window windowRef]);
    XWindowAttributes attributes;
    if (XGetWindowAttributes(display, handle, &attributes) == 0 ||
        attributes.map_state != IsViewable) {
        return false;
    }
    XSetInputFocus(display, handle, RevertToParent, CurrentTime);
    Window focus = None;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    return focus == handle;
}

NSInteger answerBefore(NSDate* end, NSPanel* panel) {
    const NSModalSession session = [NSApp beginModalSessionForWindow:panel];
    useAsKeyWindow(panel);
    [panel makeKeyWindow];
    bool hadKeyboard = false;
    NSInteger answer = [NSApp runModalSession:session];
    while (answer == NSRunContinuesResponse && [end timeIntervalSinceNow] > 0.0) {
        hadKeyboard = hadKeyboard || takeKeyboard(panel);
        // In short turns: a timer may answer as well, and brings no event.
        NSDate* const turn = [NSDate dateWithTimeIntervalSinceNow:kTurn];
        [NSApp nextEventMatchingMask:NSAnyEventMask
                           untilDate:[end earlierDate:turn]
                              inMode:NSModalPanelRunLoopMode
                             dequeue:NO];
        answer = [NSApp runModalSession:session];
    }
    useAsKeyWindow(nil);
    [NSApp endModalSession:session];
    return answer;
}

NSTimer* startEndingPresses() {
    NSTimer* const timer = [NSTimer timerWithTimeInterval:kTurn
                                                   target:[[[TarnsPressEnd alloc] init] autorelease]
                                                 selector:@selector(endPress:)
                                                 userInfo:nil
                                                  repeats:YES];
    [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSEventTrackingRunLoopMode];
    return timer;
}

CFOptionFlags responseOf(NSInteger answer) {
    switch (answer) {
    case NSAlertDefaultReturn:
        return kCFUserNotificationDefaultResponse;
    case NSAlertAlternateReturn:
        return kCFUserNotificationAlternateResponse;
    case NSAlertOtherReturn:
        return kCFUserNotificationOtherResponse;
    default:
        return kCFUserNotificationCancelResponse;
    }
}

} // namespace

@implementation TarnsPressEnd

- (void)endPress:(NSTimer*)timer {
    if (mouseButtonIsDown()) {
        return;
    }
    // Where it stands now: it may have left its button before the release.
    for (const NSEventType type : {NSLeftMouseDragged, NSLeftMouseUp}) {
        NSWindow* const alert = [NSApp modalWindow];
        [NSApp postEvent:[NSEvent mouseEventWithType:type
                                            location:[alert mouseLocationOutsideOfEventStream]
                                       modifierFlags:0
                                           timestamp:0
                                        windowNumber:[alert windowNumber]
                                             context:nil
                                         eventNumber:0
                                          clickCount:1
                                            pressure:0.0f]
                 atStart:NO];
    }
}

@end

bool showAlertWindow(const Alert& alert, CFOptionFlags& response) {
    if (!prepareEditorViews()) {
        return false;
    }
    @autoreleasepool {
        NSString* const button = alert.defaultButton.empty() ? @"OK" : textOf(alert.defaultButton);
        NSPanel* const panel =
            NSGetAlertPanel(textOf(alert.header), @"%@", button, textOf(alert.alternateButton),
                            textOf(alert.otherButton), textOf(alert.message));
        NSDate* const end = alert.timeout > 0.0
                                ? [NSDate dateWithTimeIntervalSinceNow:alert.timeout]
                                : [NSDate distantFuture];
        NSTimer* const releases = startEndingPresses();
        response = responseOf(answerBefore(end, panel));
        [releases invalidate];
        [panel close];
        NSReleaseAlertPanel(panel);
    }
    finishEditorViews();
    return true;
}
