#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFURL.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kCFUserNotificationStopAlertLevel = 0,
    kCFUserNotificationNoteAlertLevel = 1,
    kCFUserNotificationCautionAlertLevel = 2,
    kCFUserNotificationPlainAlertLevel = 3
};

enum {
    kCFUserNotificationDefaultResponse = 0,
    kCFUserNotificationAlternateResponse = 1,
    kCFUserNotificationOtherResponse = 2,
    kCFUserNotificationCancelResponse = 3
};

// Shows the alert in a window until it is answered or, unless `timeout` is 0, that many seconds are
// over. Programs without AppKit, or without a display, write it as one line on standard error
// instead: nobody can answer it there, so the response is the one of an alert that timed out.
// Always returns 0. The texts may be null, and so may `responseFlags`. With AppKit for the
// user-interface thread, otherwise for any.
SInt32 CFUserNotificationDisplayAlert(CFTimeInterval timeout, CFOptionFlags flags, CFURLRef iconURL,
                                      CFURLRef soundURL, CFURLRef localizationURL,
                                      CFStringRef alertHeader, CFStringRef alertMessage,
                                      CFStringRef defaultButtonTitle,
                                      CFStringRef alternateButtonTitle,
                                      CFStringRef otherButtonTitle, CFOptionFlags* responseFlags);

#ifdef __cplusplus
}
#endif
