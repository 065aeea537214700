#include "host/base/StandardInput.h"

#include "host/base/UserError.h"

#include <fcntl.h>
#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kFirstFree = 3; // after the three standard ones

} // namespace

int takeStandardInput() {
    if (isatty(STDIN_FILENO) == 1) {
        throw UserError("standard input is a terminal; lead a file or another program's output "
                        "into it, or give a file's name");
    }
    const int own = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, kFirstFree);
    if (own < 0) {
        throw UserError("standard input is closed; lead a file or another program's output into "
                        "it, or give a file's name");
    }
    const int nowhere = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDIN_FILENO);
        close(nowhere);
    }
    return own;
}

} // namespace tvhost
