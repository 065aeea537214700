#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFURL.h>

typedef struct __CFBundle* CFBundleRef;

CF_EXPORT CFBundleRef CFBundleCreate(CFAllocatorRef allocator, CFURLRef bundleURL);
