#include "platform/linux/CFString.h"

#include <CoreFoundation/CFString.h>

#include <iconv.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>

namespace {

const char* iconvName(CFStringEncoding encoding) {
    switch (encoding) {
    case kCFStringEncodingMacRoman:
        return "MACINTOSH";
    case kCFStringEncodingASCII:
        return "ASCII";
    case kCFStringEncodingUTF8:
        return "UTF-8";
    default:
        return nullptr;
    }
}

} // namespace

const CFAllocatorRef kCFAllocatorDefault = nullptr;

CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr,
                                      CFStringEncoding encoding) {
    const char* name = iconvName(encoding);
    if (name == nullptr) {
        return nullptr;
    }
    const iconv_t converter = iconv_open("UTF-8", name);
    if (reinterpret_cast<std::intptr_t>(converter) == -1) {
        return nullptr;
    }
    char* source = const_cast<char*>(cStr);
    std::size_t sourceLeft = std::strlen(cStr);
    std::string text(sourceLeft * 3, '\0'); // no character of these encodings needs more
    char* target = text.data();
    std::size_t targetLeft = text.size();
    const std::size_t result = iconv(converter, &source, &sourceLeft, &target, &targetLeft);
    iconv_close(converter);
    if (result == static_cast<std::size_t>(-1)) {
        return nullptr;
    }
    text.resize(text.size() - targetLeft);
    return new __CFString(text);
}

CFStringRef __CFStringMakeConstantString(const char* cStr) {
    static std::mutex mutex;
    static auto& strings = *new std::map<std::string, CFStringRef>; // outlives static objects
    const std::lock_guard<std::mutex> lock(mutex);
    CFStringRef& string = strings[cStr];
    if (string == nullptr) {
        string = new __CFString(cStr);
    }
    return string;
}
