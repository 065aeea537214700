#include "host/render/SoundFileWriter.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/StandardOutput.h"
#include "host/base/UserError.h"
#include "host/render/StandardStreams.h"
#include "host/render/WaveHeader.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tvhost {

namespace {

// Good for music at any rate; the library's own default is below that.
constexpr double kLossyQuality = 0.7;

// The library's word for what went wrong, without its ornaments.
std::string reason(const char* words) {
    std::string text = plainText(words);
    for (const std::string ornament : {"Error : ", "Error: "}) {
        if (text.rfind(ornament, 0) == 0) {
            text.erase(0, ornament.size());
        }
    }
    while (!text.empty() && (text.back() == '.' || text.back() == ' ')) {
        text.pop_back();
    }
    return text;
}

// A file that may be written at any place, not only at its end. Its place now, or -1.
std::int64_t placeIn(int descriptor) {
    struct stat status = {};
    const bool ordinary = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    const int flags = fcntl(descriptor, F_GETFL);
    return ordinary && flags >= 0 && (flags & O_APPEND) == 0 ? lseek(descriptor, 0, SEEK_CUR) : -1;
}

} // namespace

SoundFileWriter::SoundFileWriter(const std::string& path, const SoundFormat& format, int channels,
                                 int sampleRate)
    : name_(outputName(path)), format_(format),
      output_(isStandardStream(path) ? std::nullopt : std::make_optional<OutputFile>(path)),
      descriptor_(output_ ? output_->descriptor() : takeStandardOutput()),
      sink_(descriptor_, output_ ? SoundSink::Kind::kFile : SoundSink::Kind::kStream) {
    info_.channels = channels;
    info_.samplerate = sampleRate;
    info_.format = format_.code;
    if (format_.waveHeader) {
        writeHeader();
    }
    file_ = sink_.open(info_);
    if (sink_.failed()) {
        sf_close(file_);
        refuse(sink_.reason());
    }
    if (!file_) {
        throw UserError(name_ + " cannot be written as " + format_.name + ": " +
                        reason(sf_strerror(nullptr)) + "; give another --rate or format");
    }
    // The peak chunk carries the time of writing, and equal renders are to give equal files.
    sf_command(file_, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    sf_command(file_, SFC_RF64_AUTO_DOWNGRADE, nullptr, format_.becomesWav ? SF_TRUE : SF_FALSE);
    if (format_.fixedBits > 0) {
        // Steps of the format, so that sound which came in steps leaves in the same.
        sf_command(file_, SFC_SET_NORM_DOUBLE, nullptr, SF_FALSE);
    } else if (!format_.floatingPoint) {
        double quality = kLossyQuality;
        sf_command(file_, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
}

SoundFileWriter::~SoundFileWriter() {
    if (file_) {
        sf_close(file_);
    }
}

void SoundFileWriter::refuse(const std::string& reason) const {
    if (!output_ && sink_.readerHasGone()) {
        throw UserError(name_ + " was left by the program that read it, after " +
                        fixedNumber(static_cast<double>(frameCount_) / info_.samplerate, 3) +
                        " s; give one that reads to the end");
    }
    throw UserError(name_ + " cannot be written: " + reason +
                    (output_ ? "; give a file in a folder with room for it"
                             : "; give one with room for the sound"));
}

// Where the header can't be written again it leaves the length open.
void SoundFileWriter::writeHeader() {
    headerPlace_ = placeIn(descriptor_);
    const std::string header =
        WaveHeader::forFloats(info_.channels, info_.samplerate, std::nullopt);
    headerSize_ = static_cast<std::int64_t>(header.size());
    if (sink_.write(header.data(), headerSize_) != headerSize_) {
        refuse(sink_.reason());
    }
}

void SoundFileWriter::completeHeader() {
    if (headerPlace_ < 0) {
        return;
    }
    const std::string header =
        WaveHeader::forFloats(info_.channels, info_.samplerate, sink_.bytesWritten() - headerSize_);
    if (pwrite(descriptor_, header.data(), header.size(), headerPlace_) < 0) {
        refuse(std::strerror(errno));
    }
}

bool SoundFileWriter::writeFixed(const float* interleaved, std::int64_t frames) {
    const double scale = std::ldexp(1.0, format_.fixedBits - 1);
    const std::size_t samples =
        static_cast<std::size_t>(frames) * static_cast<std::size_t>(info_.channels);
    steps_.resize(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        clippedCount_ += std::abs(interleaved[i]) > 1.0f ? 1 : 0;
        steps_[i] = std::clamp(std::rint(interleaved[i] * scale), -scale, scale - 1.0);
    }
    return sf_writef_double(file_, steps_.data(), frames) == frames;
}

void SoundFileWriter::write(const float* interleaved, std::int64_t frames) {
    const std::int64_t samples = frames * info_.channels;
    for (std::int64_t i = 0; i < samples; ++i) {
        largest_ = std::max(largest_, std::abs(interleaved[i]));
    }
    const bool taken = format_.fixedBits > 0
                           ? writeFixed(interleaved, frames)
                           : sf_writef_float(file_, interleaved, frames) == frames;
    if (sink_.failed()) {
        refuse(sink_.reason());
    }
    if (!taken) {
        refuse(reason(sf_strerror(file_)));
    }
    frameCount_ += frames;
}

void SoundFileWriter::finish() {
    const int error = sf_close(file_);
    file_ = nullptr;
    if (sink_.failed()) {
        refuse(sink_.reason());
    }
    if (error != SF_ERR_NO_ERROR) {
        refuse("the encoder failed at the end");
    }
    if (output_) {
        output_->commit();
    } else {
        completeHeader();
    }
}

} // namespace tvhost
