// tvhost render between other programs.
#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sndfile.h>

#include <cstdint>
#include <filesystem>
#include <fstream>

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class RenderPipe : public testing::Test {
protected:
    RenderPipe() { writeSound(file("in.wav"), input); }

    std::string file(const std::string& name) const { return folder.file(name); }

    // A command of the shell in which TVHOST stands for a render by a plug-in of these tests.
    ProcessResult run(std::string command, const std::string& plugin = "Gain") const {
        Process::Options options;
        options.folder = folder.path().string();
        options.environment = {"HOME=/nonexistent",
                               "LSAN_OPTIONS=suppressions=" TVHOST_LEAK_SUPPRESSIONS
                               ":print_suppressions=0"};
        const std::string word = "TVHOST";
        for (std::size_t at = 0; (at = command.find(word, at)) != std::string::npos;) {
            const std::string call =
                std::string(TVHOST_PROGRAM) + " render --plugin " + testPlugin(plugin);
            command.replace(at, word.size(), call);
            at += call.size();
        }
        return runShell(command, options);
    }

    TemporaryFolder folder;
    const SoundFile input = noise(2, 30000, 44100, 0.5f, 1);
};

std::uint32_t numberAt(const std::string& bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i > 0; --i) {
        number = number << 8 | static_cast<unsigned char>(bytes.at(place + i - 1));
    }
    return number;
}

} // namespace

TEST_F(RenderPipe, GivesWhatAFileWouldHold) {
    ASSERT_EQ(run("TVHOST in.wav out.wav", "Delay").status, 0);
    const ProcessResult result = run("cat in.wav | TVHOST - - | cat > piped.wav", "Delay");
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("standard output: "));
    EXPECT_EQ(result.errorLines().size(), 1u);
    const SoundFile piped = readSound(file("piped.wav"));
    const SoundFile whole = readSound(file("out.wav"));
    EXPECT_EQ(piped.rate, 44100);
    EXPECT_EQ(piped.samples, whole.samples);
    EXPECT_GT(piped.frames(), input.frames());
}

TEST_F(RenderPipe, LeavesTheLengthOpenWhereItCannotGoBack) {
    run("TVHOST --tail 0 in.wav - | cat > piped.wav");
    const std::string bytes = readFile(file("piped.wav"));
    EXPECT_EQ(numberAt(bytes, bytes.find("data") + 4), 0x7FFFF000u);
}

TEST_F(RenderPipe, CompletesTheHeaderOfAnOrdinaryFile) {
    writeFile(file("before"), "four");
    EXPECT_EQ(run("{ printf head; TVHOST --tail 0 in.wav -; } > out.wav").status, 0);
    const std::string bytes = readFile(file("out.wav"));
    ASSERT_EQ(bytes.substr(0, 8), "headRIFF");
    EXPECT_EQ(numberAt(bytes, 8), bytes.size() - 12);
    const std::size_t data = bytes.find("data");
    EXPECT_EQ(numberAt(bytes, data + 4), bytes.size() - data - 8);
    EXPECT_EQ(numberAt(bytes, bytes.find("fact") + 8), 30000u);
    // One that is only added to keeps what it has got.
    EXPECT_EQ(run("printf 0123456789 > more.wav; TVHOST --tail 0 in.wav - >> more.wav").status, 0);
    EXPECT_THAT(readFile(file("more.wav")), StartsWith("0123456789RIFF"));
}

TEST_F(RenderPipe, TakesEveryFormatFromAPipe) {
    for (const int format :
         {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, SF_FORMAT_WAV | SF_FORMAT_PCM_16,
          SF_FORMAT_WAV | SF_FORMAT_PCM_24, SF_FORMAT_WAV | SF_FORMAT_PCM_32,
          SF_FORMAT_WAV | SF_FORMAT_DOUBLE, SF_FORMAT_WAV | SF_FORMAT_ULAW,
          SF_FORMAT_WAV | SF_FORMAT_ALAW, SF_FORMAT_WAVEX | SF_FORMAT_PCM_24,
          SF_FORMAT_WAVEX | SF_FORMAT_FLOAT, SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM,
          SF_FORMAT_AIFF | SF_FORMAT_PCM_24, SF_FORMAT_AU | SF_FORMAT_FLOAT,
          SF_FORMAT_CAF | SF_FORMAT_FLOAT, SF_FORMAT_W64 | SF_FORMAT_FLOAT,
          SF_FORMAT_RF64 | SF_FORMAT_FLOAT, SF_FORMAT_FLAC | SF_FORMAT_PCM_24,
          SF_FORMAT_OGG | SF_FORMAT_VORBIS, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}) {
        SoundFile sound = input;
        sound.format = format;
        writeSound(file("in"), sound);
        const ProcessResult result = run("cat in | TVHOST --tail 0 - out.wav");
        EXPECT_EQ(result.status, 0) << std::hex << format << " " << result.err;
        EXPECT_EQ(result.err, "") << std::hex << format;
        EXPECT_EQ(readSound(file("out.wav")).samples, readSound(file("in")).samples)
            << std::hex << format;
    }
    // What has to be sought was copied, and the copy is gone.
    EXPECT_THAT(folder.entries(), testing::UnorderedElementsAre("in", "in.wav", "out.wav"));
}

TEST_F(RenderPipe, TakesAFileThatIsLedIn) {
    SoundFile sound = input;
    sound.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
    writeSound(file("in.flac"), sound);
    EXPECT_EQ(run("TVHOST --tail 0 - out.wav < in.flac").status, 0);
    EXPECT_EQ(readSound(file("out.wav")).samples, readSound(file("in.flac")).samples);
}

TEST_F(RenderPipe, StandsBetweenProgramsWithoutAWordFromThem) {
    run("sox -D -n -r 44100 -c 2 -b 16 whole.wav synth 1 sine 440 sine 330 gain -3");
    const ProcessResult result =
        run("sox -D whole.wav -t wav - 2> first | TVHOST --tail 0 - - 2> said | "
            "sox -D -t wav - -b 16 out.wav 2> last");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(readFile(file("first")) + readFile(file("last")), "");
    EXPECT_EQ(readSound(file("out.wav")).samples, readSound(file("whole.wav")).samples);
}

// A length that wasn't known, or nearly four gigabytes of it: neither may end up in a header that
// says otherwise.
TEST_F(RenderPipe, WritesAnOrdinaryWavOfAStreamOfUnknownLength) {
    run("cat in.wav | sox -t wav - -t wav - repeat 1 2> said | TVHOST --tail 0 - out.wav");
    const std::string bytes = readFile(file("out.wav"));
    EXPECT_THAT(bytes, StartsWith("RIFF"));
    EXPECT_EQ(numberAt(bytes, 4), bytes.size() - 8);
    EXPECT_EQ(readSound(file("out.wav")).frames(), 60000u);
}

TEST_F(RenderPipe, ReadsToTheEndWhereTheLengthWasLeftOpen) {
    // sox cannot know how long it will be, and leaves the length open.
    const ProcessResult result = run("cat in.wav | sox -t wav - -t wav - repeat 1 2> said | "
                                     "TVHOST --tail 0 - out.wav");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(readSound(file("out.wav")).frames(), 60000u);
}

TEST_F(RenderPipe, PassesRawSamplesThroughAsTheyAre) {
    run("sox -D -n -r 44100 -c 2 -b 16 whole.wav synth 0.2 sine 440 sine 330 gain -1");
    for (const std::string kind : {"u8", "s16le", "s16be", "s24le", "s24be", "s32le", "s32be",
                                   "f32le", "f32be", "f64le", "f64be"}) {
        const int bits = kind == "u8" ? 8 : std::stoi(kind.substr(1, 2));
        const std::string encoding = kind[0] == 'u'   ? "unsigned"
                                     : kind[0] == 's' ? "signed"
                                                      : "float";
        const std::string order = kind.size() > 3 && kind.substr(3) == "be" ? "-B" : "-L";
        const std::string raw =
            "-t raw -e " + encoding + " -b " + std::to_string(bits) + " " + order;
        ASSERT_EQ(run("sox -D whole.wav " + raw + " in.raw").status, 0);
        const ProcessResult result =
            run("cat in.raw | TVHOST --tail 0 --raw " + kind + ",44100,2 - - | cat > out.raw");
        EXPECT_EQ(result.errorLines().size(), 1u) << result.err;
        EXPECT_TRUE(readFile(file("out.raw")) == readFile(file("in.raw"))) << kind;
        EXPECT_GT(readFile(file("out.raw")).size(), 10000u);
    }
}

TEST_F(RenderPipe, TakesTheRateAndChannelsThatRawIsSaidToHave) {
    run("sox in.wav -t raw -e float -b 32 - | TVHOST --tail 0 --raw f32le,8000,1 - out.wav",
        "Mono");
    const SoundFile output = readSound(file("out.wav"));
    EXPECT_EQ(output.rate, 8000);
    EXPECT_EQ(output.channels, 1);
    EXPECT_EQ(output.frames(), 60000u);
}

TEST_F(RenderPipe, CountsWhatRawSamplesCannotHold) {
    SoundFile loud = silence(1, 1000);
    loud.samples[10] = 1.5f;
    loud.samples[20] = -1.5f;
    writeSound(file("loud.wav"), loud);
    const ProcessResult result = run("TVHOST --tail 0 --raw s16le loud.wav - > out.raw", "Mono");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("2 samples beyond full scale clipped in standard output, "
                                      "since s16le cannot hold them"));
    const std::string bytes = readFile(file("out.raw"));
    EXPECT_EQ(bytes.substr(20, 2), "\xFF\x7F");
    EXPECT_EQ(bytes.substr(40, 2), std::string("\x00\x80", 2));
}

TEST_F(RenderPipe, TellsThatItsReaderHasGone) {
    SoundFile sound = silence(2, 300000);
    writeSound(file("long.wav"), sound);
    const ProcessResult result =
        run("{ TVHOST long.wav -; echo $? > status; } | head -c 1000 > begin");
    EXPECT_EQ(readFile(file("status")), "2\n");
    EXPECT_THAT(result.err, StartsWith("tvhost: standard output was left by the program that read "
                                       "it, after "));
    EXPECT_EQ(result.errorLines().size(), 1u);
}

TEST_F(RenderPipe, TellsThatThereWasNoRoom) {
    const ProcessResult result = run("TVHOST in.wav - > /dev/full");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tvhost: standard output cannot be written: No space left on device; "
                          "give one with room for the sound\n");
}

TEST_F(RenderPipe, TellsWhatIsMissing) {
    const auto expect = [&](const std::string& command, const std::string& words) {
        const ProcessResult result = run(command);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
        EXPECT_THAT(result.err, AllOf(HasSubstr("standard input is damaged: "), HasSubstr(words)));
    };
    expect("head -c 100000 in.wav | TVHOST - out.wav", "of 30000 frames are missing");
    expect("head -c 99999 in.wav | TVHOST --raw s16le,44100,2 - out.wav",
           "it ends in the middle of a frame of 4 bytes");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"in.wav"});
}

TEST_F(RenderPipe, RefusesStreamsThatAreClosed) {
    ProcessResult result = run("TVHOST - out.wav <&-");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, StartsWith("tvhost: standard input is closed; "));
    result = run("TVHOST in.wav - >&-");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, StartsWith("tvhost: standard output is closed; "));
}

TEST_F(RenderPipe, SaysWhereItHasNoRoomForACopy) {
    SoundFile sound = input;
    sound.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
    writeSound(file("in.flac"), sound);
    const ProcessResult result = run("ulimit -f 8; cat in.flac | TVHOST - out.wav");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, AllOf(StartsWith("tvhost: standard input cannot be kept in "),
                                  HasSubstr("File too large"), HasSubstr("TMPDIR")));
}

// A sound larger than the memory that there is must fit through.
TEST_F(RenderPipe, NeedsNoMoreMemoryForALongSound) {
    if (*TVDELAY_SANITIZERS != 0) {
        GTEST_SKIP() << "a sanitizer's own memory can't be counted";
    }
    const ProcessResult result = run(
        "sox -D -n -r 44100 -c 2 -b 16 -t wav - synth 1200 sine 440 2> said | { ulimit -v 200000; "
        "TVHOST --tail 0 - -; } | wc -c");
    EXPECT_THAT(result.err, StartsWith("standard output: 1200.000 s"));
    EXPECT_EQ(result.out, std::to_string(1200 * 44100 * 8 + 58) + "\n");
}
