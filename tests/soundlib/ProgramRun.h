// One run of a program: its exit status and what it wrote.
#pragma once

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <sys/wait.h>

#include "tests/soundlib/TemporaryFolder.h"

struct ProgramRun {
    int status;
    std::string output;
    std::string errors;
};

inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// `arguments` go through the shell.
inline ProgramRun runProgram(const std::string& program, const std::string& arguments) {
    const TemporaryFolder folder;
    const std::string output = folder.file("output");
    const std::string errors = folder.file("errors");
    const std::string command =
        "'" + program + "' " + arguments + " >'" + output + "' 2>'" + errors + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(output), contentOf(errors)};
}
