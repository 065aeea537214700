#include "host/window/VirtualDisplay.h"

#include "host/base/UserError.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kNotFound = 127;       // as a shell says it
constexpr int kLongestStart = 30000; // ms

// The number that the server writes, empty when it ends or hangs instead.
std::string readNumber(int descriptor) {
    std::string text;
    pollfd waiting{descriptor, POLLIN, 0};
    for (;;) {
        const int ready = poll(&waiting, 1, kLongestStart);
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        char character = 0;
        if (ready <= 0 || read(descriptor, &character, 1) != 1) {
            return "";
        }
        if (character == '\n') {
            return text;
        }
        text += character;
    }
}

// In the new process; only what is safe after a fork.
[[noreturn]] void becomeServer(pid_t parent, const char* descriptor, const char* screen) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) {
        _exit(1);
    }
    // Ctrl-C on the terminal is for tvhost, which takes the server with it.
    setpgid(0, 0);
    const int nowhere = open("/dev/null", O_RDWR);
    if (nowhere >= 0) {
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            dup2(nowhere, standard);
        }
    }
    execlp("Xvfb", "Xvfb", "-displayfd", descriptor, "-screen", "0", screen, "-nolisten", "tcp",
           "-noreset", static_cast<char*>(nullptr));
    _exit(errno == ENOENT ? kNotFound : 1);
}

} // namespace

VirtualDisplay::VirtualDisplay() {
    int ends[2];
    if (pipe(ends) != 0) {
        throw UserError(std::string("there is no pipe for an X server: ") + std::strerror(errno) +
                        "; allow more open files");
    }
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    const std::string descriptor = std::to_string(ends[1]);
    const std::string screen = std::to_string(kWidth) + "x" + std::to_string(kHeight) + "x24";
    const pid_t parent = getpid();
    server_ = fork();
    if (server_ == 0) {
        becomeServer(parent, descriptor.c_str(), screen.c_str());
    }
    close(ends[1]);
    const std::string number = server_ < 0 ? "" : readNumber(ends[0]);
    close(ends[0]);
    if (!number.empty()) {
        setenv("DISPLAY", (":" + number).c_str(), 1);
        return;
    }
    int status = 0;
    if (server_ > 0) {
        kill(server_, SIGTERM);
        waitpid(server_, &status, 0);
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == kNotFound) {
        throw UserError("there is no display and no Xvfb to make one; set DISPLAY or install the "
                        "Debian package xvfb");
    }
    throw UserError("there is no display and Xvfb doesn't start; set DISPLAY or find out with "
                    "'Xvfb -displayfd 1' what it lacks");
}

VirtualDisplay::~VirtualDisplay() {
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
    unsetenv("DISPLAY");
}

} // namespace tvhost
