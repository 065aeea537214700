#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sndfile.h>

#include <string>
#include <vector>

using testing::AllOf;
using testing::HasSubstr;

namespace {

class DamagedInput : public testing::Test {
protected:
    // The bytes of a second of noise in a format of libsndfile's.
    std::string bytesOf(int format) {
        SoundFile sound = noise(2, 48000, 48000, 0.5f, 1);
        sound.format = format;
        writeSound(folder.file("whole"), sound);
        return readFile(folder.file("whole"));
    }

    ProcessResult render(const std::string& bytes, const std::vector<std::string>& more = {}) {
        writeFile(folder.file("in"), bytes);
        writeFile(folder.file("out.wav"), "older");
        std::vector<std::string> arguments = {
            "render",   folder.file("in"),  folder.file("out.wav"),
            "--plugin", testPlugin("Gain"), "--tail",
            "0"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTvhost(arguments);
    }

    // That it is refused with these words, and rendered with a warning that has them when asked.
    void expectDamage(const std::string& bytes, const std::string& words) {
        const ProcessResult result = render(bytes);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, AllOf(HasSubstr("is damaged: "), HasSubstr(words),
                                      HasSubstr("give an intact file, or --force")));
        EXPECT_EQ(result.errorLines().size(), 1u) << result.err;
        EXPECT_EQ(readFile(folder.file("out.wav")), "older");

        const ProcessResult forced = render(bytes, {"--force"});
        EXPECT_EQ(forced.status, 0);
        EXPECT_THAT(forced.err, AllOf(HasSubstr("tvhost: warning: "), HasSubstr(" is damaged: "),
                                      HasSubstr(words)));
        EXPECT_EQ(forced.errorLines().size(), 1u) << forced.err;
        EXPECT_GT(readSound(folder.file("out.wav")).frames(), 1000u);
    }

    TemporaryFolder folder;
};

std::string half(const std::string& bytes) {
    return bytes.substr(0, bytes.size() / 2);
}

} // namespace

TEST_F(DamagedInput, LacksFramesOfItsMiddle) {
    std::string bytes = bytesOf(SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    bytes[bytes.size() / 2] ^= 0x55;
    bytes[bytes.size() / 2 + 7] ^= 0x55;
    expectDamage(bytes, "of 48000 frames are missing (");
}

// The decoder loses its way and doesn't find back.
TEST_F(DamagedInput, IsNoMp3InItsMiddle) {
    std::string bytes = bytesOf(SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III);
    bytes.replace(bytes.size() / 2, 3000, 3000, '\0');
    expectDamage(bytes, "of 48000 frames are missing (");
}

TEST_F(DamagedInput, PromisesMoreThanItHolds) {
    for (const int container : {SF_FORMAT_WAV, SF_FORMAT_AIFF, SF_FORMAT_AU}) {
        const std::string bytes = bytesOf(container | SF_FORMAT_FLOAT);
        expectDamage(half(bytes), "its header promises 3840");
    }
    for (const int container : {SF_FORMAT_W64, SF_FORMAT_RF64}) {
        const std::string bytes = bytesOf(container | SF_FORMAT_FLOAT);
        expectDamage(half(bytes), "its header promises ");
    }
}

TEST_F(DamagedInput, EndsInTheMiddle) {
    expectDamage(half(bytesOf(SF_FORMAT_FLAC | SF_FORMAT_PCM_16)), "of 48000 frames are missing (");
    expectDamage(half(bytesOf(SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III)),
                 "of 48000 frames are missing (");
    expectDamage(half(bytesOf(SF_FORMAT_OGG | SF_FORMAT_VORBIS)), "its end is missing after 0.");
    expectDamage(half(bytesOf(SF_FORMAT_OGG | SF_FORMAT_OPUS)), "its end is missing after 0.");
}

// Programs that write into a pipe cannot know the length when they write the header.
TEST_F(DamagedInput, IsNoneWhereTheLengthWasLeftOpen) {
    std::string bytes = bytesOf(SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    const std::size_t data = bytes.find("data");
    bytes.replace(data + 4, 4, 4, '\xFF');
    const ProcessResult result = render(bytes);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(readSound(folder.file("out.wav")).frames(), 48000u);
}

TEST_F(DamagedInput, IsNoneInAnIntactFile) {
    for (const int format :
         {SF_FORMAT_WAV | SF_FORMAT_PCM_24, SF_FORMAT_AIFF | SF_FORMAT_PCM_16,
          SF_FORMAT_CAF | SF_FORMAT_FLOAT, SF_FORMAT_W64 | SF_FORMAT_FLOAT,
          SF_FORMAT_RF64 | SF_FORMAT_FLOAT, SF_FORMAT_AU | SF_FORMAT_FLOAT,
          SF_FORMAT_FLAC | SF_FORMAT_PCM_24, SF_FORMAT_OGG | SF_FORMAT_VORBIS,
          SF_FORMAT_OGG | SF_FORMAT_OPUS, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}) {
        const ProcessResult result = render(bytesOf(format));
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
    }
}
