#include "host/base/QuietErrors.h"

#include <fcntl.h>
#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kFirstFree = 3; // after the three standard ones

} // namespace

QuietErrors::QuietErrors() : kept_(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, kFirstFree)) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (kept_ >= 0 && nowhere >= 0) {
        dup2(nowhere, STDERR_FILENO);
    }
    close(nowhere);
}

QuietErrors::~QuietErrors() {
    if (kept_ >= 0) {
        dup2(kept_, STDERR_FILENO);
        close(kept_);
    }
}

} // namespace tvhost
