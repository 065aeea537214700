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
    process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent) {
            _exit(1);
        }
        close(ends[0]);
        // It tells of each display number that is taken.
        dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
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
    name = ":" + number;
    setenv("DISPLAY", name.c_str(), 1);
}

XServer::~XServer() {
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
}

XServer& sharedXServer() {
    static XServer server;
    return server;
}
