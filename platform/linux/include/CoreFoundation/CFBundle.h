#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFURL.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __CFBundle* CFBundleRef;

// The bundle of a directory; null when there is no such directory. The same directory gives the
// same object as long as it lives, with one more owner.
CFBundleRef CFBundleCreate(CFAllocatorRef allocator, CFURLRef bundleURL);

#ifdef __cplusplus
}
#endif
