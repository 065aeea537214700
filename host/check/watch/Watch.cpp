// Loaded before all other libraries: counts the calls for memory and the locks of a thread that is
// watched, and hands each on to the C library. On request, large pieces of memory are guarded.
#include "host/check/watch/GuardedMemory.h"
#include "host/check/watch/WatchState.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>

// The C library's own names for them, which need no search that would itself take memory.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace {

// Reached without a call, so that the first use on a thread takes no memory.
__attribute__((tls_model("initial-exec"))) thread_local WatchState state;

void count(int& counter, WatchEvent& first, const char* function, void* caller) {
    if (state.watching == 0) {
        return;
    }
    if (counter++ == 0) {
        first = {function, caller};
    }
}

void allocated(const char* function, void* caller) {
    count(state.allocations, state.firstAllocation, function, caller);
}

void locked(const char* function, void* caller) {
    count(state.locks, state.firstLock, function, caller);
}

void* takeMemory(std::size_t size) {
    void* const guarded = GuardedMemory::take(size);
    return guarded ? guarded : __libc_malloc(size);
}

void* takeAligned(std::size_t alignment, std::size_t size) {
    void* const guarded = GuardedMemory::take(size, std::max<std::size_t>(alignment, 16));
    return guarded ? guarded : __libc_memalign(alignment, size);
}

void giveBack(void* memory) {
    if (GuardedMemory::has(memory)) {
        GuardedMemory::giveBack(memory);
    } else {
        __libc_free(memory);
    }
}

// As realloc() answers, from and to either kind.
void* resize(void* memory, std::size_t size) {
    if (!GuardedMemory::has(memory) && (memory || size < GuardedMemory::kLeastSize)) {
        return __libc_realloc(memory, size);
    }
    void* const larger = takeMemory(size);
    if (memory && (larger || size == 0)) {
        if (larger) {
            std::memcpy(larger, memory, std::min(GuardedMemory::sizeOf(memory), size));
        }
        GuardedMemory::giveBack(memory);
    }
    return larger;
}

__attribute__((constructor)) void beginToGuard() {
    if (std::getenv(tvhost::kGuardMemoryVariable)) {
        GuardedMemory::begin();
    }
}

template <typename Function>
Function next(Function& found, const char* name) {
    if (!found) {
        found = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
    }
    return found;
}

} // namespace

#define CALLER __builtin_return_address(0)
#define PASS_ON(function, ...)                                                                     \
    static decltype(&function) real;                                                               \
    return next(real, #function)(__VA_ARGS__)
#define WATCHED_LOCK(function, parameters, ...)                                                    \
    int function parameters {                                                                      \
        locked(#function, CALLER);                                                                 \
        PASS_ON(function, __VA_ARGS__);                                                            \
    }

extern "C" {
#pragma GCC visibility push(default)

WatchState* tvhostWatchState() {
    return &state;
}

void* malloc(std::size_t size) {
    allocated("malloc", CALLER);
    return takeMemory(size);
}

void* calloc(std::size_t number, std::size_t size) {
    allocated("calloc", CALLER);
    std::size_t whole = 0;
    void* const guarded =
        __builtin_mul_overflow(number, size, &whole) ? nullptr : GuardedMemory::take(whole);
    return guarded ? guarded : __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size) {
    allocated("realloc", CALLER);
    return resize(memory, size);
}

void* reallocarray(void* memory, std::size_t number, std::size_t size) {
    allocated("reallocarray", CALLER);
    std::size_t whole = 0;
    if (__builtin_mul_overflow(number, size, &whole)) {
        errno = ENOMEM;
        return nullptr;
    }
    return resize(memory, whole);
}

std::size_t malloc_usable_size(void* memory) {
    static decltype(&malloc_usable_size) real;
    return GuardedMemory::has(memory) ? GuardedMemory::sizeOf(memory)
                                      : next(real, "malloc_usable_size")(memory);
}

void free(void* memory) {
    if (memory) {
        allocated("free", CALLER);
    }
    giveBack(memory);
}

void* memalign(std::size_t alignment, std::size_t size) {
    allocated("memalign", CALLER);
    return takeAligned(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    allocated("aligned_alloc", CALLER);
    return takeAligned(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    allocated("posix_memalign", CALLER);
    *memory = takeAligned(alignment, size);
    return *memory ? 0 : ENOMEM;
}

WATCHED_LOCK(pthread_mutex_lock, (pthread_mutex_t * lock), lock)
WATCHED_LOCK(pthread_mutex_timedlock, (pthread_mutex_t * lock, const timespec* until), lock, until)
WATCHED_LOCK(pthread_rwlock_rdlock, (pthread_rwlock_t * lock), lock)
WATCHED_LOCK(pthread_rwlock_wrlock, (pthread_rwlock_t * lock), lock)
WATCHED_LOCK(pthread_spin_lock, (pthread_spinlock_t * lock), lock)
WATCHED_LOCK(pthread_cond_wait, (pthread_cond_t * condition, pthread_mutex_t* lock), condition,
             lock)
WATCHED_LOCK(pthread_cond_timedwait,
             (pthread_cond_t * condition, pthread_mutex_t* lock, const timespec* until), condition,
             lock, until)
WATCHED_LOCK(sem_wait, (sem_t * semaphore), semaphore)
WATCHED_LOCK(pthread_join, (pthread_t thread, void** result), thread, result)

#pragma GCC visibility pop
}
