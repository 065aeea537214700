// Feeds the header walker whatever the fuzzer thinks of, and checks what it claims.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "soundlib/WavHeaderWalker.h"

namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "the walker broke its word: %s\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream file(std::string(reinterpret_cast<const char*>(data), size));
    WavFileInfo info{"untouched", -7};
    WavFormat format{-7, -7, -7};
    const WavHeaderError error = walkWavHeader(file, info, format);
    require(info.path == "untouched", "the path stays");
    require(describe(error)[0] != '\0', "every error has a sentence");
    if (error != WavHeaderError::kNone) {
        require(info.dataOffset == -7 && format.channels == -7 && format.sampleRate == -7 &&
                    format.frames == -7,
                "an error changes nothing");
        return 0;
    }
    require(format.channels >= 1 && format.channels <= 32767, "channels");
    require(format.sampleRate >= 1, "sample rate");
    require(info.dataOffset >= 20 && static_cast<std::size_t>(info.dataOffset) <= size,
            "samples begin within the file");
    require(format.frames >= 0 && format.frames * format.channels * 2 <=
                                      static_cast<std::int64_t>(size) - info.dataOffset,
            "samples end within the file");
    return 0;
}
