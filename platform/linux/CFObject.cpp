#include "platform/linux/CFObject.h"

#include <CoreFoundation/CFBase.h>

namespace {

CFObject* objectOf(CFTypeRef reference) {
    return static_cast<CFObject*>(const_cast<void*>(reference));
}

} // namespace

CFTypeRef CFRetain(CFTypeRef object) {
    objectOf(object)->retain();
    return object;
}

void CFRelease(CFTypeRef object) {
    objectOf(object)->release();
}
