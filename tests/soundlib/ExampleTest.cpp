// The example programs as a user runs them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <cairo.h>
#include <sndfile.hh>

#include "soundlib/BiquadRunner.h"
#include "soundlib/ChorusUnitMaker.h"
#include "tests/soundlib/WavBytes.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace {

// `arguments` go through the shell.
ProcessResult runProgram(const std::string& program, const std::string& arguments) {
    return runShell("'" + program + "' " + arguments);
}

struct Samples {
    int sampleRate;
    int channels;
    int format;
    std::vector<short> interleaved;
};

Samples read(const std::string& path) {
    SndfileHandle file(path);
    std::vector<short> samples(static_cast<std::size_t>(file.frames() * file.channels()));
    file.readf(samples.data(), file.frames());
    return {file.samplerate(), file.channels(), file.format(), samples};
}

// Scaled and clipped as a 16-bit file holds it.
short toShort(float sample) {
    return static_cast<short>(
        std::lrint(std::clamp(static_cast<double>(sample) * 32768.0, -32768.0, 32767.0)));
}

float toFloat(short sample) {
    return static_cast<float>(sample) / 32768.0f;
}

std::pair<int, int> pictureSize(const std::string& path) {
    cairo_surface_t* surface = cairo_image_surface_create_from_png(path.c_str());
    const std::pair<int, int> size(cairo_image_surface_get_width(surface),
                                   cairo_image_surface_get_height(surface));
    cairo_surface_destroy(surface);
    return size;
}

class Examples : public testing::Test {
protected:
    std::string quoted(const std::string& name) const { return " '" + folder.file(name) + "'"; }

    void makePhrase() { ASSERT_EQ(0, runProgram(MAKE_PHRASE, quoted("phrase.wav")).status); }

    // Expects one line of complaint that begins with the program's name, and no file left over.
    void expectRefusal(const std::string& program, const std::string& arguments,
                       const std::string& complaint) {
        SCOPED_TRACE(program + arguments);
        const auto before = folderContent();
        const ProcessResult run = runProgram(program, arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(1, std::count(run.err.begin(), run.err.end(), '\n')) << run.err;
        const std::string name = std::filesystem::path(program).filename().string() + ": ";
        EXPECT_EQ(run.err.rfind(name, 0), 0u) << run.err;
        EXPECT_NE(run.err.find(complaint), std::string::npos) << run.err;
        EXPECT_EQ(folderContent(), before);
    }

    std::vector<std::string> folderContent() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.file(""))) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(Examples, PhraseIsFourSecondsOfStereo) {
    makePhrase();
    const Samples phrase = read(folder.file("phrase.wav"));
    EXPECT_EQ(phrase.sampleRate, 44100);
    EXPECT_EQ(phrase.channels, 2);
    EXPECT_EQ(phrase.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    EXPECT_EQ(phrase.interleaved.size(), 4u * 44100u * 2u);
    const short loudest = *std::max_element(phrase.interleaved.begin(), phrase.interleaved.end());
    EXPECT_GT(loudest, 16000);
    EXPECT_LT(loudest, 32767);
}

TEST_F(Examples, ChorusFileIsTheUnitOnThatFile) {
    makePhrase();
    const ProcessResult run =
        runProgram(CHORUS_FILE, quoted("phrase.wav") + quoted("out.wav") +
                                    " --rate 0.25 --depth 0.5 --delay 0.75 --feedback 0.125"
                                    " --wet 0.375 --picture" +
                                    quoted("sweep.png"));
    ASSERT_EQ(run.status, 0) << run.err;
    const Samples input = read(folder.file("phrase.wav"));
    const Samples output = read(folder.file("out.wav"));
    ASSERT_EQ(output.interleaved.size(), input.interleaved.size());

    const std::unique_ptr<ChorusUnit, decltype(&destroyChorusUnit)> unit(makeChorusUnit(),
                                                                         destroyChorusUnit);
    unit->setRate(0.25f);
    unit->setDepth(0.5f);
    unit->setDelay(0.75f);
    unit->setFeedback(0.125f);
    unit->setWet(0.375f);
    for (std::size_t i = 0; i < input.interleaved.size(); i += 2) {
        float left = toFloat(input.interleaved[i]);
        float right = toFloat(input.interleaved[i + 1]);
        float* channels[] = {&left, &right};
        process(unit.get(), channels, channels, 1);
        ASSERT_NEAR(output.interleaved[i], toShort(left), 1) << i;
        ASSERT_NEAR(output.interleaved[i + 1], toShort(right), 1) << i;
    }
    EXPECT_EQ(pictureSize(folder.file("sweep.png")), std::make_pair(1520, 720));
}

TEST_F(Examples, FilterFileIsTheFilterOnThatFile) {
    makePhrase();
    const std::pair<const char*, int> types[] = {
        {"low-pass", 0}, {"high-pass", 1}, {"band-pass", 2}, {"notch", 3},
        {"peak", 4},     {"low-shelf", 5}, {"high-shelf", 6}};
    const Samples input = read(folder.file("phrase.wav"));
    for (const auto& [name, type] : types) {
        SCOPED_TRACE(name);
        const ProcessResult run =
            runProgram(FILTER_FILE, quoted("phrase.wav") + quoted("out.wav") + " --type " + name +
                                        " --frequency 882 --q 1.5 --gain -6 --picture" +
                                        quoted("response.png"));
        ASSERT_EQ(run.status, 0) << run.err;
        const Samples output = read(folder.file("out.wav"));
        ASSERT_EQ(output.interleaved.size(), input.interleaved.size());
        BiquadDesigner filters[] = {{type, 0.02, 1.5, -6.0}, {type, 0.02, 1.5, -6.0}};
        for (std::size_t i = 0; i < input.interleaved.size(); ++i) {
            const double sample =
                tickBiquad(&filters[i % 2], static_cast<double>(toFloat(input.interleaved[i])));
            ASSERT_NEAR(output.interleaved[i], toShort(static_cast<float>(sample)), 1) << i;
        }
        EXPECT_EQ(pictureSize(folder.file("response.png")), std::make_pair(1280, 800));
    }
}

TEST_F(Examples, FilterFileTakesALowSampleRate) {
    {
        SndfileHandle file(folder.file("low.wav"), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1,
                           8000);
    }
    const ProcessResult run =
        runProgram(FILTER_FILE, quoted("low.wav") + quoted("out.wav") + " --frequency 3999" +
                                    " --picture" + quoted("response.png"));
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(read(folder.file("out.wav")).sampleRate, 8000);
}

TEST_F(Examples, DrawFiltersDraws) {
    const ProcessResult run = runProgram(DRAW_FILTERS, quoted("filters.png"));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(pictureSize(folder.file("filters.png")), std::make_pair(2440, 1000));
}

TEST_F(Examples, StreamFileIsIdenticalToLibsndfile) {
    makePhrase();
    for (const char* option : {"", " --background"}) {
        const ProcessResult run = runProgram(STREAM_FILE, quoted("phrase.wav") + option +
                                                              " --picture" + quoted("buffers.png"));
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, "176400 frames through 11 pieces, identical to libsndfile\n");
        EXPECT_EQ(pictureSize(folder.file("buffers.png")), std::make_pair(1520, 840));
    }
}

TEST_F(Examples, StreamFileTakesAnEmptyFile) {
    {
        SndfileHandle file(folder.file("a.wav"), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1,
                           8000);
    }
    const ProcessResult run =
        runProgram(STREAM_FILE, quoted("a.wav") + " --picture" + quoted("buffers.png"));
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("0 frames", 0), 0u) << run.out;
}

TEST_F(Examples, StreamFileShowsTheAlertOnRequest) {
    const std::string path = folder.write("a.wav", "something else");
    const ProcessResult run = runProgram(STREAM_FILE, "'" + path + "' --alert");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err.rfind("File is not a 16-bit Wav file: " + path + "\n", 0), 0u) << run.err;
    EXPECT_EQ(runProgram(STREAM_FILE, "'" + path + "x' --alert").err.find("File is not"),
              std::string::npos); // a missing file is no file of another kind
}

TEST_F(Examples, SmootherFrequencyTellsWhatTheMakerChose) {
    const ProcessResult run = runProgram(SMOOTHER_FREQUENCY, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\n       10              139.8"), std::string::npos) << run.out;
    EXPECT_EQ(12, std::count(run.out.begin(), run.out.end(), '\n'));
}

TEST_F(Examples, HelpIsNoError) {
    for (const char* program : {CHORUS_FILE, DRAW_FILTERS, FILTER_FILE, MAKE_PHRASE, STREAM_FILE}) {
        const ProcessResult run = runProgram(program, "--help");
        EXPECT_EQ(run.status, 0);
        EXPECT_NE(run.out.find("Usage:"), std::string::npos);
        EXPECT_EQ(run.err, "");
    }
}

TEST_F(Examples, WrongCommandLinesAreRefused) {
    makePhrase();
    const std::string files = quoted("phrase.wav") + quoted("out.wav");
    for (const char* program : {CHORUS_FILE, DRAW_FILTERS, FILTER_FILE, MAKE_PHRASE, STREAM_FILE}) {
        expectRefusal(program, "", "required");
        expectRefusal(program, files + " --nonsense", "--nonsense");
    }
    for (const char* control : {"--rate", "--depth", "--delay", "--feedback", "--wet"}) {
        expectRefusal(CHORUS_FILE, files + " " + control + " 1.5", control);
        expectRefusal(CHORUS_FILE, files + " " + control + " loud", control);
    }
    expectRefusal(FILTER_FILE, files + " --type comb", "--type");
    expectRefusal(FILTER_FILE, files + " --frequency 0", "--frequency");
    expectRefusal(FILTER_FILE, files + " --frequency 22050", "22050 Hz");
    expectRefusal(FILTER_FILE, files + " --q 0", "--q");
    expectRefusal(FILTER_FILE, files + " --gain 90", "--gain");
    for (const char* value : {"0", "-1", "nan", "inf", "1e999", "much"}) {
        expectRefusal(FILTER_FILE, files + " --q " + value, "--q: must be a number above 0");
        expectRefusal(FILTER_FILE, files + " --frequency " + value,
                      "--frequency: must be a number above 0");
    }
    expectRefusal(FILTER_FILE, files + " --frequency 1e300", "--frequency 1e+300");
}

TEST_F(Examples, UnreadableInputIsRefused) {
    folder.write("text.wav", "something else");
    folder.write("24.wav", wavOf(chunk("fmt ",
                                       [] {
                                           FormatBytes format;
                                           format.bits = 24;
                                           format.blockAlign = 6;
                                           return format.bytes();
                                       }()) +
                                 chunk("data", std::string(600, 'x'))));
    folder.write("3.wav", wavOf(chunk("fmt ",
                                      [] {
                                          FormatBytes format;
                                          format.channels = 3;
                                          format.blockAlign = 6;
                                          return format.bytes();
                                      }()) +
                                chunk("data", std::string(600, 'x'))));
    for (const char* program : {CHORUS_FILE, FILTER_FILE}) {
        expectRefusal(program, quoted("missing.wav") + quoted("out.wav"), "missing.wav");
        expectRefusal(program, quoted("text.wav") + quoted("out.wav"), "text.wav");
        expectRefusal(program, quoted("3.wav") + quoted("out.wav"), "3 channels");
    }
    expectRefusal(STREAM_FILE, quoted("missing.wav"), "can't be read");
    expectRefusal(STREAM_FILE, quoted("text.wav"), "RIFF WAVE");
    expectRefusal(STREAM_FILE, quoted("24.wav"), "16 bits");
    expectRefusal(STREAM_FILE, quoted("3.wav"), "3 channels");
}

TEST_F(Examples, UnwritableOutputIsRefused) {
    makePhrase();
    const std::string nowhere = quoted("no such folder/out");
    expectRefusal(MAKE_PHRASE, nowhere, "no such folder");
    expectRefusal(DRAW_FILTERS, nowhere, "no such folder");
    expectRefusal(CHORUS_FILE, quoted("phrase.wav") + nowhere, "no such folder");
    expectRefusal(FILTER_FILE, quoted("phrase.wav") + nowhere, "no such folder");
}

TEST_F(Examples, OutputThatCantBePutInPlaceLeavesNothing) {
    std::filesystem::create_directory(folder.file("taken.wav")); // a folder of that name
    expectRefusal(MAKE_PHRASE, quoted("taken.wav"), "taken.wav");
}
