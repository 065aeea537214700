// How much memory this process holds.
#pragma once

#include <cstdint>

// Bytes that have been allocated and not given back, in all arenas.
std::int64_t allocatedBytes();

// Bytes of the process that lie in memory.
std::int64_t residentBytes();
