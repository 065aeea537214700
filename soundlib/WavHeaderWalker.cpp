#include "soundlib/WavHeaderWalker.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <limits>
#include <optional>

#include <sys/stat.h>

namespace {

constexpr std::int64_t kRiffHeaderSize = 12;
constexpr std::int64_t kChunkHeaderSize = 8;
constexpr std::uint32_t kPlainFormatSize = 16;
constexpr std::uint32_t kExtensibleFormatSize = 40;
constexpr std::uint16_t kPcmTag = 1;
constexpr std::uint16_t kExtensibleTag = 0xfffe;

// The sub-format of extensible PCM, as it stands in the file.
constexpr std::array<unsigned char, 16> kPcmSubFormat = {
    0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80, 0x00, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71};

std::uint16_t read16(const unsigned char* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t read32(const unsigned char* bytes) {
    return read16(bytes) | static_cast<std::uint32_t>(read16(bytes + 2)) << 16;
}

bool readAt(std::istream& file, std::int64_t position, unsigned char* bytes, std::int64_t count) {
    file.clear();
    file.seekg(position);
    file.read(reinterpret_cast<char*>(bytes), count);
    return file.gcount() == count;
}

bool hasId(const unsigned char* bytes, const char* id) {
    return std::memcmp(bytes, id, 4) == 0;
}

// Checks the `size` bytes of a format chunk at `body`. `format.frames` stays.
WavHeaderError readFormat(std::istream& file, std::int64_t body, std::uint32_t size,
                          WavFormat& format) {
    std::array<unsigned char, kExtensibleFormatSize> bytes;
    const std::uint32_t used = std::min(size, kExtensibleFormatSize);
    if (used < kPlainFormatSize || !readAt(file, body, bytes.data(), used)) {
        return WavHeaderError::kBrokenFormatChunk;
    }
    const std::uint16_t tag = read16(&bytes[0]);
    const std::uint16_t channels = read16(&bytes[2]);
    const std::uint32_t sampleRate = read32(&bytes[4]);
    const std::uint16_t blockAlign = read16(&bytes[12]);
    const std::uint16_t bits = read16(&bytes[14]);

    if (tag == kExtensibleTag) {
        if (used < kExtensibleFormatSize) {
            return WavHeaderError::kBrokenFormatChunk;
        }
        if (!std::equal(kPcmSubFormat.begin(), kPcmSubFormat.end(), &bytes[24])) {
            return WavHeaderError::kNotPcm;
        }
    } else if (tag != kPcmTag) {
        return WavHeaderError::kNotPcm;
    }
    if (bits != 16) {
        return WavHeaderError::kNot16Bit;
    }
    if (channels == 0 || blockAlign != channels * 2 || sampleRate == 0 ||
        sampleRate > std::numeric_limits<std::int32_t>::max()) {
        return WavHeaderError::kBrokenFormatChunk;
    }
    format.channels = channels;
    format.sampleRate = static_cast<std::int32_t>(sampleRate);
    return WavHeaderError::kNone;
}

} // namespace

WavHeaderError walkWavHeader(std::istream& file, WavFileInfo& info, WavFormat& format) {
    std::array<unsigned char, kRiffHeaderSize> riff;
    if (!readAt(file, 0, riff.data(), kRiffHeaderSize)) {
        return file.bad() ? WavHeaderError::kCannotRead : WavHeaderError::kNotWave;
    }
    if (!hasId(&riff[0], "RIFF") || !hasId(&riff[8], "WAVE")) {
        return WavHeaderError::kNotWave;
    }
    const std::int64_t riffEnd = kChunkHeaderSize + static_cast<std::int64_t>(read32(&riff[4]));
    file.seekg(0, std::ios::end);
    const std::int64_t fileSize = file.tellg();

    std::optional<WavFormat> foundFormat;
    std::int64_t dataBody = 0;
    std::int64_t dataSize = 0;
    std::int64_t position = kRiffHeaderSize;
    while (!foundFormat || dataBody == 0) {
        std::array<unsigned char, kChunkHeaderSize> header;
        if (position + kChunkHeaderSize > fileSize ||
            !readAt(file, position, header.data(), kChunkHeaderSize)) {
            return foundFormat ? WavHeaderError::kNoDataChunk : WavHeaderError::kNoFormatChunk;
        }
        const std::int64_t body = position + kChunkHeaderSize;
        const std::uint32_t size = read32(&header[4]);
        if (hasId(header.data(), "fmt ") && !foundFormat) {
            WavFormat read{};
            const WavHeaderError error = readFormat(file, body, size, read);
            if (error != WavHeaderError::kNone) {
                return error;
            }
            foundFormat = read;
        } else if (hasId(header.data(), "data") && dataBody == 0) {
            if (body > std::numeric_limits<std::int32_t>::max()) {
                return WavHeaderError::kDataTooFar;
            }
            const bool leftOpen = size == 0 && riffEnd <= body;
            dataBody = body;
            dataSize = leftOpen ? fileSize - body : std::min<std::int64_t>(size, fileSize - body);
        }
        position = body + size + (size & 1); // chunks begin at even positions
    }

    foundFormat->frames = dataSize / 2 / foundFormat->channels;
    format = *foundFormat;
    info.dataOffset = static_cast<std::int32_t>(dataBody);
    return WavHeaderError::kNone;
}

WavHeaderError walkWavHeader(const std::string& path, WavFileInfo& info, WavFormat& format) {
    // Opening a pipe waits for who writes to it, and a folder opens like a file.
    struct stat status;
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return WavHeaderError::kCannotRead;
    }
    std::ifstream file(path, std::ios::in | std::ios::binary);
    if (!file) {
        return WavHeaderError::kCannotRead;
    }
    const WavHeaderError error = walkWavHeader(file, info, format);
    if (error == WavHeaderError::kNone) {
        info.path = path;
    }
    return error;
}

const char* describe(WavHeaderError error) {
    switch (error) {
    case WavHeaderError::kNone:
        return "a 16-bit PCM WAV file";
    case WavHeaderError::kCannotRead:
        return "can't be read; a readable 16-bit PCM WAV file is needed";
    case WavHeaderError::kNotWave:
        return "has no RIFF WAVE header; a 16-bit PCM WAV file is needed";
    case WavHeaderError::kNoFormatChunk:
        return "ends before a format chunk; a complete 16-bit PCM WAV file is needed";
    case WavHeaderError::kBrokenFormatChunk:
        return "has a broken format chunk; a 16-bit PCM WAV file is needed";
    case WavHeaderError::kNotPcm:
        return "holds compressed or floating-point samples; 16-bit PCM is needed";
    case WavHeaderError::kNot16Bit:
        return "holds PCM samples of another size; 16 bits are needed";
    case WavHeaderError::kNoDataChunk:
        return "ends before a data chunk; a complete 16-bit PCM WAV file is needed";
    case WavHeaderError::kDataTooFar:
        return "has its samples beyond 2 GiB; they must begin within the first 2 GiB";
    }
    return "";
}

bool isNotWavAlertDue(WavHeaderError error) {
    return error != WavHeaderError::kNone && error != WavHeaderError::kCannotRead;
}
