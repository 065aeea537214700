#include "host/render/SoundFileReader.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace tvhost {

namespace fs = std::filesystem;

SoundFileReader::SoundFileReader(const std::string& file_) : path(file_) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        throw UserError("there is no file " + path + "; give a sound file to read");
    }
    if (fs::is_directory(status)) {
        throw UserError(path + " is a folder; give a sound file to read");
    }
    // Opened here, so that what the system says about it reaches the user.
    descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw UserError(path + " cannot be read: " + std::strerror(errno) +
                        "; give a sound file that can be");
    }
    file = sf_open_fd(descriptor, SFM_READ, &info, SF_FALSE);
    if (!file) {
        const std::string reason = plainText(sf_strerror(nullptr));
        ::close(descriptor);
        throw UserError(path + " is no sound file that can be read (" + reason +
                        "); give WAV, AIFF, FLAC, Ogg or the like");
    }
    std::string fault;
    if (info.channels > 2) {
        fault = " has " + std::to_string(info.channels) + " channels; give mono or stereo";
    } else if (info.frames <= 0) {
        fault = " holds no sound; give a file of at least one frame";
    }
    if (!fault.empty()) {
        close();
        throw UserError(path + fault);
    }
}

SoundFileReader::~SoundFileReader() {
    close();
}

void SoundFileReader::close() {
    sf_close(file);
    ::close(descriptor);
}

std::int64_t SoundFileReader::expectedFrames() const {
    return info.frames == SF_COUNT_MAX ? 0 : info.frames;
}

int SoundFileReader::read(float* interleaved, int frames) {
    const int count = static_cast<int>(sf_readf_float(file, interleaved, frames));
    if (count < frames && sf_error(file) != SF_ERR_NO_ERROR) {
        throw UserError(path + " is damaged: " + plainText(sf_strerror(file)) +
                        "; give an intact file");
    }
    if (position == 0 && count == 0) {
        throw UserError(path + " holds no sound; give a file of at least one frame");
    }
    for (int i = 0; i < count * info.channels; ++i) {
        if (std::isfinite(interleaved[i])) {
            continue;
        }
        const std::int64_t frame = position + i / info.channels;
        throw UserError(path + " holds a sample that is no finite number at " +
                        shortNumber(static_cast<double>(frame) / info.samplerate, 6) +
                        " s; give a file without");
    }
    position += count;
    return count;
}

} // namespace tvhost
