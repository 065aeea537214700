// A program of a host's screen, beside the test.
#pragma once

#include "tests/realhosts/Shell.h"

#include <optional>
#include <string>

#include <sys/types.h>

// Runs in a home, on the screen that DISPLAY names. What still runs ends with the object, and with
// the test's process.
class HostProcess {
public:
    // `command` is the shell's. Throws std::runtime_error when there can be no process.
    HostProcess(const HostHome& home, const std::string& command, const std::string& logName);
    ~HostProcess();
    HostProcess(const HostProcess&) = delete;
    HostProcess& operator=(const HostProcess&) = delete;

    // The exit status once it has ended; -1 when a signal ended it.
    std::optional<int> exitStatus();
    std::string output() const; // standard output and error

private:
    std::filesystem::path log;
    pid_t process;
    std::optional<int> status;
};
