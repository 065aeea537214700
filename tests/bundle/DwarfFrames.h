// The functions that a Mach-O file's DWARF unwind data speaks of.
#pragma once

#include "tests/bundle/MachOFile.h"

#include <cstdint>
#include <vector>

struct DwarfFrame {
    std::uint64_t at; // its place in the section, in bytes
    std::uint64_t function;
    std::uint64_t size; // of the function
};

// None when the file has no such section. Throws std::runtime_error for a damaged one.
std::vector<DwarfFrame> dwarfFrames(const MachOFile& file);
