// Objects of the Linux supply of CoreFoundation, as tests need them.
#pragma once

#include "platform/linux/CFObject.h"

#include <CoreFoundation/CoreFoundation.h>

#include <string>

// Counts its end.
class CountedObject : public CFObject {
public:
    explicit CountedObject(int* ends) : ends_(ends) {}
    ~CountedObject() override { ++*ends_; }

private:
    int* ends_;
};

// The caller releases it. Null where there is no folder of that path.
inline CFBundleRef bundleAt(const std::string& path) {
    const CFURLRef url = CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()),
        true);
    if (url == nullptr) {
        return nullptr;
    }
    const CFBundleRef bundle = CFBundleCreate(nullptr, url);
    CFRelease(url);
    return bundle;
}
