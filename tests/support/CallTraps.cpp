#include "tests/support/CallTraps.h"

#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>

#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TVDELAY_ADDRESS_SANITIZER 1
#endif
#endif

#ifdef TVDELAY_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#endif

namespace {

constexpr std::size_t kMost = 512;

struct Allocation {
    std::size_t size;
    const void* address;
};

// Plain arrays: nothing in here may allocate.
struct Counts {
    bool counting;
    std::size_t toFail; // number of the allocation, 0 for none
    std::size_t allocations;
    Allocation firstAllocations[kMost];
    std::size_t frees;
    const void* firstFrees[kMost];
    std::size_t locks;
};

thread_local Counts counts;

void noteAllocation(std::size_t size, const void* address) {
    if (counts.counting) {
        if (counts.allocations < kMost) {
            counts.firstAllocations[counts.allocations] = {size, address};
        }
        ++counts.allocations;
    }
}

void noteFree(const void* address) {
    if (counts.counting && address != nullptr) {
        if (counts.frees < kMost) {
            counts.firstFrees[counts.frees] = address;
        }
        ++counts.frees;
    }
}

void noteLock() {
    if (counts.counting) {
        ++counts.locks;
    }
}

} // namespace

#ifdef TVDELAY_ADDRESS_SANITIZER

// The sanitizer's allocator stays in place and reports to these.
namespace {

void onAllocation(const volatile void* address, std::size_t size) {
    noteAllocation(size, const_cast<const void*>(address));
}
void onFree(const volatile void* address) {
    noteFree(const_cast<const void*>(address));
}
const int installed = __sanitizer_install_malloc_and_free_hooks(onAllocation, onFree);

} // namespace

bool CallTraps::canFail() {
    return false;
}

#else

namespace {

bool nextFails() {
    return counts.counting && counts.toFail != 0 && counts.allocations + 1 == counts.toFail;
}

} // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* address, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* address);

void* malloc(std::size_t size) {
    if (nextFails()) {
        noteAllocation(size, nullptr);
        errno = ENOMEM;
        return nullptr;
    }
    void* const address = __libc_malloc(size);
    noteAllocation(size, address);
    return address;
}

void* calloc(std::size_t count, std::size_t size) {
    void* const address = __libc_calloc(count, size);
    noteAllocation(count * size, address);
    return address;
}

void* realloc(void* address, std::size_t size) {
    noteFree(address);
    void* const moved = __libc_realloc(address, size);
    noteAllocation(size, moved);
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size) {
    void* const address = __libc_memalign(alignment, size);
    noteAllocation(size, address);
    return address;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

int posix_memalign(void** address, std::size_t alignment, std::size_t size) {
    *address = memalign(alignment, size);
    return *address != nullptr ? 0 : ENOMEM;
}

void free(void* address) {
    noteFree(address);
    __libc_free(address);
}

} // extern "C"

bool CallTraps::canFail() {
    return true;
}

#endif

namespace {

// The function behind ours. Looked up at the first call, which comes long before any counting.
template <typename Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

using MutexCall = int (*)(pthread_mutex_t*);
using RwlockCall = int (*)(pthread_rwlock_t*);
using SpinCall = int (*)(pthread_spinlock_t*);

} // namespace

extern "C" {

int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    static const auto real = next<MutexCall>("pthread_mutex_lock");
    noteLock();
    return real(mutex);
}

int pthread_mutex_trylock(pthread_mutex_t* mutex) noexcept {
    static const auto real = next<MutexCall>("pthread_mutex_trylock");
    noteLock();
    return real(mutex);
}

int pthread_rwlock_rdlock(pthread_rwlock_t* lock) noexcept {
    static const auto real = next<RwlockCall>("pthread_rwlock_rdlock");
    noteLock();
    return real(lock);
}

int pthread_rwlock_wrlock(pthread_rwlock_t* lock) noexcept {
    static const auto real = next<RwlockCall>("pthread_rwlock_wrlock");
    noteLock();
    return real(lock);
}

int pthread_spin_lock(pthread_spinlock_t* lock) noexcept {
    static const auto real = next<SpinCall>("pthread_spin_lock");
    noteLock();
    return real(lock);
}

} // extern "C"

CallTraps::CallTraps() {
    counts = Counts{};
    counts.counting = true;
}

CallTraps::~CallTraps() {
    counts.counting = false;
}

TrappedCalls CallTraps::stop() {
    counts.counting = false;
    TrappedCalls calls;
    for (std::size_t i = 0; i < counts.allocations && i < kMost; ++i) {
        calls.allocations.push_back(counts.firstAllocations[i].size);
    }
    calls.frees = counts.frees;
    calls.locks = counts.locks;
    return calls;
}

void CallTraps::failAllocation(std::size_t number) {
    counts.toFail = number;
}

void* CallTraps::allocated(std::size_t size) const {
    for (std::size_t i = 0; i < counts.allocations && i < kMost; ++i) {
        if (counts.firstAllocations[i].size == size) {
            return const_cast<void*>(counts.firstAllocations[i].address);
        }
    }
    return nullptr;
}

bool CallTraps::freed(const void* address) const {
    for (std::size_t i = 0; i < counts.frees && i < kMost; ++i) {
        if (counts.firstFrees[i] == address) {
            return true;
        }
    }
    return false;
}
