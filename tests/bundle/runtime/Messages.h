// The messages that the mapped code sends, answered by GNUstep's runtime and written down.
#pragma once

#include <objc/runtime.h>

#include <string>
#include <vector>

extern "C" {
// To be called from mapped code alone, as macOS's objc_msgSend, _stret and objc_msgSendSuper2.
void tvdelayMessageSend();
void tvdelayMessageSendStret();
void tvdelayMessageSendSuper();
}

struct SentMessage {
    Class receiver; // where the method was looked for
    bool toClass;   // the receiver was the class itself
    std::string selector;
    bool own;      // answered by the mapped code
    bool answered; // by anything at all

    std::string text() const; // as in -[NSView frame]
};

// Each once, in the order of their first sending. One thread.
const std::vector<SentMessage>& sentMessages();
void forgetSentMessages();

// Those that nothing answers.
std::vector<std::string> unansweredMessages();
// Those to objects of AppKit that no row of the table of its selectors allows.
std::vector<std::string> unlistedMessages();
