#include "soundlib/WavHeaderWalker.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <limits>
#include <optional>

#include <sys/stat.h>

namespace {

constexpr std::int64_t riffHeaderSize = 12;
constexpr std::int64_t chunkHeaderSize = 8;
constexpr std::uint32_t plainFormatSize = 16;
constexpr std::uint32_t extensibleFormatSize = 40;
constexpr std::uint16_t pcmTag = 1;
constexpr std::uint16_t extensibleTag = 0xfffe;

// The sub-format of extensible PCM, as it stands in the file.
constexpr std::array<unsigned char, 16> pcmSubFormat = {
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
    std::array<unsigned char, extensibleFormatSize> bytes;
    const std::uint32_t used = std::min(size, extensibleFormatSize);
    if (used < plainFormatSize || !readAt(file, body, bytes.data(), used)) {
        return WavHeaderError::brokenFormatChunk;
    }
    const std::uint16_t tag = read16(&bytes[0]);
    const std::uint16_t channels = read16(&bytes[2]);
    const std::uint32_t sampleRate = read32(&bytes[4]);
    const std::uint16_t blockAlign = read16(&bytes[12]);
    const std::uint16_t bits = read16(&bytes[14]);

    if (tag == extensibleTag) {
        if (used < extensibleFormatSize) {
            return WavHeaderError::brokenFormatChunk;
        }
        if (!std::equal(pcmSubFormat.begin(), pcmSubFormat.end(), &bytes[24])) {
            return WavHeaderError::notPcm;
        }
    } else if (tag != pcmTag) {
        return WavHeaderError::notPcm;
    }
    if (bits != 16) {
        return WavHeaderError::not16Bit;
    }
    if (channels == 0 || blockAlign != channels * 2 || sampleRate == 0 ||
        sampleRate > std::numeric_limits<std::int32_t>::max()) {
        return WavHeaderError::brokenFormatChunk;
    }
    format.channels = channels;
    format.sampleRate = static_cast<std::int32_t>(sampleRate);
    return WavHeaderError::none;
}

} // namespace

WavHeaderError walkWavHeader(std::istream& file, WavFileInfo& info, WavFormat& format) {
    std::array<unsigned char, riffHeaderSize> riff;
    if (!readAt(file, 0, riff.data(), riffHeaderSize)) {
        return file.bad() ? WavHeaderError::cannotRead : WavHeaderError::notWave;
    }
    if (!hasId(&riff[0], "RIFF") || !hasId(&riff[8], "WAVE")) {
        return WavHeaderError::notWave;
    }
    const std::int64_t riffEnd = chunkHeaderSize + static_cast<std::int64_t>(read32(&riff[4]));
    file.seekg(0, std::ios::end);
    const std::int64_t fileSize = file.tellg();

    std::optional<WavFormat> foundFormat;
    std::int64_t dataBody = 0;
    std::int64_t dataSize = 0;
    std::int64_t position = riffHeaderSize;
    while (!foundFormat || dataBody == 0) {
        std::array<unsigned char, chunkHeaderSize> header;
        if (position + chunkHeaderSize > fileSize ||
            !readAt(file, position, header.data(), chunkHeaderSize)) {
            return foundFormat ? WavHeaderError::noDataChunk : WavHeaderError::noFormatChunk;
        }
        const std::int64_t body = position + chunkHeaderSize;
        const std::uint32_t size = read32(&header[4]);
        if (hasId(header.data(), "fmt ") && !foundFormat) {
            WavFormat read{};
            const WavHeaderError error = readFormat(file, body, size, read);
            if (error != WavHeaderError::none) {
                return error;
            }
            foundFormat = read;
        } else if (hasId(header.data(), "data") && dataBody == 0) {
            if (body > std::numeric_limits<std::int32_t>::max()) {
                return WavHeaderError::dataTooFar;
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
    return WavHeaderError::none;
}

WavHeaderError walkWavHeader(const std::string& path, WavFileInfo& info, WavFormat& format) {
    // A folder opens like a file, and whether a read of it fails differs from system to system.
    struct stat status;
    const bool isFolder = stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    std::ifstream file(path, std::ios::in | std::ios::binary);
    if (isFolder || !file) {
        return WavHeaderError::cannotRead;
    }
    const WavHeaderError error = walkWavHeader(file, info, format);
    if (error == WavHeaderError::none) {
        info.path = path;
    }
    return error;
}

const char* describe(WavHeaderError error) {
    switch (error) {
    case WavHeaderError::none:
        return "a 16-bit PCM WAV file";
    case WavHeaderError::cannotRead:
        return "can't be read; a readable 16-bit PCM WAV file is needed";
    case WavHeaderError::notWave:
        return "has no RIFF WAVE header; a 16-bit PCM WAV file is needed";
    case WavHeaderError::noFormatChunk:
        return "ends before a format chunk; a complete 16-bit PCM WAV file is needed";
    case WavHeaderError::brokenFormatChunk:
        return "has a broken format chunk; a 16-bit PCM WAV file is needed";
    case WavHeaderError::notPcm:
        return "holds compressed or floating-point samples; 16-bit PCM is needed";
    case WavHeaderError::not16Bit:
        return "holds PCM samples of another size; 16 bits are needed";
    case WavHeaderError::noDataChunk:
        return "ends before a data chunk; a complete 16-bit PCM WAV file is needed";
    case WavHeaderError::dataTooFar:
        return "has its samples beyond 2 GiB; they must begin within the first 2 GiB";
    }
    return "";
}

bool isNotWavAlertDue(WavHeaderError error) {
    return error != WavHeaderError::none && error != WavHeaderError::cannotRead;
}
