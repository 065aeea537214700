// The compact table by which macOS unwinds the stack frames of a Mach-O file's functions.
#pragma once

#include "tests/bundle/MachOFile.h"

#include <cstdint>
#include <string>
#include <vector>

class CompactUnwind {
public:
    // What holds for the functions from `start` on, up to the next entry: functions in a row whose
    // frames look alike share one.
    struct Entry {
        std::uint64_t start;
        std::uint64_t end;
        std::uint32_t encoding;
        std::uint64_t personality; // where the file keeps the pointer to it; 0 without
        std::uint64_t cleanups;    // address of its language's table; 0 without

        std::uint32_t mode() const { return encoding >> 24 & 15; }
    };
    static constexpr std::uint32_t kFrameMode = 1; // rbp leads to the frame
    static constexpr std::uint32_t kDwarfMode = 4; // the encoding's low 24 bits lead to an FDE

    // Throws std::runtime_error or std::out_of_range for a file without the table or with a damaged
    // one. The address of the text segment has to be that of the file's header.
    explicit CompactUnwind(const MachOFile& file);

    const std::vector<Entry>& entries() const { return entries_; } // by rising address
    // The one in whose range `address` lies; null when there is none.
    const Entry* covering(std::uint64_t address) const;

private:
    struct Header;
    struct IndexRow;
    std::uint32_t encodingOf(const Header& header, std::uint64_t page, std::uint32_t index) const;
    void readPage(const Header& header, const IndexRow& row);
    void setEnds(std::uint64_t end);
    void setCleanups(const Header& header);

    const MachOFile& file_;
    std::uint64_t base_;  // of all addresses in the table
    std::uint64_t table_; // its own address
    std::vector<Entry> entries_;
};
