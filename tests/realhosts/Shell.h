// Real hosts, run as commands in a home of their own.
#pragma once

#include <filesystem>
#include <string>

struct ShellResult {
    int status;      // exit status; -1 when a signal ended the command
    std::string out; // standard output and error
};

// An empty folder that goes with the object. Commands run with it as their home, without a display
// and without what the user has told hosts about plug-in folders.
class HostHome {
public:
    HostHome();
    ~HostHome();
    HostHome(const HostHome&) = delete;
    HostHome& operator=(const HostHome&) = delete;

    // `command` is the shell's.
    ShellResult run(const std::string& command) const;
    // The line that makes a shell run `command`, variables ahead of it, like that but on the
    // display.
    std::string insideHome(const std::string& command) const;
    const std::filesystem::path& path() const { return folder; }

private:
    std::filesystem::path folder;
};
