// Memory that runs out for the mapped code when a test wants it to.
#pragma once

#include <functional>
#include <string>

// The stand-ins for the C++ library's operators, by the name with its leading underscore; null for
// all other names.
void* allocationSymbol(const std::string& symbol);

// Whether the call ends by std::bad_alloc.
bool runsOutOfMemory(const std::function<void()>& call);

// While it lives, the mapped code's allocation of that number, from 0 on, throws std::bad_alloc.
class FailingAllocation {
public:
    explicit FailingAllocation(int number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    bool happened() const;
    // Whether the first memory that was given since has come back.
    bool firstIsReleased() const;
};
