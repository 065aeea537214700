#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __CFString* CFStringRef;
typedef UInt32 CFStringEncoding;

enum {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUTF8 = 0x08000100
};

extern const CFAllocatorRef kCFAllocatorDefault;

// `cStr` ends with a zero. Null for text that `encoding` can't hold, and for any encoding but the
// three above. The caller owns the result.
CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr,
                                      CFStringEncoding encoding);

// The string of an ASCII literal. It lives until the program ends and needs no release.
#define CFSTR(literal) __CFStringMakeConstantString("" literal "")
CFStringRef __CFStringMakeConstantString(const char* cStr);

#ifdef __cplusplus
}
#endif
