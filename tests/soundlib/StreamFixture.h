// A reader whose buffers a test owns and can mark, and files for it to read.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "soundlib/WavStreamReader.h"
#include "tests/support/Dice.h"
#include "tests/support/TemporaryFolder.h"

inline constexpr std::size_t kFillBytes = 65536;

struct StreamFixture {
    static constexpr char kMark = 0x55;

    TemporaryFolder folder;
    WavStreamReader reader{};
    WavFileInfo info{};
    std::vector<std::int16_t> first = std::vector<std::int16_t>(kFillBytes / 2);
    std::vector<std::int16_t> second = std::vector<std::int16_t>(kFillBytes / 2);

    StreamFixture() {
        reader.firstBuffer = first.data();
        reader.secondBuffer = second.data();
        pthread_attr_init(&reader.threadAttributes);
        markBuffers();
    }
    ~StreamFixture() { pthread_attr_destroy(&reader.threadAttributes); }
    StreamFixture(const StreamFixture&) = delete;
    StreamFixture& operator=(const StreamFixture&) = delete;

    // Fills both buffers with `mark`, so that what a fill leaves alone shows.
    void markBuffers() {
        std::memset(first.data(), kMark, kFillBytes);
        std::memset(second.data(), kMark, kFillBytes);
    }

    // Makes a file of `count` random bytes and points `info` at `dataOffset` in it.
    std::string writeRandomFile(const std::string& name, std::size_t count,
                                std::int32_t dataOffset) {
        Dice dice(count);
        std::string bytes(count, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(dice.bits());
        }
        info.path = folder.write(name, bytes);
        info.dataOffset = dataOffset;
        return bytes;
    }
};

inline std::string bytesOf(const std::vector<std::int16_t>& buffer) {
    return {reinterpret_cast<const char*>(buffer.data()), buffer.size() * 2};
}

// What a marked buffer holds after a fill from `position` of `bytes` on.
inline std::string filledFrom(const std::string& bytes, std::size_t position) {
    std::string expected(kFillBytes, StreamFixture::kMark);
    if (position < bytes.size()) {
        const std::size_t count = std::min(kFillBytes, bytes.size() - position);
        expected.replace(0, count, bytes, position, count);
    }
    return expected;
}
