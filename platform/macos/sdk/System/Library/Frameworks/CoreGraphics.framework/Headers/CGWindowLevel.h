#pragma once

#include <CoreFoundation/CFBase.h>

typedef int32_t CGWindowLevel;
typedef int32_t CGWindowLevelKey;

enum { kCGFloatingWindowLevelKey = 5 };

CF_EXPORT CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key);
CF_EXPORT CGWindowLevel CGShieldingWindowLevel(void);
