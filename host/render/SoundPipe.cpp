#include "host/render/SoundPipe.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <unistd.h>

namespace tvhost {

namespace {

// Longer than any sound, for a stream of unknown length.
constexpr sf_count_t kEndless = sf_count_t{1} << 60;
constexpr std::size_t kChunk = 65536;

} // namespace

// Answers 0 at the stream's end only.
std::size_t SoundPipe::readSome(char* bytes, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(descriptor_, bytes, size);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            error_ = errno;
            return 0;
        }
    }
}

const std::string& SoundPipe::head(std::size_t size) {
    while (head_.size() < size) {
        const std::size_t before = head_.size();
        head_.resize(size);
        const std::size_t count = readSome(&head_[before], size - before);
        head_.resize(before + count);
        if (count == 0) {
            break;
        }
    }
    return head_;
}

int SoundPipe::copyInto(int descriptor) {
    std::vector<char> chunk(head_.begin(), head_.end());
    std::size_t size = chunk.size();
    chunk.resize(std::max(kChunk, size));
    do {
        for (std::size_t done = 0; done < size;) {
            const ssize_t count = ::write(descriptor, chunk.data() + done, size - done);
            if (count < 0 && errno != EINTR) {
                return errno;
            }
            done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        }
        size = readSome(chunk.data(), chunk.size());
    } while (size > 0);
    return 0;
}

SNDFILE* SoundPipe::open(SF_INFO& info, std::size_t headerSize,
                         std::optional<std::int64_t> soundSize) {
    headStart_ = std::min(headerSize, head_.size());
    soundSize_ = soundSize;
    SF_VIRTUAL_IO file{};
    file.get_filelen = [](void* user) -> sf_count_t {
        return static_cast<SoundPipe*>(user)->soundSize_.value_or(kEndless);
    };
    // The library seeks to where it is already.
    file.seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
        const sf_count_t here = static_cast<SoundPipe*>(user)->given_;
        return whence == SEEK_CUR && offset == 0      ? here
               : whence == SEEK_SET && offset == here ? here
                                                      : -1;
    };
    file.tell = [](void* user) -> sf_count_t { return static_cast<SoundPipe*>(user)->given_; };
    file.read = [](void* data, sf_count_t count, void* user) {
        return static_cast<SoundPipe*>(user)->give(data, count);
    };
    file.write = [](const void*, sf_count_t, void*) -> sf_count_t { return 0; };
    return sf_open_virtual(&file, SFM_READ, &info, this);
}

sf_count_t SoundPipe::give(void* data, sf_count_t count) {
    if (soundSize_) {
        count = std::min(count, *soundSize_ - given_);
    }
    char* const bytes = static_cast<char*>(data);
    const auto wanted = static_cast<std::size_t>(std::max<sf_count_t>(count, 0));
    std::size_t done = std::min(wanted, head_.size() - headStart_);
    std::memcpy(bytes, head_.data() + headStart_, done);
    headStart_ += done;
    while (done < wanted) {
        const std::size_t some = readSome(bytes + done, wanted - done);
        if (some == 0) {
            break;
        }
        done += some;
    }
    given_ += static_cast<std::int64_t>(done);
    return static_cast<sf_count_t>(done);
}

std::string SoundPipe::fault() const {
    return error_ == 0 ? std::string() : std::strerror(error_);
}

} // namespace tvhost
