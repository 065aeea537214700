// What a sound file's header promises and the file does not hold.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tvhost {

// Bytes of sound.
struct HeaderShortfall {
    std::int64_t promised;
    std::int64_t present;
};

// From what libsndfile has logged as it opened a file. Nothing where the file holds what it should,
// or where its writer left the length open, as programs that write into a pipe do.
std::optional<HeaderShortfall> headerShortfall(const std::string& log);

} // namespace tvhost
