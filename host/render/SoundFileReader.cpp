#include "host/render/SoundFileReader.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/QuietErrors.h"
#include "host/base/StandardInput.h"
#include "host/base/StartFolder.h"
#include "host/base/UserError.h"
#include "host/render/HeaderPromise.h"
#include "host/render/StandardStreams.h"
#include "host/render/WaveHeader.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestLog = 16384;

// A file without a name, to be written and read.
int openUnnamed(const fs::path& folder) {
    const int unnamed = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (unnamed >= 0) {
        return unnamed;
    }
    // Some file systems have none.
    std::string name = (folder / ".tvhost.XXXXXX").string();
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) {
        ::unlink(name.c_str());
    }
    return named;
}

int bytesPerSample(int format) {
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_U8:
        return 1;
    case SF_FORMAT_PCM_16:
        return 2;
    case SF_FORMAT_PCM_24:
        return 3;
    case SF_FORMAT_DOUBLE:
        return 8;
    default:
        return 4;
    }
}

} // namespace

SoundFileReader::SoundFileReader(const std::string& path, const std::optional<RawFormat>& raw)
    : name_(inputName(path)) {
    try {
        if (isStandardStream(path)) {
            openStandardInput(raw);
        } else {
            openFile(path);
        }
        if (info_.frames <= 0) {
            throw UserError(name_ + " holds no sound; give a file of at least one frame");
        }
    } catch (...) {
        close();
        throw;
    }
}

void SoundFileReader::openFile(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(fromStartFolder(path), error);
    if (!fs::exists(status)) {
        throw UserError("there is no file " + name_ + "; give a sound file to read");
    }
    if (fs::is_directory(status)) {
        throw UserError(name_ + " is a folder; give a sound file to read");
    }
    // Opened here, so that what the system says about it reaches the user.
    descriptor_ = ::open(fromStartFolder(path).c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) {
        throw UserError(name_ + " cannot be read: " + std::strerror(errno) +
                        "; give a sound file that can be");
    }
    openDescriptor();
}

void SoundFileReader::openStandardInput(const std::optional<RawFormat>& raw) {
    descriptor_ = takeStandardInput();
    if (raw) {
        info_.format = raw->code;
        info_.samplerate = raw->sampleRate.value_or(0);
        info_.channels = raw->channels.value_or(0);
        frameSize_ = info_.channels * bytesPerSample(info_.format);
        openPipe(pipe_.emplace(descriptor_), 0, std::nullopt);
        return;
    }
    if (lseek(descriptor_, 0, SEEK_CUR) >= 0) {
        openDescriptor();
        return;
    }
    SoundPipe& pipe = pipe_.emplace(descriptor_);
    if (const auto header = WaveHeader::from(pipe)) {
        info_.format = header->code;
        info_.samplerate = header->sampleRate;
        info_.channels = header->channels;
        frameSize_ = header->frameSize;
        openPipe(pipe, header->size, header->data);
        return;
    }
    keepCopyOf(pipe);
    openDescriptor();
}

void SoundFileReader::openDescriptor() {
    const QuietErrors quiet;
    file_ = sf_open_fd(descriptor_, SFM_READ, &info_, SF_FALSE);
    if (!file_) {
        throw UserError(name_ + " cannot be read as sound (" + plainText(sf_strerror(nullptr)) +
                        "); give WAV, AIFF, FLAC, Ogg or the like");
    }
}

void SoundFileReader::openPipe(SoundPipe& pipe, std::size_t headerSize,
                               std::optional<std::int64_t> soundSize) {
    file_ = pipe.open(info_, headerSize, soundSize);
    if (!file_) {
        throw UserError(name_ + " cannot be read as sound (" + plainText(sf_strerror(nullptr)) +
                        "); give another rate, number of channels or kind of samples");
    }
    info_.frames = soundSize ? *soundSize / frameSize_ : SF_COUNT_MAX;
}

// Most formats are read here and there.
void SoundFileReader::keepCopyOf(SoundPipe& pipe) {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    const int copy = error ? -1 : openUnnamed(folder);
    const int fault = copy < 0 ? errno : pipe.copyInto(copy);
    if (error || fault != 0) {
        if (copy >= 0) {
            ::close(copy);
        }
        throw UserError(name_ + " cannot be kept in " + (error ? "TMPDIR" : folder.string()) +
                        ": " + (error ? error.message() : std::strerror(fault)) +
                        "; give WAV, or a TMPDIR with room for it");
    }
    const std::string reading = pipe.fault();
    pipe_.reset();
    ::close(descriptor_);
    descriptor_ = copy;
    lseek(descriptor_, 0, SEEK_SET);
    if (!reading.empty()) {
        throw UserError(name_ + " cannot be read: " + reading + "; give one that can be");
    }
}

SoundFileReader::~SoundFileReader() {
    close();
}

void SoundFileReader::close() {
    if (file_) {
        sf_close(file_);
    }
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

std::int64_t SoundFileReader::expectedFrames() const {
    return info_.frames == SF_COUNT_MAX ? 0 : info_.frames;
}

int SoundFileReader::read(float* interleaved, int frames) {
    std::optional<QuietErrors> quiet;
    if ((info_.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_MPEG) {
        // Its decoder has words of its own about damage, on standard error.
        quiet.emplace();
    }
    const int count = static_cast<int>(sf_readf_float(file_, interleaved, frames));
    quiet.reset();
    if (count < frames && sf_error(file_) != SF_ERR_NO_ERROR) {
        fault_ = plainText(sf_strerror(file_));
    }
    if (position_ == 0 && count == 0) {
        throw UserError(name_ + " holds no sound; give a file of at least one frame");
    }
    for (int i = 0; i < count * info_.channels; ++i) {
        if (std::isfinite(interleaved[i])) {
            continue;
        }
        const std::int64_t frame = position_ + i / info_.channels;
        throw UserError(name_ + " holds NaN or infinity at " +
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
    if (pipe_) {
        if (const std::string fault = pipe_->fault(); !fault.empty()) {
            return "it could not be read beyond " + at(position_) + " (" + fault + ")";
        }
        if (pipe_->bytesGiven() % frameSize_ != 0 && info_.frames == SF_COUNT_MAX) {
            return "it ends in the middle of a frame of " + std::to_string(frameSize_) + " bytes";
        }
    }
    if (info_.frames == SF_COUNT_MAX) {
        // Formats of a known end, whose end isn't there.
        return pipe_ ? std::string() : "its end is missing after " + at(position_);
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
