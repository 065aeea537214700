// Core Graphics, as far as the plug-in uses it.
#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef SInt32 CGWindowLevel;
typedef SInt32 CGWindowLevelKey;

enum { kCGFloatingWindowLevelKey = 5 };

// The level of AppKit's windows for a key; that of ordinary windows for keys other than the above.
CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key);

// A level above that of all ordinary windows.
CGWindowLevel CGShieldingWindowLevel(void);

#ifdef __cplusplus
}
#endif
