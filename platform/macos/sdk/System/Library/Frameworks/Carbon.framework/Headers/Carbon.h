// Carbon's event and time services, as far as the plug-in uses them.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <MacTypes.h>

typedef double EventTimeout; // seconds

CF_EXPORT UInt32 TickCount(void); // sixtieths of a second
CF_EXPORT OSStatus RunCurrentEventLoop(EventTimeout inTimeout);
