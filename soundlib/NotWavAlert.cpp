#include "soundlib/NotWavAlert.h"

#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFUserNotification.h>

// The message string stays allocated: it is never released here, one per alert.
void showNotWavAlert(const std::string& text) {
    const CFStringRef message =
        CFStringCreateWithCString(kCFAllocatorDefault, text.c_str(), kCFStringEncodingMacRoman);
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(20.0, kCFUserNotificationPlainAlertLevel, nullptr, nullptr,
                                   nullptr, CFSTR("File is not a 16-bit Wav file"), message,
                                   CFSTR("OK"), nullptr, nullptr, &response);
} // NOLINT(clang-analyzer-osx.cocoa.RetainCount)
