// Lets exceptions travel through mapped code: its own compact table, told to this process's
// unwinder in the form that this one reads.
#pragma once

#include "tests/bundle/BundleImage.h"

#include <cstdint>
#include <vector>

// Stays for good: an unwinder may look at it at any time. Throws std::runtime_error where the table
// says what this class does not know how to tell.
class UnwindRegistration {
public:
    explicit UnwindRegistration(const BundleImage& image);
    UnwindRegistration(const UnwindRegistration&) = delete;
    UnwindRegistration& operator=(const UnwindRegistration&) = delete;

private:
    std::vector<std::uint8_t> frames_; // DWARF, as in a section .eh_frame
};
