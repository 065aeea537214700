#include "host/render/WaveHeader.h"

#include <sndfile.h>

#include <array>

namespace tvhost {

namespace {

constexpr std::size_t kLongestHeader = std::size_t{1} << 20;
constexpr int kIntegers = 1;
constexpr int kFloats = 3;
constexpr int kALaw = 6;
constexpr int kMuLaw = 7;
constexpr int kExtensible = 0xFFFE; // the true number stands further behind
constexpr std::size_t kTrueNumberAt = 24;
// What sox writes and reads for an unknown length. Other readers take it for a number, the same
// ones complain about any other.
constexpr std::uint32_t kUnknown = 0x7FFFF000u;
constexpr std::int64_t kLargest = 0xFFFFFFFF;

std::uint32_t numberAt(const std::string& bytes, std::size_t place, std::size_t size) {
    std::uint32_t number = 0;
    for (std::size_t i = size; i > 0; --i) {
        number = number << 8 | static_cast<unsigned char>(bytes[place + i - 1]);
    }
    return number;
}

void append(std::string& bytes, std::uint32_t number, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(number >> 8 * i & 0xFFu);
    }
}

// libsndfile's word for samples of this kind, 0 for none.
int codeFor(int kind, int bits) {
    struct Row {
        int kind;
        int bits;
        int code;
    };
    static constexpr std::array<Row, 8> kRows = {{{kIntegers, 8, SF_FORMAT_PCM_U8},
                                                  {kIntegers, 16, SF_FORMAT_PCM_16},
                                                  {kIntegers, 24, SF_FORMAT_PCM_24},
                                                  {kIntegers, 32, SF_FORMAT_PCM_32},
                                                  {kFloats, 32, SF_FORMAT_FLOAT},
                                                  {kFloats, 64, SF_FORMAT_DOUBLE},
                                                  {kALaw, 8, SF_FORMAT_ALAW},
                                                  {kMuLaw, 8, SF_FORMAT_ULAW}}};
    for (const Row& row : kRows) {
        if (row.kind == kind && row.bits == bits) {
            return SF_FORMAT_RAW | SF_ENDIAN_LITTLE | row.code;
        }
    }
    return 0;
}

// Takes in what a "fmt " chunk tells; whether it is of a kind known here.
bool takeFormat(const std::string& chunk, WaveHeader& header) {
    if (chunk.size() < 16) {
        return false;
    }
    int kind = static_cast<int>(numberAt(chunk, 0, 2));
    if (kind == kExtensible && chunk.size() >= kTrueNumberAt + 2) {
        kind = static_cast<int>(numberAt(chunk, kTrueNumberAt, 2));
    }
    const int bits = static_cast<int>(numberAt(chunk, 14, 2));
    header.channels = static_cast<int>(numberAt(chunk, 2, 2));
    header.sampleRate = static_cast<int>(numberAt(chunk, 4, 4));
    header.frameSize = static_cast<int>(numberAt(chunk, 12, 2));
    header.code = codeFor(kind, bits);
    return header.code != 0 && header.channels > 0 && header.sampleRate > 0 &&
           header.frameSize == header.channels * bits / 8;
}

} // namespace

bool leavesLengthOpen(std::int64_t bytes) {
    return (bytes >= 0x7FFF0000 && bytes <= 0x7FFFFFFF) ||
           (bytes >= 0xFFFF0000 && bytes <= 0xFFFFFFFF);
}

std::optional<WaveHeader> WaveHeader::from(SoundPipe& stream) {
    const std::string begin = stream.head(12);
    if (begin.size() < 12 || begin.compare(0, 4, "RIFF") != 0 || begin.compare(8, 4, "WAVE") != 0) {
        return std::nullopt;
    }
    WaveHeader header;
    for (std::size_t at = 12; at + 8 <= kLongestHeader;) {
        const std::string& bytes = stream.head(at + 8);
        if (bytes.size() < at + 8) {
            return std::nullopt;
        }
        const std::string name = bytes.substr(at, 4);
        const std::uint32_t size = numberAt(bytes, at + 4, 4);
        at += 8;
        if (name == "data") {
            header.size = at;
            // Nothing may stand for a length that wasn't known either.
            if (size != 0 && !leavesLengthOpen(size)) {
                header.data = size;
            }
            return header.code != 0 ? std::optional(header) : std::nullopt;
        }
        if (size > kLongestHeader) {
            return std::nullopt;
        }
        // Chunks begin at even places.
        const std::size_t end = at + size + size % 2;
        const std::string& more = stream.head(end);
        if (more.size() < end || (name == "fmt " && !takeFormat(more.substr(at, size), header))) {
            return std::nullopt;
        }
        at = end;
    }
    return std::nullopt;
}

std::string WaveHeader::forFloats(int channels, int sampleRate, std::optional<std::int64_t> data) {
    constexpr std::uint32_t kFormatSize = 18;
    constexpr std::uint32_t kSizeAround = 4 + 8 + kFormatSize + 8 + 4 + 8;
    const auto frameSize = static_cast<std::uint32_t>(channels) * 4;
    const bool known = data && *data <= kLargest - kSizeAround;
    const std::uint32_t bytes = known ? static_cast<std::uint32_t>(*data) : kUnknown;
    std::string header = "RIFF";
    append(header, bytes + kSizeAround, 4);
    header += "WAVEfmt ";
    append(header, kFormatSize, 4);
    append(header, kFloats, 2);
    append(header, static_cast<std::uint32_t>(channels), 2);
    append(header, static_cast<std::uint32_t>(sampleRate), 4);
    append(header, static_cast<std::uint32_t>(sampleRate) * frameSize, 4);
    append(header, frameSize, 2);
    append(header, 32, 2);
    append(header, 0, 2);
    header += "fact";
    append(header, 4, 4);
    append(header, bytes / frameSize, 4);
    header += "data";
    append(header, bytes, 4);
    return header;
}

} // namespace tvhost
