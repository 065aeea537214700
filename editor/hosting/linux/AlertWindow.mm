#include "platform/linux/AlertWindow.h"

#import "editor/hosting/EditorHosting.h"

#import <AppKit/AppKit.h>

namespace {

NSString* textOf(const std::string& utf8) {
    return utf8.empty() ? nil : [NSString stringWithUTF8String:utf8.c_str()];
}

NSInteger answerBefore(NSDate* end, NSPanel* panel) {
    const NSModalSession session = [NSApp beginModalSessionForWindow:panel];
    NSInteger answer = [NSApp runModalSession:session];
    while (answer == NSRunContinuesResponse && [end timeIntervalSinceNow] > 0.0) {
        // In short turns: a timer may answer as well, and brings no event.
        NSDate* const turn = [NSDate dateWithTimeIntervalSinceNow:0.05];
        [NSApp nextEventMatchingMask:NSAnyEventMask
                           untilDate:[end earlierDate:turn]
                              inMode:NSModalPanelRunLoopMode
                             dequeue:NO];
        answer = [NSApp runModalSession:session];
    }
    [NSApp endModalSession:session];
    return answer;
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
        response = responseOf(answerBefore(end, panel));
        [panel close];
        NSReleaseAlertPanel(panel);
    }
    return true;
}
