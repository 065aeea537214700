#pragma once

#import <objc/NSObject.h>

// Classes and variables of the frameworks stay visible where sources are compiled with hidden
// visibility.
#define FOUNDATION_EXPORT_CLASS __attribute__((visibility("default")))
#if defined(__cplusplus)
#define FOUNDATION_EXPORT extern "C" __attribute__((visibility("default")))
#else
#define FOUNDATION_EXPORT extern __attribute__((visibility("default")))
#endif
