// Where a virtual operation stands in its class's table.
#pragma once

#include <cstddef>
#include <cstring>

// The index among the table's function pointers. A pointer to a virtual member holds one more than
// the offset in bytes; one to a plain member holds an address, which gives no slot: -1.
template <typename MemberPointer>
std::ptrdiff_t virtualSlot(MemberPointer operation) {
    std::ptrdiff_t offset[2];
    static_assert(sizeof(operation) == sizeof(offset));
    std::memcpy(offset, &operation, sizeof(offset));
    constexpr std::ptrdiff_t kMostSlots = 1000;
    const bool isVirtual = offset[0] % 8 == 1 && offset[0] / 8 < kMostSlots && offset[0] > 0;
    return isVirtual ? offset[0] / 8 : -1;
}
