// All commands and options of tvhost, as they are declared, for whoever describes them.
#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace tvhost {

struct DescribedOption {
    std::vector<std::string> names; // with their dashes, "-h" before "--help"
    std::string value;              // what the value stands for; empty for none, as with flags
    std::string help;
};

struct DescribedCommand {
    std::vector<std::string> words; // "preset", "save"; none for tvhost itself
    std::string help;
    std::string footer;                     // lines that are to stay as they are
    std::vector<DescribedOption> arguments; // in their order; their one name has no dashes
    std::vector<DescribedOption> options;
    std::vector<std::string> commands; // of the next level

    std::string path() const; // "preset save"
};

// `app`, then all its commands and their commands.
std::vector<DescribedCommand> commandTree(const CLI::App& app);

} // namespace tvhost
