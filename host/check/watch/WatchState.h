// What the preloaded watch counts on one thread. Shared between tvhost and the watch.
#pragma once

extern "C" {

struct WatchEvent {
    const char* function; // name of what was called
    void* caller;         // the address that it returns to
};

struct WatchState {
    int watching;    // non-zero while calls are counted
    int allocations; // memory taken or given back
    int locks;       // locks and waits
    WatchEvent firstAllocation;
    WatchEvent firstLock;
};

// The calling thread's. Found by this name with dlsym() where the watch is loaded.
using WatchStateOfThread = WatchState* (*)();
}

namespace tvhost {

constexpr const char* kWatchStateSymbol = "tvhostWatchState";

// Set for the process, whatever its value, it lets the watch guard large pieces of memory.
constexpr const char* kGuardMemoryVariable = "TVHOST_GUARD_MEMORY";

} // namespace tvhost
