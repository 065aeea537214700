#include "tests/editor/FakeCarbon.h"

#include <Carbon/Carbon.h>

std::uint32_t FakeCarbon::ticks = 0;
std::vector<double> FakeCarbon::loopTimeouts;

UInt32 TickCount() {
    return FakeCarbon::ticks;
}

OSStatus RunCurrentEventLoop(EventTimeout timeout) {
    FakeCarbon::loopTimeouts.push_back(timeout);
    return eventLoopTimedOutErr;
}
