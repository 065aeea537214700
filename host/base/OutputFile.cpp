#include "host/base/OutputFile.h"

#include "host/base/UserError.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

// Read by signal handlers, so it is plain memory and the flag is raised last.
char unfinished[PATH_MAX];
volatile std::sig_atomic_t unfinishedSet = 0;

// Holds signals back while a file and what a handler knows of it change together.
class SignalPause {
public:
    SignalPause() {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, &before_);
    }
    ~SignalPause() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;

private:
    sigset_t before_;
};

mode_t defaultPermissions() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// Where a symbolic link leads, so that the link stays and its file is replaced.
fs::path followed(const std::string& given) {
    std::error_code error;
    fs::path path = fs::absolute(given, error);
    if (!fs::is_symlink(path, error)) {
        return path;
    }
    fs::path destination = fs::canonical(path, error);
    if (error) {
        throw UserError(given + " is a broken link; give the name of a file to write");
    }
    return destination;
}

} // namespace

void removeUnfinishedOutput() {
    if (unfinishedSet) {
        unlink(unfinished);
        unfinishedSet = 0;
    }
}

OutputFile::OutputFile(const std::string& target) : given_(target), target_(followed(given_)) {
    mode_t permissions = defaultPermissions();
    struct stat older{};
    if (stat(target_.c_str(), &older) == 0) {
        if (!S_ISREG(older.st_mode)) {
            throw UserError(given_ + " is not an ordinary file; give the name of a file to write");
        }
        if (access(target_.c_str(), W_OK) != 0) {
            throw UserError(given_ + " cannot be written: " + std::strerror(errno) +
                            "; give a file that may be replaced");
        }
        permissions = older.st_mode & 07777;
    } else if (errno != ENOENT) {
        throw UserError(given_ + " cannot be written: " + std::strerror(errno) +
                        "; give the name of a file to write");
    }

    temporary_ = (target_.parent_path() / ".tvhost.XXXXXX").string();
    const bool fits = temporary_.size() < sizeof unfinished;
    const SignalPause pause;
    errno = ENAMETOOLONG;
    fileDescriptor_ = fits ? mkostemp(temporary_.data(), O_CLOEXEC) : -1;
    if (fileDescriptor_ < 0) {
        throw UserError(given_ + " cannot be written: " + std::strerror(errno) +
                        "; give a file in a folder that can be");
    }
    std::memcpy(unfinished, temporary_.c_str(), temporary_.size() + 1);
    unfinishedSet = 1;
    fchmod(fileDescriptor_, permissions);
}

OutputFile::~OutputFile() {
    discard();
}

void OutputFile::discard() {
    if (fileDescriptor_ < 0) {
        return;
    }
    close(fileDescriptor_);
    fileDescriptor_ = -1;
    removeUnfinishedOutput();
}

void OutputFile::commit() {
    const SignalPause pause;
    // Some file systems tell only now that there was no room.
    const int closed = close(fileDescriptor_);
    fileDescriptor_ = -1;
    if (closed != 0 || rename(temporary_.c_str(), target_.c_str()) != 0) {
        const std::string reason = std::strerror(errno);
        removeUnfinishedOutput();
        throw UserError(given_ + " cannot be written: " + reason +
                        "; give a file in a folder with room for it");
    }
    unfinishedSet = 0;
}

} // namespace tvhost
