#include "tests/host/ProgramRun.h"

#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

struct Channel {
    int reader;
    int writer;
};

Channel openPipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    return {ends[0], ends[1]};
}

Channel openTerminal() {
    const int reader = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (reader < 0 || grantpt(reader) != 0 || unlockpt(reader) != 0) {
        throw std::runtime_error("no terminal");
    }
    const int writer = open(ptsname(reader), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (writer < 0) {
        throw std::runtime_error("no terminal");
    }
    // Line ends come as they are written.
    termios settings{};
    tcgetattr(writer, &settings);
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    tcsetattr(writer, TCSANOW, &settings);
    return {reader, writer};
}

} // namespace

std::vector<std::string> ProgramResult::errorLines() const {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end; (end = err.find('\n', begin)) != std::string::npos; begin = end + 1) {
        lines.push_back(err.substr(begin, end - begin));
    }
    return lines;
}

ProgramRun::ProgramRun(const std::vector<std::string>& arguments, const Options& options) {
    const Channel out = openPipe();
    const Channel err = options.errorOnTerminal ? openTerminal() : openPipe();
    outDescriptor = out.reader;
    errDescriptor = err.reader;

    const std::string program = options.program.empty() ? TVHOST_PROGRAM : options.program;
    std::vector<std::string> words = {"tvhost"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    pid = fork();
    if (pid < 0) {
        throw std::runtime_error("no process");
    }
    if (pid == 0) {
        dup2(out.writer, STDOUT_FILENO);
        dup2(err.writer, STDERR_FILENO);
        unsetenv("VST_PATH");
        unsetenv("DISPLAY");
        setenv("HOME", "/nonexistent", 1);
        // What is settled to be kept to the end of the process is no fault.
        setenv("LSAN_OPTIONS", "suppressions=" TVHOST_LEAK_SUPPRESSIONS ":print_suppressions=0", 1);
        for (const std::string& setting : options.environment) {
            const std::size_t sign = setting.find('=');
            setenv(setting.substr(0, sign).c_str(), setting.substr(sign + 1).c_str(), 1);
        }
        if (options.largestFile >= 0) {
            const rlimit limit{static_cast<rlim_t>(options.largestFile),
                               static_cast<rlim_t>(options.largestFile)};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(out.writer);
    close(err.writer);
}

ProgramRun::~ProgramRun() {
    close(outDescriptor);
    close(errDescriptor);
}

ProgramResult ProgramRun::wait() {
    ProgramResult result;
    pollfd channels[] = {{outDescriptor, POLLIN, 0}, {errDescriptor, POLLIN, 0}};
    std::string* const texts[] = {&result.out, &result.err};
    while (channels[0].fd >= 0 || channels[1].fd >= 0) {
        poll(channels, 2, -1);
        for (int i = 0; i < 2; ++i) {
            if (channels[i].fd < 0 || channels[i].revents == 0) {
                continue;
            }
            char buffer[4096];
            const ssize_t count = read(channels[i].fd, buffer, sizeof buffer);
            // A terminal whose other end has closed gives an error instead of an end.
            if (count <= 0) {
                channels[i].fd = -1;
            } else {
                texts[i]->append(buffer, static_cast<std::size_t>(count));
            }
        }
    }
    int status = 0;
    waitpid(pid, &status, 0);
    if (WIFEXITED(status)) {
        result.status = WEXITSTATUS(status);
    } else {
        result.signal = WTERMSIG(status);
    }
    return result;
}

ProgramResult runTvhost(const std::vector<std::string>& arguments,
                        const ProgramRun::Options& options) {
    return ProgramRun(arguments, options).wait();
}
