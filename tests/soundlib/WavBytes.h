// The bytes of WAV files, right and wrong ones.
#pragma once

#include <cstdint>
#include <string>

inline std::string little16(std::uint32_t value) {
    return {static_cast<char>(value), static_cast<char>(value >> 8)};
}

inline std::string little32(std::uint32_t value) {
    return little16(value & 0xffff) + little16(value >> 16);
}

// A chunk that tells its true size, with its pad byte.
inline std::string chunk(const std::string& id, const std::string& body) {
    return id + little32(static_cast<std::uint32_t>(body.size())) + body +
           (body.size() % 2 == 1 ? std::string(1, '\0') : std::string());
}

// A chunk that claims `size` whatever it holds.
inline std::string chunkClaiming(const std::string& id, std::uint32_t size,
                                 const std::string& body) {
    return id + little32(size) + body;
}

struct FormatBytes {
    std::uint32_t tag = 1;
    std::uint32_t channels = 2;
    std::uint32_t sampleRate = 44100;
    std::uint32_t blockAlign = 4;
    std::uint32_t bits = 16;

    std::string bytes() const {
        return little16(tag) + little16(channels) + little32(sampleRate) +
               little32(sampleRate * blockAlign) + little16(blockAlign) + little16(bits);
    }

    // The body of an extensible format whose sub-format begins with `subTag`.
    std::string extensible(std::uint32_t subTag) const {
        FormatBytes outer = *this;
        outer.tag = 0xfffe;
        return outer.bytes() + little16(22) + little16(bits) + little32(3) + little32(subTag) +
               std::string("\x00\x00\x10\x00\x80\x00\x00\xaa\x00\x38\x9b\x71", 12);
    }
};

// RIFF header with the true size and these chunks.
inline std::string wavOf(const std::string& chunks) {
    return "RIFF" + little32(static_cast<std::uint32_t>(chunks.size() + 4)) + "WAVE" + chunks;
}

inline std::string wavClaiming(std::uint32_t riffSize, const std::string& chunks) {
    return "RIFF" + little32(riffSize) + "WAVE" + chunks;
}
