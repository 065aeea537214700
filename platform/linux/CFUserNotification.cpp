#include "platform/linux/CFString.h"

#include <CoreFoundation/CFUserNotification.h>

#include <algorithm>
#include <cstdio>
#include <string>

SInt32 CFUserNotificationDisplayAlert(CFTimeInterval timeout, CFOptionFlags flags, CFURLRef iconURL,
                                      CFURLRef soundURL, CFURLRef localizationURL,
                                      CFStringRef alertHeader, CFStringRef alertMessage,
                                      CFStringRef defaultButtonTitle,
                                      CFStringRef alternateButtonTitle,
                                      CFStringRef otherButtonTitle, CFOptionFlags* responseFlags) {
    std::string line;
    for (const CFStringRef part : {alertHeader, alertMessage}) {
        if (part != nullptr && !part->utf8.empty()) {
            line += (line.empty() ? "" : ": ") + part->utf8;
        }
    }
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    std::fprintf(stderr, "%s\n", line.c_str());
    if (responseFlags != nullptr) {
        *responseFlags = kCFUserNotificationCancelResponse;
    }
    return 0;
}
