// Fields that one thread changes while another runs on them.
#pragma once

// Reads `field` from memory where it stands. A compiler may lift a plain read out of a loop, and a
// change would then be heard only at the next block.
template <typename T>
T readLive(const T& field) {
    return *const_cast<const volatile T*>(&field);
}

// Writes `field` to memory where it stands.
template <typename T>
void writeLive(T& field, T value) {
    *const_cast<volatile T*>(&field) = value;
}

// Makes the compiler read from memory anew whatever is read after it. Costs no instruction.
inline void forgetMemory() {
    __asm__ volatile("" ::: "memory");
}
