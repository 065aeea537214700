#include "tests/support/Process.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
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

Channel openLog(const std::string& path) {
    const int writer = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (writer < 0) {
        throw std::runtime_error("no log " + path);
    }
    return {-1, writer};
}

void setVariable(const std::string& setting) {
    const std::size_t sign = setting.find('=');
    if (sign == std::string::npos) {
        unsetenv(setting.c_str());
    } else {
        setenv(setting.substr(0, sign).c_str(), setting.substr(sign + 1).c_str(), 1);
    }
}

// For a child that is about to become another program.
void readNothing() {
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (nothing < 0) {
        _exit(126);
    }
    dup2(nothing, STDIN_FILENO);
}

void closeIfOpen(int descriptor) {
    if (descriptor >= 0) {
        close(descriptor);
    }
}

// Where `most` is not negative.
void setLimit(decltype(RLIMIT_AS) resource, long most) {
    if (most >= 0) {
        const rlimit limit{static_cast<rlim_t>(most), static_cast<rlim_t>(most)};
        setrlimit(resource, &limit);
    }
}

} // namespace

std::vector<std::string> ProcessResult::errorLines() const {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end; (end = err.find('\n', begin)) != std::string::npos; begin = end + 1) {
        lines.push_back(err.substr(begin, end - begin));
    }
    return lines;
}

Process::Process(const std::string& program, const std::vector<std::string>& arguments,
                 const Options& options) {
    const bool logged = !options.log.empty();
    const Channel out = logged ? openLog(options.log) : openPipe();
    const Channel err = logged ? out : options.errorOnTerminal ? openTerminal() : openPipe();
    std::vector<std::string> words = {program.substr(program.rfind('/') + 1)};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    id_ = fork();
    if (id_ < 0) {
        throw std::runtime_error("no process");
    }
    if (id_ == 0) {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // Under nohup or in a shell's background some are ignored, and a program inherits that.
        for (const int stopping : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE}) {
            signal(stopping, SIG_DFL);
        }
        readNothing();
        dup2(out.writer, STDOUT_FILENO);
        dup2(err.writer, STDERR_FILENO);
        for (const std::string& setting : options.environment) {
            setVariable(setting);
        }
        if (!options.folder.empty() && chdir(options.folder.c_str()) != 0) {
            _exit(126);
        }
        setLimit(RLIMIT_FSIZE, options.largestFile);
        setLimit(RLIMIT_AS, options.mostMemory);
        execvp(program.c_str(), argv.data());
        _exit(127);
    }
    setpgid(id_, id_); // whoever comes first
    close(out.writer);
    if (!logged) {
        close(err.writer);
        out_ = out.reader;
        err_ = err.reader;
    }
}

Process::~Process() {
    kill(-id_, SIGKILL);
    if (!status_) {
        waitpid(id_, nullptr, 0);
    }
    closeIfOpen(out_);
    closeIfOpen(err_);
}

ProcessResult Process::wait() {
    ProcessResult result;
    pollfd channels[] = {{out_, POLLIN, 0}, {err_, POLLIN, 0}};
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
    int how = 0;
    if (!status_ && waitpid(id_, &how, 0) == id_) {
        keepStatus(how);
    }
    result.status = status_.value_or(-1);
    result.signal = signal_;
    return result;
}

void Process::askToEnd() {
    kill(id_, SIGTERM);
    for (int i = 0; i < 500 && !exitStatus(); ++i) {
        usleep(10000);
    }
}

std::optional<int> Process::exitStatus() {
    int how = 0;
    if (!status_ && waitpid(id_, &how, WNOHANG) == id_) {
        keepStatus(how);
    }
    return status_;
}

void Process::keepStatus(int how) {
    status_ = WIFEXITED(how) ? WEXITSTATUS(how) : -1;
    signal_ = WIFSIGNALED(how) ? WTERMSIG(how) : 0;
}

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const Process::Options& options) {
    return Process(program, arguments, options).wait();
}

ProcessResult runShell(const std::string& command, const Process::Options& options) {
    return runProcess("/bin/sh", {"-c", command}, options);
}
