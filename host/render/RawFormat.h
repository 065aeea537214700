// Samples without a header, as they go through a pipe.
#pragma once

#include <optional>
#include <string>

namespace tvhost {

// Interleaved samples of one kind. Nothing in the stream tells which, so its user has to.
struct RawFormat {
    int code = 0;                  // libsndfile's
    std::string name;              // such as "s16le"
    std::optional<int> sampleRate; // Hz
    std::optional<int> channels;

    // `text` is KIND, or KIND,RATE,CHANNELS such as "f32le,44100,2"; kinds are named as in
    // kinds(). Throws UserError for anything else.
    static RawFormat from(const std::string& text);

    // The kinds known, as in "u8, s16le": unsigned, signed or floating point, bits, byte order.
    static std::string kinds();
};

} // namespace tvhost
