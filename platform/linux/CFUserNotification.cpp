#include "platform/linux/AlertWindow.h"
#include "platform/linux/CFString.h"

#include <CoreFoundation/CFUserNotification.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

std::string textOf(CFStringRef string) {
    return string != nullptr ? string->utf8 : std::string();
}

void writeLine(const Alert& alert) {
    const char* const between = alert.header.empty() || alert.message.empty() ? "" : ": ";
    std::string line = alert.header + between + alert.message;
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace

SInt32 CFUserNotificationDisplayAlert(CFTimeInterval timeout, CFOptionFlags flags, CFURLRef iconURL,
                                      CFURLRef soundURL, CFURLRef localizationURL,
                                      CFStringRef alertHeader, CFStringRef alertMessage,
                                      CFStringRef defaultButtonTitle,
                                      CFStringRef alternateButtonTitle,
                                      CFStringRef otherButtonTitle, CFOptionFlags* responseFlags) {
    const Alert alert{timeout,
                      textOf(alertHeader),
                      textOf(alertMessage),
                      textOf(defaultButtonTitle),
                      textOf(alternateButtonTitle),
                      textOf(otherButtonTitle)};
    CFOptionFlags response = kCFUserNotificationCancelResponse;
    if (showAlertWindow == nullptr || !showAlertWindow(alert, response)) {
        writeLine(alert);
    }
    if (responseFlags != nullptr) {
        *responseFlags = response;
    }
    return 0;
}
