#include "host/base/OutputFile.h"

#include "host/base/StartFolder.h"
#include "host/base/UserError.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <random>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

// Read by signal handlers, so it is plain memory and the flag is raised last.
char unfinished[PATH_MAX];
volatile std::sig_atomic_t unfinishedSet = 0;
volatile std::sig_atomic_t writtenSet = 0;

constexpr const char* kTemporaryName = ".tvhost.XXXXXX";
constexpr int kMostNames = 100;

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
    fs::path path = fromStartFolder(given);
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

bool outputWasWritten() {
    return writtenSet != 0;
}

void removeUnfinishedOutput() {
    if (unfinishedSet) {
        unlink(unfinished);
        unfinishedSet = 0;
    }
}

OutputFile::OutputFile(const std::string& target, Until until)
    : given_(target), target_(followed(given_)) {
    mode_t permissions = defaultPermissions();
    struct stat older = {};
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

    temporary_ = (target_.parent_path() / kTemporaryName).string();
    // Its name comes by way of /proc.
    if (until == Until::kUnnamed && access("/proc/self/fd", X_OK) == 0) {
        fileDescriptor_ = open(target_.parent_path().c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    }
    if (fileDescriptor_ < 0) {
        openTemporary();
    }
    fchmod(fileDescriptor_, permissions);
}

OutputFile::~OutputFile() {
    discard();
}

void OutputFile::openTemporary() {
    const bool fits = temporary_.size() < sizeof unfinished;
    const SignalPause pause;
    errno = ENAMETOOLONG;
    fileDescriptor_ = fits ? mkostemp(temporary_.data(), O_CLOEXEC) : -1;
    if (fileDescriptor_ < 0) {
        throw UserError(given_ + " cannot be written: " + std::strerror(errno) +
                        "; give a file in a folder that can be");
    }
    named_ = true;
    std::memcpy(unfinished, temporary_.c_str(), temporary_.size() + 1);
    unfinishedSet = 1;
}

// Gives the unnamed file the temporary name; rename() then replaces an older file at one blow.
bool OutputFile::nameTemporary() {
    const std::string self = "/proc/self/fd/" + std::to_string(fileDescriptor_);
    const std::string pattern = temporary_;
    std::random_device dice;
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        for (std::size_t i = pattern.size() - 6; i < pattern.size(); ++i) {
            temporary_[i] = static_cast<char>('a' + dice() % 26);
        }
        if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, temporary_.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            return true;
        }
        if (errno != EEXIST) {
            return false;
        }
    }
    return false;
}

void OutputFile::discard() {
    if (fileDescriptor_ < 0) {
        return;
    }
    close(fileDescriptor_);
    fileDescriptor_ = -1;
    if (named_) {
        removeUnfinishedOutput();
    }
}

void OutputFile::commit() {
    const SignalPause pause;
    // Some file systems tell only now that there was no room; some cannot be asked.
    bool done = fsync(fileDescriptor_) == 0 || errno == EINVAL || errno == ENOSYS;
    const bool linked = done && !named_ && nameTemporary();
    done = done && (named_ || linked);
    int fault = errno;
    if (close(fileDescriptor_) != 0 && done) {
        done = false;
        fault = errno;
    }
    fileDescriptor_ = -1;
    if (done && rename(temporary_.c_str(), target_.c_str()) != 0) {
        done = false;
        fault = errno;
    }
    if (!done) {
        if (named_) {
            removeUnfinishedOutput();
        } else if (linked) {
            unlink(temporary_.c_str());
        }
        throw UserError(given_ + " cannot be written: " + std::strerror(fault) +
                        "; give a file in a folder with room for it");
    }
    unfinishedSet = 0;
    writtenSet = 1;
}

} // namespace tvhost
