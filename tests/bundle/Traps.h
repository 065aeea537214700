// Addresses for what must not be called: a call to one ends the program with the name of it.
#pragma once

#include <cstddef>
#include <map>
#include <string>

class Traps {
public:
    Traps(); // throws std::runtime_error when there is no memory at hand
    ~Traps();
    Traps(const Traps&) = delete;
    Traps& operator=(const Traps&) = delete;

    // The same for the same name. Throws std::length_error when there are too many.
    void* of(const std::string& symbol);

private:
    std::map<std::string, char*> traps_;
    char* memory_;
};
