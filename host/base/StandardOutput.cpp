#include "host/base/StandardOutput.h"

#include "host/base/UserError.h"

#include <csignal>
#include <cstdio>
#include <iostream>
#include <streambuf>

#include <fcntl.h>
#include <unistd.h>

namespace tvhost {

namespace {

constexpr int kFirstFree = 3; // after the three standard ones

int kept = -1;

// Passes on to a file of the C library, so that fflush() reaches what is held back.
class FileBuffer : public std::streambuf {
public:
    explicit FileBuffer(std::FILE* file) : file_(file) {}

protected:
    int overflow(int character) override {
        return character == EOF ? 0 : std::fputc(character, file_);
    }
    std::streamsize xsputn(const char* text, std::streamsize length) override {
        return static_cast<std::streamsize>(
            std::fwrite(text, 1, static_cast<std::size_t>(length), file_));
    }
    int sync() override { return std::fflush(file_); }

private:
    std::FILE* file_;
};

} // namespace

void keepStandardOutput() {
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, kFirstFree);
    std::FILE* const file = own < 0 ? nullptr : fdopen(own, "w");
    if (!file) {
        return;
    }
    // To the end of the program, whose last words may come late.
    static FileBuffer buffer(file);
    std::cout.rdbuf(&buffer);
    kept = own;
    if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (nowhere >= 0) {
            dup2(nowhere, STDOUT_FILENO);
            close(nowhere);
        }
    }
}

int takeStandardOutput() {
    std::cout.flush();
    if (isatty(kept) == 1) {
        throw UserError("standard output is a terminal; lead it into a file or another program, or "
                        "give a file's name");
    }
    if (kept < 0) {
        throw UserError("standard output is closed; lead it into a file or another program, or "
                        "give a file's name");
    }
    std::signal(SIGPIPE, SIG_IGN);
    return kept;
}

} // namespace tvhost
