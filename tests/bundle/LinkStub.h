// A text file that stands for a library when linking for macOS.
#pragma once

#include <set>
#include <string>

struct LinkStub {
    std::string installName;
    std::set<std::string>
        symbols; // for 64-bit Intel, those of libraries that it re-exports as well
};

// Throws std::runtime_error for what is no such file.
LinkStub readLinkStub(const std::string& path);
