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

SoundFileWriter::SoundFileWriter(const std::string& path_, const SoundFormat& format, int channels,
                                 int sampleRate)
    : path(path_), fixedPoint(format.fixedPoint), output(path) {
    info.channels = channels;
    info.samplerate = sampleRate;
    info.format = format.code;
    file = sf_open_fd(output.descriptor(), SFM_WRITE, &info, SF_FALSE);
    if (!file) {
        throw UserError(path + " cannot be written as " + format.name + ": " +
                        reason(sf_strerror(nullptr)) + "; give another --rate or format");
    }
    // The peak chunk carries the time of writing, and equal renders are to give equal files.
    sf_command(file, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    if (!format.fixedPoint && !format.floatingPoint) {
        double quality = kLossyQuality;
        sf_command(file, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
}

SoundFileWriter::~SoundFileWriter() {
    if (file) {
        sf_close(file);
    }
}

void SoundFileWriter::write(const float* interleaved, std::int64_t frames) {
    const std::int64_t samples = frames * info.channels;
    for (std::int64_t i = 0; i < samples; ++i) {
        largest = std::max(largest, std::abs(interleaved[i]));
    }
    if (fixedPoint) {
        clipped.assign(interleaved, interleaved + samples);
        for (float& sample : clipped) {
            if (std::abs(sample) <= 1.0f) {
                continue;
            }
            sample = std::copysign(1.0f, sample);
            ++clippedCount;
        }
        interleaved = clipped.data();
    }
    if (sf_writef_float(file, interleaved, frames) != frames) {
        throw UserError(path + " cannot be written: " + reason(sf_strerror(file)) +
                        "; give a file in a folder with room for it");
    }
    frameCount += frames;
}

void SoundFileWriter::finish() {
    const int error = sf_close(file);
    file = nullptr;
    if (error != 0) {
        throw UserError(path + " cannot be written: " + reason(sf_error_number(error)) +
                        "; give a file in a folder with room for it");
    }
    output.commit();
}

} // namespace tvhost
