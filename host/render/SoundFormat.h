// How a sound file is written, by the extension of its name.
#pragma once

#include "host/render/RawFormat.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tvhost {

// How a sound file is written: floating point where the format has it, so that what goes beyond
// full scale stays as it is.
struct SoundFormat {
    int code = 0;      // libsndfile's
    int fixedBits = 0; // of a sample of fixed point, whose like beyond full scale are clipped
    bool floatingPoint = false; // samples are kept exactly
    std::string name;
    bool becomesWav = false; // where that turns out to hold it
    // Whether a header stands before it that the library knows nothing of.
    bool waveHeader = false;

    // By the extension of `path`, for some `expectedFrames` frames (an estimate; nothing when not
    // known). Throws UserError for an extension that stands for no format, or a rate that the
    // format cannot hold.
    static SoundFormat forFile(const std::string& path, int channels, int sampleRate,
                               std::optional<std::int64_t> expectedFrames);

    // For standard output: WAV in floating point, or what `raw` says.
    static SoundFormat forStream(const std::optional<RawFormat>& raw);

    // Only whether the extension stands for a format; for an early refusal.
    static void requireKnownExtension(const std::string& path);

    // The extensions known, as in ".wav, .flac".
    static std::string knownExtensions();
};

} // namespace tvhost
