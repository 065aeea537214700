#include "host/render/WaveHeader.h"

#include <gtest/gtest.h>

#include <sndfile.h>

#include <stdexcept>
#include <string>

#include <unistd.h>

using namespace tvhost;

namespace {

// What a pipe with these bytes is taken for.
std::optional<WaveHeader> headerOf(const std::string& bytes) {
    int ends[2];
    if (pipe(ends) != 0 || write(ends[1], bytes.data(), bytes.size()) < 0) {
        throw std::runtime_error("no pipe");
    }
    close(ends[1]);
    SoundPipe stream(ends[0]);
    const auto header = WaveHeader::from(stream);
    close(ends[0]);
    return header;
}

std::string number(std::uint32_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> 8 * i & 0xFFu);
    }
    return bytes;
}

std::string chunk(const std::string& name, const std::string& content) {
    return name + number(static_cast<std::uint32_t>(content.size()), 4) + content +
           std::string(content.size() % 2, '\0');
}

std::string format(int kind, int channels, int bits, int frameSize) {
    return number(static_cast<std::uint32_t>(kind), 2) +
           number(static_cast<std::uint32_t>(channels), 2) + number(48000, 4) + number(0, 4) +
           number(static_cast<std::uint32_t>(frameSize), 2) +
           number(static_cast<std::uint32_t>(bits), 2);
}

const std::string kBegin = "RIFF" + number(0, 4) + "WAVE";

} // namespace

TEST(WaveHeader, ReadsWhatItWrites) {
    const auto header = headerOf(WaveHeader::forFloats(3, 44100, 1200));
    ASSERT_TRUE(header);
    EXPECT_EQ(header->channels, 3);
    EXPECT_EQ(header->sampleRate, 44100);
    EXPECT_EQ(header->code, SF_FORMAT_RAW | SF_FORMAT_FLOAT | SF_ENDIAN_LITTLE);
    EXPECT_EQ(header->frameSize, 12);
    EXPECT_EQ(header->data, 1200);
    EXPECT_EQ(header->size, 58u);
}

TEST(WaveHeader, LeavesTheLengthOpenWhereItIsNotKnownOrTooLarge) {
    for (const std::optional<std::int64_t> data :
         {std::optional<std::int64_t>(), std::optional<std::int64_t>(std::int64_t{1} << 32)}) {
        const auto header = headerOf(WaveHeader::forFloats(2, 44100, data));
        ASSERT_TRUE(header);
        EXPECT_EQ(header->data, std::nullopt);
    }
    EXPECT_EQ(headerOf(WaveHeader::forFloats(2, 44100, 3'000'000'000))->data, 3'000'000'000);
}

TEST(WaveHeader, PassesOverChunksBeforeTheSound) {
    const std::string bytes = kBegin + chunk("LIST", "three") + chunk("fmt ", format(1, 2, 16, 4)) +
                              chunk("bext", std::string(602, 'x')) + "data" + number(8, 4) +
                              "12345678";
    const auto header = headerOf(bytes);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->size, bytes.size() - 8);
    EXPECT_EQ(header->data, 8);
    EXPECT_EQ(header->code, SF_FORMAT_RAW | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE);
}

TEST(WaveHeader, IsNoneWhereTheSoundCannotBeReadAsItComes) {
    const std::string data = "data" + number(8, 4) + "12345678";
    for (const std::string& bytes :
         {std::string(), std::string("RIFF"), "RIFX" + number(0, 4) + "WAVE" + data, kBegin,
          kBegin + data, kBegin + chunk("fmt ", format(1, 2, 16, 4)),
          kBegin + chunk("fmt ", "short") + data,
          kBegin + chunk("fmt ", format(2, 2, 4, 512)) + data, // compressed
          kBegin + chunk("fmt ", format(1, 2, 16, 6)) + data,  // frames of another size
          kBegin + chunk("fmt ", format(1, 0, 16, 0)) + data,  // no channels
          kBegin + chunk("fmt ", format(1, 2, 16, 4)) + "LIST" + number(0xFFFFFFFF, 4)}) {
        EXPECT_FALSE(headerOf(bytes)) << bytes;
    }
}

TEST(WaveHeader, KnowsTheNumbersThatStandForAnUnknownLength) {
    for (const std::int64_t bytes : {0x7FFF0000LL, 0x7FFFF000LL, 0x7FFFFFFFLL, 0xFFFFFFFFLL}) {
        EXPECT_TRUE(leavesLengthOpen(bytes)) << bytes;
    }
    for (const std::int64_t bytes : {0LL, 1000LL, 0x7FFE0000LL, 0x80000000LL, 0x100000000LL}) {
        EXPECT_FALSE(leavesLengthOpen(bytes)) << bytes;
    }
}
