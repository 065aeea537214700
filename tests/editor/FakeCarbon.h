// The time and event services of the test's own making, in place of the system's.
#pragma once

#include <cstdint>
#include <vector>

struct FakeCarbon {
    static std::uint32_t ticks;              // what TickCount answers
    static std::vector<double> loopTimeouts; // of each run of the event loop, in seconds
};
