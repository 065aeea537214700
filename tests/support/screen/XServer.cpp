#include "tests/support/screen/XServer.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string readLine(int descriptor) {
    std::string line;
    char character;
    while (read(descriptor, &character, 1) == 1 && character != '\n') {
        line += character;
    }
    return line;
}

} // namespace

XServer::XServer(const std::string& screen) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe for the X server");
    }
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent) {
            _exit(1);
        }
        close(ends[0]);
        // It tells of each display number that is taken.
        const int nowhere = open("/dev/null", O_WRONLY);
        if (nowhere >= 0) {
            dup2(nowhere, STDERR_FILENO);
        }
        const std::string descriptor = std::to_string(ends[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", screen.c_str(),
               "-nolisten", "tcp", "-noreset", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(ends[1]);
    const std::string number = readLine(ends[0]);
    close(ends[0]);
    if (number.empty()) {
        throw std::runtime_error("Xvfb didn't start");
    }
    name_ = ":" + number;
    setenv("DISPLAY", name_.c_str(), 1);
}

XServer::~XServer() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
}

XServer& sharedXServer() {
    static XServer server;
    return server;
}
