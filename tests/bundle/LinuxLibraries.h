// The libraries of Linux in which the plug-in's C and C++ names are found.
#pragma once

#include <string>

// By the name with its leading underscore, which is macOS's own. C++ names are looked up in
// Debian's libc++, which has macOS's layouts and names, all others in the C library and its
// mathematics. Null when there is none. Throws std::runtime_error when libc++ is not installed.
void* inCxxLibrary(const std::string& symbol);
void* inCLibrary(const std::string& symbol);
