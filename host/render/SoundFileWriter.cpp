#include "host/render/SoundFileWriter.h"

#include "host/base/PlainText.h"
#include "host/base/UserError.h"

#include <algorithm>
#include <cmath>

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

} // namespace

SoundFileWriter::SoundFileWriter(const std::string& path, const SoundFormat& format, int channels,
                                 int sampleRate)
    : path_(path), fixedPoint_(format.fixedPoint), output_(path_) {
    info_.channels = channels;
    info_.samplerate = sampleRate;
    info_.format = format.code;
    file_ = sf_open_fd(output_.descriptor(), SFM_WRITE, &info_, SF_FALSE);
    if (!file_) {
        throw UserError(path_ + " cannot be written as " + format.name + ": " +
                        reason(sf_strerror(nullptr)) + "; give another --rate or format");
    }
    // The peak chunk carries the time of writing, and equal renders are to give equal files.
    sf_command(file_, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    if (!format.fixedPoint && !format.floatingPoint) {
        double quality = kLossyQuality;
        sf_command(file_, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
}

SoundFileWriter::~SoundFileWriter() {
    if (file_) {
        sf_close(file_);
    }
}

void SoundFileWriter::write(const float* interleaved, std::int64_t frames) {
    const std::int64_t samples = frames * info_.channels;
    for (std::int64_t i = 0; i < samples; ++i) {
        largest_ = std::max(largest_, std::abs(interleaved[i]));
    }
    if (fixedPoint_) {
        clipped_.assign(interleaved, interleaved + samples);
        for (float& sample : clipped_) {
            if (std::abs(sample) <= 1.0f) {
                continue;
            }
            sample = std::copysign(1.0f, sample);
            ++clippedCount_;
        }
        interleaved = clipped_.data();
    }
    if (sf_writef_float(file_, interleaved, frames) != frames) {
        throw UserError(path_ + " cannot be written: " + reason(sf_strerror(file_)) +
                        "; give a file in a folder with room for it");
    }
    frameCount_ += frames;
}

void SoundFileWriter::finish() {
    const int error = sf_close(file_);
    file_ = nullptr;
    if (error != 0) {
        throw UserError(path_ + " cannot be written: " + reason(sf_error_number(error)) +
                        "; give a file in a folder with room for it");
    }
    output_.commit();
}

} // namespace tvhost
