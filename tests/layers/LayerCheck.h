// Holds sources against a table of layers.
#pragma once

#include "tests/layers/LayerTable.h"

#include <string>
#include <vector>

struct Source {
    std::string path; // from the root, with /
    std::string text;
};

// All sources of C++, Objective-C++ and assembly below `folders` of `root`, in order of their
// paths.
std::vector<Source> readSources(const std::string& root, const std::vector<std::string>& folders);

// A sentence for each include or import that the row of its source doesn't allow, for each source
// without a row, and for each quoted include that isn't named from the root.
std::vector<std::string> wallsBroken(const std::vector<Source>& sources,
                                     const std::vector<Layer>& table);

// A sentence for each place or library that a row allows and no source of it includes.
std::vector<std::string> doorsUnused(const std::vector<Source>& sources,
                                     const std::vector<Layer>& table);
