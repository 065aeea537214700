// Picks the kernel that the machine at hand runs best.
#include "effect/SubBlock.h"

#include <cpuid.h>

// By hand because __builtin_cpu_supports is half in the compiler's run-time library, which the
// bundle for macOS is linked without when it is built on Linux. The system has a say in it as well:
// without its saving the wide registers they are lost at the next change of threads.
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

const RenderSubBlock kRenderSubBlock = machineHasAvx() ? renderSubBlockAvx : renderSubBlockSse2;
