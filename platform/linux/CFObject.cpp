#include "platform/linux/CFObject.h"

#include <CoreFoundation/CFBase.h>

namespace {

CFObject* objectOf(CFTypeRef reference) {
    return static_cast<CFObject*>(const_cast<void*>(reference));
}

} // namespace

void CFObject::retain() {
    const std::lock_guard<std::recursive_mutex> guard(lock());
    ++owners_;
}

void CFObject::release() {
    const std::lock_guard<std::recursive_mutex> guard(lock());
    if (--owners_ == 0) {
        delete this;
    }
}

std::recursive_mutex& CFObject::lock() {
    static auto& mutex = *new std::recursive_mutex; // outlives static objects
    return mutex;
}

CFTypeRef CFRetain(CFTypeRef object) {
    objectOf(object)->retain();
    return object;
}

void CFRelease(CFTypeRef object) {
    objectOf(object)->release();
}
