#include "tests/bundle/runtime/FailingAllocations.h"

#include <cstddef>
#include <cstdlib>
#include <map>
#include <new>

namespace {

int untilFailure = -1; // negative: none is to fail
bool failed;
void* first;
bool firstReleased;

void* allocate(std::size_t size) {
    if (untilFailure == 0) {
        untilFailure = -1;
        failed = true;
        throw std::bad_alloc();
    }
    untilFailure -= untilFailure > 0 ? 1 : 0;
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    first = first == nullptr ? memory : first;
    return memory;
}

void release(void* memory) {
    firstReleased = firstReleased || (memory != nullptr && memory == first);
    std::free(memory);
}

} // namespace

void* allocationSymbol(const std::string& symbol) {
    static const std::map<std::string, void*> table = {
        {"__Znwm", reinterpret_cast<void*>(allocate)},
        {"__Znam", reinterpret_cast<void*>(allocate)},
        {"__ZdlPv", reinterpret_cast<void*>(release)},
        {"__ZdaPv", reinterpret_cast<void*>(release)},
    };
    const auto found = table.find(symbol);
    return found == table.end() ? nullptr : found->second;
}

bool runsOutOfMemory(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

FailingAllocation::FailingAllocation(int number) {
    untilFailure = number;
    failed = false;
    first = nullptr;
    firstReleased = false;
}

FailingAllocation::~FailingAllocation() {
    untilFailure = -1;
}

bool FailingAllocation::happened() const {
    return failed;
}

bool FailingAllocation::firstIsReleased() const {
    return firstReleased;
}
