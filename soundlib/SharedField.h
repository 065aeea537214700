// Access to plain fields that another thread may change meanwhile.
#pragma once

// Reads `field` from memory at this very place, whole: a compiler may lift a plain read out of a
// loop.
template <class T>
T readFresh(const T& field) {
    T value;
    __atomic_load(static_cast<const volatile T*>(&field), &value, __ATOMIC_RELAXED);
    return value;
}

// Writes `field` to memory at this very place, whole.
template <class T>
void writeThrough(T& field, T value) {
    __atomic_store(static_cast<volatile T*>(&field), &value, __ATOMIC_RELAXED);
}

// Reads `field` so that whatever was written before the matching `publish` can be seen.
template <class T>
T acquire(const T& field) {
    return __atomic_load_n(&field, __ATOMIC_ACQUIRE);
}

// Writes `field` after everything the calling thread has written before.
template <class T>
void publish(T& field, T value) {
    __atomic_store_n(&field, value, __ATOMIC_RELEASE);
}
