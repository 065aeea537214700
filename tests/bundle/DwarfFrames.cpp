#include "tests/bundle/DwarfFrames.h"

#include <stdexcept>

std::vector<DwarfFrame> dwarfFrames(const MachOFile& file) {
    std::vector<DwarfFrame> frames;
    const MachOFile::Section* const section = file.section("__TEXT", "__eh_frame");
    if (section == nullptr) {
        return frames;
    }
    std::uint64_t at = 0;
    while (at < section->size) {
        const std::uint64_t record = section->address + at;
        const auto length = file.at<std::uint32_t>(record);
        if (length < 4 || at + 4 + length > section->size) {
            throw std::runtime_error("the DWARF unwind data is damaged");
        }
        // A record that leads back to another describes a function. Its addresses are counted from
        // where they stand, as all of macOS's are.
        if (file.at<std::uint32_t>(record + 4) != 0) {
            const std::uint64_t place = record + 8;
            frames.push_back(
                {at, place + file.at<std::uint64_t>(place), file.at<std::uint64_t>(place + 8)});
        }
        at += 4 + length;
    }
    return frames;
}
