// How a sound file is written, by the extension of its name.
#pragma once

#include <cstdint>
#include <string>

namespace tvhost {

// How a sound file is written: floating point where the format has it, so that what goes beyond
// full scale stays as it is.
struct SoundFormat {
    int code;           // libsndfile's
    bool fixedPoint;    // samples beyond full scale are clipped
    bool floatingPoint; // samples are kept exactly
    std::string name;

    // By the extension of `path`, for some `expectedFrames` frames (an estimate). Throws UserError
    // for an extension that stands for no format, or a rate that the format cannot hold.
    static SoundFormat forFile(const std::string& path, int channels, int sampleRate,
                               std::int64_t expectedFrames);

    // Only whether the extension stands for a format; for an early refusal.
    static void requireKnownExtension(const std::string& path);

    // The extensions known, as in ".wav, .flac".
    static std::string knownExtensions();
};

} // namespace tvhost
