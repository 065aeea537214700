#include "host/render/SoundFormat.h"

#include "host/base/UserError.h"

#include <gtest/gtest.h>

#include <sndfile.h>

using namespace tvhost;

TEST(SoundFormat, KeepsFloatingPointWhereTheFormatHasIt) {
    const SoundFormat wav = SoundFormat::forFile("a.wav", 2, 44100, 1000);
    EXPECT_EQ(wav.code, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_TRUE(wav.floatingPoint);
    EXPECT_EQ(wav.fixedBits, 0);
    const SoundFormat flac = SoundFormat::forFile("a.flac", 2, 44100, 1000);
    EXPECT_EQ(flac.fixedBits, 24);
    EXPECT_FALSE(flac.floatingPoint);
    const SoundFormat vorbis = SoundFormat::forFile("a.ogg", 2, 44100, 1000);
    EXPECT_EQ(vorbis.fixedBits, 0);
    EXPECT_FALSE(vorbis.floatingPoint);
}

TEST(SoundFormat, LeavesWavForItsSiblingBeyondFourGigabytes) {
    EXPECT_EQ(SoundFormat::forFile("a.wav", 2, 48000, 500'000'000).code,
              SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(SoundFormat::forFile("a.wav", 2, 48000, 540'000'000).code,
              SF_FORMAT_RF64 | SF_FORMAT_FLOAT);
    EXPECT_EQ(SoundFormat::forFile("a.wav", 1, 48000, 540'000'000).code,
              SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(SoundFormat::forFile("a.w64", 2, 48000, 540'000'000).code,
              SF_FORMAT_W64 | SF_FORMAT_FLOAT);
}

TEST(SoundFormat, LeavesWavForItsSiblingWhereTheLengthIsNotKnown) {
    const SoundFormat format = SoundFormat::forFile("a.wav", 2, 48000, std::nullopt);
    EXPECT_EQ(format.code, SF_FORMAT_RF64 | SF_FORMAT_FLOAT);
    EXPECT_TRUE(format.becomesWav);
    EXPECT_FALSE(SoundFormat::forFile("a.rf64", 2, 48000, std::nullopt).becomesWav);
}

TEST(SoundFormat, RefusesUnknownExtensions) {
    for (const char* path : {"a.xyz", "a", "wav", ".wav/a", "a.wav.", ""}) {
        EXPECT_THROW(SoundFormat::requireKnownExtension(path), UserError) << path;
    }
    for (const char* path : {"a.wav", "A.WAV", "a.b.flac", "/some/folder.d/a.Ogg"}) {
        EXPECT_NO_THROW(SoundFormat::requireKnownExtension(path)) << path;
    }
}
