// Carbon's event and time services, as far as the plug-in uses them.
#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef double EventTimeout; // seconds
typedef SInt32 OSStatus;

UInt32 TickCount(void); // sixtieths of a second since the machine started

// Lets the given time pass on the calling thread. Always answers eventLoopTimedOutErr.
OSStatus RunCurrentEventLoop(EventTimeout timeout);

enum { eventLoopTimedOutErr = -9875 };

#ifdef __cplusplus
}
#endif
