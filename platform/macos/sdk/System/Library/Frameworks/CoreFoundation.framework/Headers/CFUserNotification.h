#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFURL.h>

enum {
    kCFUserNotificationStopAlertLevel = 0,
    kCFUserNotificationNoteAlertLevel = 1,
    kCFUserNotificationCautionAlertLevel = 2,
    kCFUserNotificationPlainAlertLevel = 3,
};

CF_EXPORT SInt32 CFUserNotificationDisplayAlert(
    CFTimeInterval timeout, CFOptionFlags flags, CFURLRef iconURL, CFURLRef soundURL,
    CFURLRef localizationURL, CFStringRef alertHeader, CFStringRef alertMessage,
    CFStringRef defaultButtonTitle, CFStringRef alternateButtonTitle, CFStringRef otherButtonTitle,
    CFOptionFlags* responseFlags);
