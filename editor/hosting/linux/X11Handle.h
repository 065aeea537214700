// Tells handles of the X server from objects.
#pragma once

#include <cstdint>

// True for pointers that are handles of the X server, which have 32 bits, and no objects.
inline bool fitsX11Handle(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer) <= UINT32_MAX;
}
