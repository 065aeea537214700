// A home for real hosts, that they start in without what a user has set up.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <memory>
#include <string>

// Commands are the shell's, and run in an empty folder that is their home and goes with the object.
class HostHome {
public:
    // Runs `command` to its end without a display. Standard error is part of what it answers as
    // `out`.
    ProcessResult run(const std::string& command) const;

    // Starts `command` on the screen that DISPLAY names. What it says goes into the home's file
    // `logName`.
    std::unique_ptr<Process> start(const std::string& command, const std::string& logName) const;

    const std::filesystem::path& path() const { return folder_.path(); }

private:
    Process::Options options() const;

    TemporaryFolder folder_;
};
