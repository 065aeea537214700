// Counts what a block must not do: take or give back memory, lock, call the system.
#pragma once

#include "host/check/watch/WatchState.h"

#include <filesystem>
#include <string>

namespace tvhost {

// Watches the calling thread between begin() and end(). Memory and locks are seen by a shared
// object that has to be loaded before all others; system calls are seen by the kernel.
class RealTimeWatch {
public:
    enum class Subject { kCalls, kSystemCalls };

    // The watch for LD_PRELOAD, found beside this program; empty when there is none.
    static std::filesystem::path library();

    // Makes ready to watch on the calling thread. Throws CheckSkipped when that isn't possible.
    static void require(Subject subject);

    struct Count {
        int times = 0;
        std::string first; // what was called and by whom, for people
    };
    struct Counts {
        Count allocations;
        Count locks;
        Count systemCalls; // at most one a block
    };

    // `subject` must have been required on this thread.
    static void begin(Subject subject);
    static Counts end();

    // Nothing counts while one lives on the thread.
    class Pause {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        int watching_;
        char blocking_;
    };
};

} // namespace tvhost
