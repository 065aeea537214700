// A script of packaging/ as a process of its own.
#pragma once

#include <string>
#include <vector>

struct ScriptResult {
    int status; // exit status; -1 when a signal ended it
    std::string out;
    std::string err;
};

// `home` becomes HOME. Throws std::runtime_error when no process can be started.
ScriptResult runScript(const std::string& script, const std::vector<std::string>& arguments,
                       const std::string& home);
