#include "soundlib/Wakeup.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

// A pipe keeps what was written until it is read, and both systems have it. Where it is full, a
// wake-up is waiting already.

Wakeup::Wakeup() {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    reading_ = ends[0];
    writing_ = ends[1];
    fcntl(reading_, F_SETFD, FD_CLOEXEC);
    fcntl(writing_, F_SETFD, FD_CLOEXEC);
    fcntl(writing_, F_SETFL, O_NONBLOCK);
}

Wakeup::~Wakeup() {
    ::close(reading_);
    ::close(writing_);
}

void Wakeup::wake() {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(writing_, &byte, 1);
}

void Wakeup::wait() {
    std::array<char, 64> bytes;
    ssize_t count;
    do {
        count = read(reading_, bytes.data(), bytes.size());
    } while (count < 0 && errno == EINTR);
}
