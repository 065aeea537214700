#include "host/presets/Preset.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tvhost {

namespace {

constexpr std::uint32_t fourCharacters(const char (&text)[5]) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(text[i]);
    }
    return value;
}

// The marks of the format; every number in it stands with its highest byte first.
constexpr std::uint32_t kFileMark = fourCharacters("CcnK");
constexpr std::uint32_t kProgramOfParameters = fourCharacters("FxCk");
constexpr std::uint32_t kProgramOfChunk = fourCharacters("FPCh");
constexpr std::uint32_t kBankOfPrograms = fourCharacters("FxBk");
constexpr std::uint32_t kBankOfChunk = fourCharacters("FBCh");

constexpr std::uint32_t kProgramFormat = 1;
// The second is the first that tells the selected program.
constexpr std::uint32_t kBankFormat = 2;

constexpr std::size_t kNameField = Preset::kLongestName + 1;
// What a bank keeps free between its header and its contents; the selected program is the first
// number in it.
constexpr std::size_t kBankReserve = 128;

// Far beyond any effect, so that a damaged number is not taken for a reason to wait for memory.
constexpr std::uint32_t kMostElements = 1u << 20;

class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes), whole_(bytes.size()) {}

    std::string_view bytes(std::size_t count, const char* what) {
        if (rest_.size() < count) {
            throw UserError("is cut short: it ends at byte " + std::to_string(whole_) +
                            ", inside " + what);
        }
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }
    std::uint32_t number(const char* what) {
        std::uint32_t value = 0;
        for (const char c : bytes(4, what)) {
            value = value << 8 | static_cast<unsigned char>(c);
        }
        return value;
    }
    std::uint32_t count(const char* what) {
        const std::uint32_t value = number(what);
        if (value > kMostElements) {
            throw UserError("is damaged: it says that there are " + std::to_string(value) + " " +
                            what);
        }
        return value;
    }
    std::string chunk() {
        const std::uint32_t size = number("the size of its chunk");
        return std::string(bytes(size, "its chunk"));
    }

private:
    std::string_view rest_;
    std::size_t whole_;
};

struct Header {
    std::uint32_t mark;
    std::uint32_t format;
    std::int32_t uniqueId;
    std::int32_t effectVersion;
    std::uint32_t elements;
};

Header readHeader(Reader& reader) {
    if (reader.number("its header") != kFileMark) {
        throw UserError("is not a preset: it does not begin with CcnK");
    }
    // Not every writer fills in the size, and what matters is what is there.
    reader.number("its header");
    Header header{};
    header.mark = reader.number("its header");
    header.format = reader.number("its header");
    header.uniqueId = static_cast<std::int32_t>(reader.number("its header"));
    header.effectVersion = static_cast<std::int32_t>(reader.number("its header"));
    header.elements = reader.count(header.mark == kBankOfPrograms ? "programs" : "parameters");
    return header;
}

PresetProgram readProgram(Reader& reader, const Header& header) {
    PresetProgram program;
    const std::string_view name = reader.bytes(kNameField, "a program's name");
    program.name = name.substr(0, std::min(name.find('\0'), Preset::kLongestName));
    if (header.mark == kProgramOfChunk) {
        program.state = reader.chunk();
        return program;
    }
    std::vector<float> values;
    for (std::uint32_t i = 0; i < header.elements; ++i) {
        const std::uint32_t bits = reader.number("a program's parameters");
        float value = 0.0f;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            throw UserError("is damaged: its parameter " + std::to_string(i) + " of \"" +
                            program.name + "\" is not a finite number");
        }
        values.push_back(value);
    }
    program.state = std::move(values);
    return program;
}

bool isProgram(std::uint32_t mark) {
    return mark == kProgramOfParameters || mark == kProgramOfChunk;
}

class Writer {
public:
    void number(std::uint32_t value) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            bytes_ += static_cast<char>(value >> shift & 0xFFu);
        }
    }
    void number(float value) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        number(bits);
    }
    void padded(std::string_view text, std::size_t size) {
        const std::size_t length = std::min(text.size(), size);
        bytes_ += text.substr(0, length);
        bytes_.append(size - length, '\0');
    }
    void chunk(const std::string& chunk) {
        number(static_cast<std::uint32_t>(chunk.size()));
        bytes_ += chunk;
    }
    // Everything so far, as the contents of a file or of a program in a bank.
    std::string wrapped() const {
        Writer outer;
        outer.number(kFileMark);
        outer.number(static_cast<std::uint32_t>(bytes_.size()));
        return outer.bytes_ + bytes_;
    }
    void append(const std::string& bytes) { bytes_ += bytes; }

private:
    std::string bytes_;
};

std::string programBytes(const Preset& preset, const PresetProgram& program) {
    const auto* const values = std::get_if<std::vector<float>>(&program.state);
    Writer writer;
    writer.number(values ? kProgramOfParameters : kProgramOfChunk);
    writer.number(kProgramFormat);
    writer.number(static_cast<std::uint32_t>(preset.uniqueId));
    writer.number(static_cast<std::uint32_t>(preset.effectVersion));
    writer.number(static_cast<std::uint32_t>(values ? values->size() : 1));
    writer.padded(std::string_view(program.name).substr(0, Preset::kLongestName), kNameField);
    if (!values) {
        writer.chunk(std::get<std::string>(program.state));
        return writer.wrapped();
    }
    for (const float value : *values) {
        writer.number(value);
    }
    return writer.wrapped();
}

} // namespace

Preset presetFromBytes(std::string_view bytes) {
    Reader reader(bytes);
    const Header header = readHeader(reader);
    Preset preset;
    preset.uniqueId = header.uniqueId;
    preset.effectVersion = header.effectVersion;
    if (isProgram(header.mark)) {
        preset.programs.push_back(readProgram(reader, header));
        return preset;
    }
    if (header.mark != kBankOfPrograms && header.mark != kBankOfChunk) {
        throw UserError("is a preset of a kind that is not known: its mark is none of FxCk, FPCh, "
                        "FxBk and FBCh");
    }
    preset.kind = Preset::Kind::kBank;
    Reader reserve(reader.bytes(kBankReserve, "its header"));
    if (header.format >= kBankFormat) {
        preset.currentProgram = static_cast<std::int32_t>(reserve.number("its header"));
    }
    if (header.mark == kBankOfChunk) {
        preset.bankChunkPrograms = static_cast<std::int32_t>(header.elements);
        preset.bankChunk = reader.chunk();
        return preset;
    }
    for (std::uint32_t i = 0; i < header.elements; ++i) {
        const Header inner = readHeader(reader);
        if (!isProgram(inner.mark)) {
            throw UserError("is damaged: what should be its program " + std::to_string(i) +
                            " is none");
        }
        preset.programs.push_back(readProgram(reader, inner));
    }
    return preset;
}

std::string bytesOf(const Preset& preset) {
    if (preset.kind == Preset::Kind::kProgram) {
        return programBytes(preset, preset.programs.at(0));
    }
    Writer writer;
    writer.number(preset.bankChunk ? kBankOfChunk : kBankOfPrograms);
    writer.number(kBankFormat);
    writer.number(static_cast<std::uint32_t>(preset.uniqueId));
    writer.number(static_cast<std::uint32_t>(preset.effectVersion));
    writer.number(preset.bankChunk ? static_cast<std::uint32_t>(preset.bankChunkPrograms)
                                   : static_cast<std::uint32_t>(preset.programs.size()));
    writer.number(static_cast<std::uint32_t>(preset.currentProgram.value_or(0)));
    writer.padded("", kBankReserve - sizeof(std::int32_t));
    if (preset.bankChunk) {
        writer.chunk(*preset.bankChunk);
        return writer.wrapped();
    }
    for (const PresetProgram& program : preset.programs) {
        writer.append(programBytes(preset, program));
    }
    return writer.wrapped();
}

} // namespace tvhost
