// The base types of CoreFoundation, as far as the plug-in uses them.
#pragma once

#include <MacTypes.h>
#include <stdint.h>

#if defined(__cplusplus)
#define CF_EXPORT extern "C"
#else
#define CF_EXPORT extern
#endif

typedef signed long CFIndex;
typedef unsigned long CFOptionFlags;
typedef double CFTimeInterval; // seconds

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;

CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;

CF_EXPORT CFTypeRef CFRetain(CFTypeRef cf);
CF_EXPORT void CFRelease(CFTypeRef cf);
