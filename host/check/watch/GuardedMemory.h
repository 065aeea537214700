// Memory whose end lies at a page that nobody may touch, so that whoever writes or reads behind it
// crashes there.
#pragma once

#include <cstddef>

// Never gives the same place twice: what was given back can't be touched either. Any thread.
class GuardedMemory {
public:
    static constexpr std::size_t kLeastSize = std::size_t{64} << 10;
    static constexpr std::size_t kMostAlignment = 4096;

    // Begins to guard; without effect where the system has no such room.
    static void begin();

    // Zeros, up to 15 bytes of them unguarded behind `size` where that is no multiple of the
    // alignment, which is a power of 2. Null when the request is too small, or there is no room.
    static void* take(std::size_t size, std::size_t alignment = 16);

    static bool has(const void* memory);
    static void giveBack(void* memory);
    // Bytes from `memory` to its end.
    static std::size_t sizeOf(const void* memory);
};
