#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

// How a program ended and what it said.
struct ProgramResult {
    int status = -1; // exit status; -1 when a signal ended it
    int signal = 0;  // that ended it
    std::string out;
    std::string err;

    // Complete lines of `err`.
    std::vector<std::string> errorLines() const;
};

// tvhost as a process of its own, with standard output and error caught. There is no VST_PATH and
// no display and HOME leads nowhere unless `environment` (NAME=VALUE) says otherwise.
class ProgramRun {
public:
    struct Options {
        std::vector<std::string> environment;
        bool errorOnTerminal = false; // standard error is a terminal
        long largestFile = -1;        // bytes, when not negative
        std::string program;          // tvhost itself when empty
    };

    explicit ProgramRun(const std::vector<std::string>& arguments) : ProgramRun(arguments, {}) {}
    ProgramRun(const std::vector<std::string>& arguments, const Options& options);
    ~ProgramRun();
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    pid_t process() const { return pid; }
    ProgramResult wait();

private:
    pid_t pid = -1;
    int outDescriptor = -1;
    int errDescriptor = -1;
};

// Runs tvhost to its end.
ProgramResult runTvhost(const std::vector<std::string>& arguments,
                        const ProgramRun::Options& options = {});
