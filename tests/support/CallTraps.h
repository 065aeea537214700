// Counts what an audio thread must not do: allocations and locks of the thread that asks for it.
// Linked into a program, its own allocation and lock functions stand in for the system's.
#pragma once

#include <cstddef>
#include <vector>

struct TrappedCalls {
    std::vector<std::size_t> allocations; // sizes, in order
    std::size_t frees = 0;
    std::size_t locks = 0;
};

// From the constructor to `stop`, on the constructing thread alone. One at a time in a thread.
class CallTraps {
public:
    CallTraps();
    ~CallTraps();
    CallTraps(const CallTraps&) = delete;
    CallTraps& operator=(const CallTraps&) = delete;

    // Ends the counting and tells what there was, the first few hundred allocations one by one.
    TrappedCalls stop();

    // Lets the allocation of this number (the first is 1) fail, and no other. Without effect where
    // canFail() is false.
    void failAllocation(std::size_t number);
    static bool canFail();

    // The address of the first allocation of this size; null when there was none.
    void* allocated(std::size_t size) const;
    bool freed(const void* address) const;
};
