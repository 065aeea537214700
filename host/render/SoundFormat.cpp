#include "host/render/SoundFormat.h"

#include "host/base/PlainText.h"
#include "host/base/UserError.h"

#include <sndfile.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace tvhost {

namespace {

struct Entry {
    const char* extension;
    const char* name;
    int code;
};

constexpr Entry kEntries[] = {
    {".wav", "WAV", SF_FORMAT_WAV | SF_FORMAT_FLOAT},
    {".aiff", "AIFF", SF_FORMAT_AIFF | SF_FORMAT_FLOAT},
    {".aif", "AIFF", SF_FORMAT_AIFF | SF_FORMAT_FLOAT},
    {".flac", "FLAC", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
    {".ogg", "Ogg Vorbis", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
    {".oga", "Ogg Vorbis", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
    {".opus", "Opus", SF_FORMAT_OGG | SF_FORMAT_OPUS},
    {".mp3", "MP3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III},
    {".caf", "CAF", SF_FORMAT_CAF | SF_FORMAT_FLOAT},
    {".w64", "W64", SF_FORMAT_W64 | SF_FORMAT_FLOAT},
    {".rf64", "RF64", SF_FORMAT_RF64 | SF_FORMAT_FLOAT},
    {".au", "AU", SF_FORMAT_AU | SF_FORMAT_FLOAT},
};

// A WAV header counts bytes in 32 bits; beyond that its 64-bit sibling takes over.
constexpr std::int64_t kLargestWav = 4'200'000'000;

int fixedBitsOf(int code) {
    switch (code & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_U8:
        return 8;
    case SF_FORMAT_PCM_16:
        return 16;
    case SF_FORMAT_PCM_24:
        return 24;
    case SF_FORMAT_PCM_32:
        return 32;
    default:
        return 0;
    }
}

bool isFloatingPoint(int code) {
    const int samples = code & SF_FORMAT_SUBMASK;
    return samples == SF_FORMAT_FLOAT || samples == SF_FORMAT_DOUBLE;
}

const Entry& entryFor(const std::string& path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    const auto entry = std::find_if(std::begin(kEntries), std::end(kEntries), [&](const Entry& e) {
        return equalWithoutCase(e.extension, extension);
    });
    if (entry == std::end(kEntries)) {
        throw UserError(path + ": " +
                        (extension.empty() ? "the name has no extension to tell the format"
                                           : "unknown sound format \"" + extension + "\"") +
                        "; use " + SoundFormat::knownExtensions());
    }
    return *entry;
}

} // namespace

std::string SoundFormat::knownExtensions() {
    std::string text;
    for (const Entry& entry : kEntries) {
        text += (text.empty() ? "" : ", ") + std::string(entry.extension);
    }
    return text;
}

void SoundFormat::requireKnownExtension(const std::string& path) {
    entryFor(path);
}

SoundFormat SoundFormat::forStream(const std::optional<RawFormat>& raw) {
    SoundFormat format;
    format.code = raw ? raw->code : SF_FORMAT_RAW | SF_FORMAT_FLOAT | SF_ENDIAN_LITTLE;
    format.name = raw ? raw->name : "WAV";
    format.fixedBits = fixedBitsOf(format.code);
    format.floatingPoint = isFloatingPoint(format.code);
    format.waveHeader = !raw;
    return format;
}

SoundFormat SoundFormat::forFile(const std::string& path, int channels, int sampleRate,
                                 std::optional<std::int64_t> expectedFrames) {
    const Entry& entry = entryFor(path);
    SoundFormat format;
    format.code = entry.code;
    format.name = entry.name;
    const std::int64_t most = kLargestWav / (channels * static_cast<std::int64_t>(sizeof(float)));
    if ((format.code & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAV &&
        expectedFrames.value_or(most + 1) > most) {
        format.code = SF_FORMAT_RF64 | SF_FORMAT_FLOAT;
        format.becomesWav = true;
    }
    format.fixedBits = fixedBitsOf(format.code);
    format.floatingPoint = isFloatingPoint(format.code);

    SF_INFO info{};
    info.channels = channels;
    info.samplerate = sampleRate;
    info.format = format.code;
    if (!sf_format_check(&info)) {
        info.channels = 1;
        if (sf_format_check(&info)) {
            throw UserError(path + ": " + entry.name + " cannot hold " + std::to_string(channels) +
                            " channels; use .wav");
        }
        throw UserError(path + ": " + entry.name + " cannot hold " + std::to_string(sampleRate) +
                        " Hz; give another --rate, such as 48000, or another format");
    }
    return format;
}

} // namespace tvhost
