#include "platform/linux/CFURL.h"

#include <CoreFoundation/CFURL.h>

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator, const UInt8* buffer,
                                                 CFIndex length, Boolean isDirectory) {
    if (length <= 0) {
        return nullptr;
    }
    return new __CFURL(
        std::string(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(length)));
}
