#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __CFURL* CFURLRef;

// `buffer` holds `length` bytes of path, not terminated. Null for an empty path. The caller owns
// the result.
CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator, const UInt8* buffer,
                                                 CFIndex length, Boolean isDirectory);

#ifdef __cplusplus
}
#endif
