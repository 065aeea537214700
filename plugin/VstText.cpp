#include "plugin/VstText.h"

#include <cstring>

char* vst_strncpy(char* dst, const char* src, VstInt32 maxLen) {
    std::strncpy(dst, src, static_cast<std::size_t>(maxLen));
    dst[maxLen] = 0;
    return dst;
}

char* vst_strncat(char* dst, const char* src, VstInt32 maxLen) {
    // What would land behind dst[maxLen] is cut off by the zero there, and is not written at all:
    // a host's buffer may end with that zero.
    const VstInt32 room = maxLen - static_cast<VstInt32>(std::strlen(dst));
    if (room > 0) {
        std::strncat(dst, src, static_cast<std::size_t>(room));
    }
    dst[maxLen] = 0;
    return dst;
}
