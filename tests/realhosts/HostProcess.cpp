#include "tests/realhosts/HostProcess.h"

#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

HostProcess::HostProcess(const HostHome& home, const std::string& command,
                         const std::string& logName)
    : log(home.path() / logName) {
    const std::string whole = home.insideHome(command);
    const pid_t parent = getpid();
    process = fork();
    if (process == -1) {
        throw std::runtime_error("no process");
    }
    if (process == 0) {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (getppid() != parent || file == -1) {
            _exit(1);
        }
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        execl("/bin/sh", "sh", "-c", whole.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    setpgid(process, process); // whoever comes first
}

HostProcess::~HostProcess() {
    kill(-process, SIGKILL);
    if (!status) {
        waitpid(process, nullptr, 0);
    }
}

std::optional<int> HostProcess::exitStatus() {
    int how = 0;
    if (!status && waitpid(process, &how, WNOHANG) == process) {
        status = WIFEXITED(how) ? WEXITSTATUS(how) : -1;
    }
    return status;
}

std::string HostProcess::output() const {
    std::ostringstream text;
    text << std::ifstream(log).rdbuf();
    return text.str();
}
