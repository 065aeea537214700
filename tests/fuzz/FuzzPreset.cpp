// Bytes as preset files: what can be read is written back and read again as the same.
#include "host/base/UserError.h"
#include "host/presets/Preset.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

using tvhost::Preset;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Preset preset;
    try {
        preset = tvhost::presetFromBytes({reinterpret_cast<const char*>(data), size});
    } catch (const tvhost::UserError& error) {
        if (std::string_view(error.what()).empty()) {
            std::abort(); // a refusal has a reason
        }
        return 0;
    }
    const std::string written = tvhost::bytesOf(preset);
    const Preset again = tvhost::presetFromBytes(written);
    if (tvhost::bytesOf(again) != written || again.uniqueId != preset.uniqueId ||
        again.programs.size() != preset.programs.size() ||
        again.bankChunk.has_value() != preset.bankChunk.has_value()) {
        std::fprintf(stderr, "a preset of %zu programs came back otherwise\n",
                     preset.programs.size());
        std::abort();
    }
    return 0;
}
