// Programs and banks as the interface's preset files (.fxp, .fxb) hold them.
#pragma once

#include "host/base/UserError.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tvhost {

// What an effect keeps: its parameters' values in order, or a chunk of bytes that only the effect
// understands.
using PresetState = std::variant<std::vector<float>, std::string>;

struct PresetProgram {
    std::string name; // as stored, at most Preset::kLongestName bytes
    PresetState state;
};

// One program, or a bank.
struct Preset {
    enum class Kind { kProgram, kBank };

    static constexpr std::size_t kLongestName = 27; // bytes

    Kind kind = Kind::kProgram;
    std::int32_t uniqueId = 0;      // of the effect
    std::int32_t effectVersion = 0; // of the effect's record

    // One for kProgram. For a bank all of them, or none when the bank is one chunk.
    std::vector<PresetProgram> programs;

    // Of a bank that is one chunk.
    std::optional<std::string> bankChunk;
    std::int32_t bankChunkPrograms = 0; // how many programs the effect said it has

    // Of a bank that says which program was selected.
    std::optional<std::int32_t> currentProgram;
};

// What the bytes of a preset file hold. Throws UserError that says what is wrong, without the name
// of the file: cut short, of another kind, or with values that are no numbers.
Preset presetFromBytes(std::string_view bytes);

// The bytes of a preset file. Names are cut at kLongestName.
std::string bytesOf(const Preset& preset);

} // namespace tvhost
