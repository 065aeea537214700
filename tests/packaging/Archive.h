// What an archive holds, in order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ArchiveEntry {
    std::string path;
    bool isFolder;
    unsigned permissions;
    std::int64_t owner; // 0 in formats that have none
    std::int64_t group;
    std::int64_t time; // seconds since 1970
    std::string content;
};

// Throws std::runtime_error for what is no archive.
std::vector<ArchiveEntry> readArchive(const std::string& path);
