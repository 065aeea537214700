// The base types of CoreFoundation, as far as the plug-in uses them.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t UInt8;
typedef int32_t SInt32;
typedef uint32_t UInt32;
typedef unsigned char Boolean;
typedef long CFIndex;
typedef unsigned long CFOptionFlags;
typedef double CFTimeInterval; // seconds
typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;

// Any thread. Neither takes null.
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);

#ifdef __cplusplus
}
#endif
