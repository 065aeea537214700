#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct __CFURL* CFURLRef;

CF_EXPORT CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator,
                                                           const UInt8* buffer, CFIndex bufLen,
                                                           Boolean isDirectory);
