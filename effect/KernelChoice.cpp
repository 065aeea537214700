#include "effect/SubBlock.h"

#include <cpuid.h>

bool machineHasAvx() {
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0) {
        return false;
    }
    constexpr unsigned kSystemSavesState = 1u << 27;
    constexpr unsigned kAvx = 1u << 28;
    if ((c & kSystemSavesState) == 0 || (c & kAvx) == 0) {
        return false;
    }
    unsigned saved = 0;
    unsigned savedHigh = 0;
    __asm__("xgetbv" : "=a"(saved), "=d"(savedHigh) : "c"(0));
    constexpr unsigned kSseAndAvx = 6;
    return (saved & kSseAndAvx) == kSseAndAvx;
}

const RenderSubBlock renderSubBlock = machineHasAvx() ? renderSubBlockAvx : renderSubBlockSse2;
