// The side of a check that runs in its own process and meets the plug-in.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace tvhost {

// The option that makes `tvhost check` such a process, and what it finds open then.
constexpr const char* kCheckChildOption = "--as-child";
constexpr int kCheckReportDescriptor = 3; // lines of JSON go here
constexpr int kCheckMemoryDescriptor = 4; // shared, holds a LastCall

// Runs the check, or tells what the plug-in is when `check` is empty, and ends the process.
[[noreturn]] void runCheckChild(const std::filesystem::path& plugin, const std::string& check,
                                std::uint64_t seed) noexcept;

} // namespace tvhost
