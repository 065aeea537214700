#include "host/render/SoundFileReader.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/StartFolder.h"
#include "host/base/UserError.h"
#include "host/render/HeaderPromise.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestLog = 16384;

} // namespace

SoundFileReader::SoundFileReader(const std::string& file) : path_(file) {
    std::error_code error;
    const fs::file_status status = fs::status(fromStartFolder(path_), error);
    if (!fs::exists(status)) {
        throw UserError("there is no file " + path_ + "; give a sound file to read");
    }
    if (fs::is_directory(status)) {
        throw UserError(path_ + " is a folder; give a sound file to read");
    }
    // Opened here, so that what the system says about it reaches the user.
    descriptor_ = ::open(fromStartFolder(path_).c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) {
        throw UserError(path_ + " cannot be read: " + std::strerror(errno) +
                        "; give a sound file that can be");
    }
    file_ = sf_open_fd(descriptor_, SFM_READ, &info_, SF_FALSE);
    if (!file_) {
        const std::string reason = plainText(sf_strerror(nullptr));
        ::close(descriptor_);
        throw UserError(path_ + " cannot be read as sound (" + reason +
                        "); give WAV, AIFF, FLAC, Ogg or the like");
    }
    std::string fault;
    if (info_.frames <= 0) {
        fault = " holds no sound; give a file of at least one frame";
    }
    if (!fault.empty()) {
        close();
        throw UserError(path_ + fault);
    }
}

SoundFileReader::~SoundFileReader() {
    close();
}

void SoundFileReader::close() {
    sf_close(file_);
    ::close(descriptor_);
}

std::int64_t SoundFileReader::expectedFrames() const {
    return info_.frames == SF_COUNT_MAX ? 0 : info_.frames;
}

int SoundFileReader::read(float* interleaved, int frames) {
    const int count = static_cast<int>(sf_readf_float(file_, interleaved, frames));
    if (count < frames && sf_error(file_) != SF_ERR_NO_ERROR) {
        fault_ = plainText(sf_strerror(file_));
    }
    if (position_ == 0 && count == 0) {
        throw UserError(path_ + " holds no sound; give a file of at least one frame");
    }
    for (int i = 0; i < count * info_.channels; ++i) {
        if (std::isfinite(interleaved[i])) {
            continue;
        }
        const std::int64_t frame = position_ + i / info_.channels;
        throw UserError(path_ + " holds NaN or infinity at " +
                        shortNumber(static_cast<double>(frame) / info_.samplerate, 6) +
                        " s; give a file without either");
    }
    position_ += count;
    return count;
}

std::string SoundFileReader::log() const {
    std::string text(kLongestLog, 0);
    const int length =
        sf_command(file_, SFC_GET_LOG_INFO, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    return text;
}

std::string SoundFileReader::damage() const {
    const auto at = [this](std::int64_t frame) {
        return fixedNumber(static_cast<double>(frame) / info_.samplerate, 3) + " s";
    };
    if (info_.frames == SF_COUNT_MAX) {
        // Formats of a known end, whose end isn't there.
        return "its end is missing after " + at(position_);
    }
    if (position_ < info_.frames) {
        return std::to_string(info_.frames - position_) + " of " + std::to_string(info_.frames) +
               " frames are missing (" + at(info_.frames - position_) + ")";
    }
    if (const auto shortfall = headerShortfall(log())) {
        return "its header promises " + std::to_string(shortfall->promised) + " bytes of sound, " +
               std::to_string(shortfall->present) + " are there";
    }
    return fault_;
}

} // namespace tvhost
