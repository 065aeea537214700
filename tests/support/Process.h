// A program as a process of its own, with all that it says caught.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

// How a process ended and what it said.
struct ProcessResult {
    int status = -1; // exit status; -1 when a signal ended it
    int signal = 0;  // that ended it
    std::string out;
    std::string err;

    // Complete lines of `err`.
    std::vector<std::string> errorLines() const;
};

// Throws std::runtime_error where the system has no process, pipe or terminal left. What still runs
// ends with the object; a program that isn't there ends with status 127.
class Process {
public:
    struct Options {
        std::vector<std::string> environment; // NAME=VALUE; NAME alone takes a variable away
        std::string folder;                   // to run in; this process's own when empty
        std::string log;                      // file for what is said, in place of the result
        bool errorOnTerminal = false;         // standard error is a terminal
        long largestFile = -1;                // bytes that it may write, when not negative
        long mostMemory = -1;                 // bytes of addresses that it may use, likewise
    };

    // `program` is looked up in PATH when it has no slash. The first argument is not its name.
    Process(const std::string& program, const std::vector<std::string>& arguments,
            const Options& options);
    Process(const std::string& program, const std::vector<std::string>& arguments)
        : Process(program, arguments, Options()) {}
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t id() const { return id_; }

    // Reads to the end of what is said, then waits.
    ProcessResult wait();

    // Asks it to end in good order, by SIGTERM, and gives it some seconds.
    void askToEnd();

    // Without waiting: the exit status once it has ended, -1 when a signal ended it.
    std::optional<int> exitStatus();

private:
    void keepStatus(int how);

    pid_t id_ = -1;
    int out_ = -1; // reading ends; -1 where a log has it all
    int err_ = -1;
    std::optional<int> status_;
    int signal_ = 0;
};

// Runs a program to its end.
ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const Process::Options& options = {});

// Runs a command of the shell to its end.
ProcessResult runShell(const std::string& command, const Process::Options& options = {});
