// What the sources of each place in this project may include, and why.
#pragma once

#include <string>
#include <vector>

// A row of the table. What lies in a deeper place that has a row of its own follows that row alone.
struct Layer {
    std::string place; // a folder, or a file that may more than its folder; from the root
    // Places beside its own whose headers it may include: folders with all below them, or files.
    std::vector<std::string> project;
    // Headers of the system and of libraries beyond the standard libraries of C and C++: the folder
    // or the file between the angle brackets, "POSIX" for the system's own, "*" for any.
    std::vector<std::string> libraries;
    std::string why;
};

const std::vector<Layer>& layerTable();
