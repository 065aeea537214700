#include "host/render/SoundSink.h"

#include <cerrno>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace tvhost {

namespace {

SoundSink& of(void* user) {
    return *static_cast<SoundSink*>(user);
}

} // namespace

SNDFILE* SoundSink::open(SF_INFO& info) {
    SF_VIRTUAL_IO file = callbacks();
    return sf_open_virtual(&file, SFM_WRITE, &info, this);
}

std::string SoundSink::reason() const {
    return std::strerror(fault_);
}

bool SoundSink::readerHasGone() const {
    return fault_ == EPIPE;
}

SF_VIRTUAL_IO SoundSink::callbacks() {
    SF_VIRTUAL_IO file{};
    file.get_filelen = [](void* user) { return of(user).length(); };
    file.seek = [](sf_count_t offset, int whence, void* user) {
        return of(user).seek(offset, whence);
    };
    file.tell = [](void* user) { return of(user).seek(0, SEEK_CUR); };
    file.write = [](const void* data, sf_count_t count, void* user) {
        return of(user).write(data, count);
    };
    // Headers are read again when they are written anew.
    file.read = [](void* data, sf_count_t count, void* user) -> sf_count_t {
        return ::read(of(user).descriptor_, data, static_cast<std::size_t>(count));
    };
    return file;
}

sf_count_t SoundSink::write(const void* data, sf_count_t count) {
    const char* bytes = static_cast<const char*>(data);
    sf_count_t done = 0;
    while (done < count && !failed()) {
        const ssize_t written =
            ::write(descriptor_, bytes + done, static_cast<std::size_t>(count - done));
        if (written > 0) {
            done += written;
            written_ += written;
        } else if (written == 0 || errno != EINTR) {
            fault_ = written == 0 ? ENOSPC : errno;
        }
    }
    return done;
}

sf_count_t SoundSink::seek(sf_count_t offset, int whence) {
    if (kind_ == Kind::kStream) {
        // Without a header the library only asks where it is.
        return written_;
    }
    const off_t position = lseek(descriptor_, offset, whence);
    if (position < 0 && !failed()) {
        fault_ = errno;
    }
    return position;
}

sf_count_t SoundSink::length() {
    if (kind_ == Kind::kStream) {
        return written_;
    }
    struct stat status = {};
    return fstat(descriptor_, &status) == 0 ? status.st_size : -1;
}

} // namespace tvhost
