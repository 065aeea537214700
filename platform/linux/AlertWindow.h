// An alert in a window of AppKit's.
#pragma once

#include <CoreFoundation/CFUserNotification.h>

#include <string>

struct Alert {
    CFTimeInterval timeout; // seconds; 0 for an alert that waits
    std::string header;     // all texts in UTF-8
    std::string message;
    std::string defaultButton;   // empty for "OK"
    std::string alternateButton; // empty for none
    std::string otherButton;     // empty for none
};

// Shows it, for the user-interface thread, until it is answered or its time is over, and sets
// `response`. False when there is no display. Programs without AppKit leave it out: its address is
// then null.
[[gnu::weak]] bool showAlertWindow(const Alert& alert, CFOptionFlags& response);
