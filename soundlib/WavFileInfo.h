// What a parser of a WAV file hands to whoever reads its samples.
#pragma once

#include <cstdint>
#include <string>

struct WavFileInfo {
    std::string path;
    std::int32_t dataOffset; // byte position of the first sample in the file
};
