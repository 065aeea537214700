#include "tests/support/ProcessMemory.h"

#include <fstream>

#include <malloc.h>
#include <unistd.h>

std::int64_t allocatedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

std::int64_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    std::int64_t whole = 0;
    std::int64_t resident = 0;
    file >> whole >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}
