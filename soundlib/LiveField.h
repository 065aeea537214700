// Access to plain fields that another thread may change meanwhile, without an atomic operation:
// aligned fields of at most eight bytes are read and written whole on the processors that this runs
// on, which also keep stores and loads in order. So it is enough to keep the compiler in order.
#pragma once

// Reads `field` from memory at this very place: a compiler may lift a plain read out of a loop.
template <class T>
T readLive(const T& field) {
    static_assert(sizeof(T) <= 8);
    return *static_cast<const volatile T*>(&field);
}

// Writes `field` to memory at this very place.
template <class T>
void writeLive(T& field, T value) {
    static_assert(sizeof(T) <= 8);
    *static_cast<volatile T*>(&field) = value;
}

// Reads `field` so that whatever was written before the matching `publish` can be seen.
template <class T>
T acquire(const T& field) {
    const T value = readLive(field);
    __asm__ volatile("" ::: "memory");
    return value;
}

// Writes `field` after everything the calling thread has written before.
template <class T>
void publish(T& field, T value) {
    __asm__ volatile("" ::: "memory");
    writeLive(field, value);
}
