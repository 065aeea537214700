#include <Carbon/Carbon.h>

#include <cstdint>
#include <ctime>

UInt32 TickCount() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    const std::int64_t ticks =
        static_cast<std::int64_t>(now.tv_sec) * 60 + now.tv_nsec * 60 / 1000000000;
    return static_cast<UInt32>(ticks);
}

OSStatus RunCurrentEventLoop(EventTimeout timeout) {
    timespec time;
    time.tv_sec = static_cast<time_t>(timeout);
    time.tv_nsec = static_cast<long>((timeout - static_cast<double>(time.tv_sec)) * 1e9);
    nanosleep(&time, nullptr);
    return eventLoopTimedOutErr;
}
