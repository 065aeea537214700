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
    : path_(path), fixedPoint_(format.fixedPoint), output_(path_), sink_(output_.descriptor()) {
    info_.channels = channels;
    info_.samplerate = sampleRate;
    info_.format = format.code;
    file_ = sink_.open(info_);
    if (sink_.failed()) {
        sf_close(file_);
        refuse(sink_.reason());
    }
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

void SoundFileWriter::refuse(const std::string& reason) const {
    throw UserError(path_ + " cannot be written: " + reason +
                    "; give a file in a folder with room for it");
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
    const bool taken = sf_writef_float(file_, interleaved, frames) == frames;
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
    output_.commit();
}

} // namespace tvhost
