#pragma once

#include <CoreFoundation/CFBase.h>

typedef UInt32 CFStringEncoding;

enum {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUTF8 = 0x08000100,
};

CF_EXPORT CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr,
                                                CFStringEncoding encoding);

// Laid out by the compiler as an object in the file.
#define CFSTR(cStr) ((CFStringRef)__builtin___CFStringMakeConstantString("" cStr ""))
