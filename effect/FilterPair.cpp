#include "effect/FilterPair.h"

#include <cpuid.h>

bool machineHasAvx() {
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0) {
        return false;
    }
    constexpr unsigned kOsSavesExtendedState = 1u << 27;
    constexpr unsigned kAvx = 1u << 28;
    if ((c & kOsSavesExtendedState) == 0 || (c & kAvx) == 0) {
        return false;
    }
    unsigned enabled = 0;
    unsigned enabledHigh = 0;
    __asm__("xgetbv" : "=a"(enabled), "=d"(enabledHigh) : "c"(0));
    constexpr unsigned kSseAndAvxState = 6;
    return (enabled & kSseAndAvxState) == kSseAndAvxState;
}

const TickPair tickPair = machineHasAvx() ? tickPairAvx : tickPairSse2;
