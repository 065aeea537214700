// What macOS has of what the bundle takes from it: known from elsewhere than the link stubs.
#pragma once

#include <string>
#include <vector>

struct SymbolFact {
    std::string symbol;  // with its leading underscore
    std::string library; // install path
    int since;           // the first macOS 10.x for 64-bit Intel that has it there: the x
    std::string source;  // of the fact
};

const std::vector<SymbolFact>& symbolFacts();
