// What cannot be used gives one line that says what is wrong and what would be right, status 2, no
// word on standard output and no file; an older file stays as it is.
#include "tests/host/SoundFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Row {
    std::string name;
    std::vector<std::string> arguments; // {x} stands for what replaceWords() knows
    std::string wrong;                  // both must be in the line
    std::string right;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

// Inputs and older outputs that the rows speak of.
class Bench {
public:
    Bench() {
        writeSound(file("in.wav"), noise(2, 4000, 44100, 0.5f, 1));
        writeSound(file("six.wav"), noise(6, 100, 44100, 0.5f, 1));
        writeSound(file("empty.wav"), silence(2, 0));
        writeSound(file("fast.wav"), noise(2, 100, 384000, 0.5f, 1));
        writeSound(file("slow.wav"), noise(2, 100, 500, 0.5f, 1));
        SoundFile nan = silence(2, 100);
        nan.at(50, 1) = std::numeric_limits<float>::quiet_NaN();
        writeSound(file("nan.wav"), nan);
        writeFile(file("text.wav"), "This is no sound file at all, although it is called one.");
        writeFile(file("zero.wav"), "");
        // Of another plug-in, with no parameters.
        writeFile(file("other.fxp"), std::string("CcnK\0\0\0\x30"
                                                 "FxCk\0\0\0\1"
                                                 "Abcd\0\0\0\1\0\0\0\0",
                                                 28) +
                                         std::string(28, '\0'));
        writeFile(file("text.so"), "no shared object");
        fs::create_directory(folder_.path() / "folder.wav");
        fs::create_directory(folder_.path() / "bundle.vst");
        for (const char* older : {"old.wav", "old.flac", "old.opus", "old.png", "old.svg", "old"}) {
            writeFile(file(older), "older");
        }
    }

    std::string file(const std::string& name) const { return folder_.file(name); }

    std::string replaceWords(std::string text) const {
        const auto replace = [&](const std::string& word, const std::string& by) {
            for (std::size_t at; (at = text.find(word)) != std::string::npos;) {
                text.replace(at, word.size(), by);
            }
        };
        replace("{dir}", folder_.path().string());
        for (const char* plugin :
             {"Gain", "Delay", "Null", "NoEntry", "WrongMagic", "Surround", "Accumulating",
              "Instrument", "NotANumber", "Mono", "Rude", "Painter"}) {
            replace(std::string("{") + plugin + "}", testPlugin(plugin));
        }
        return text;
    }

    std::vector<std::pair<std::string, std::string>> contents() const {
        std::vector<std::pair<std::string, std::string>> all;
        for (const std::string& name : folder_.entries()) {
            all.emplace_back(name, fs::is_regular_file(folder_.path() / name) ? readFile(file(name))
                                                                              : "");
        }
        return all;
    }

private:
    TemporaryFolder folder_;
};

Row render(const std::string& name, std::vector<std::string> rest, const std::string& wrong,
           const std::string& right) {
    std::vector<std::string> arguments = {"render", "{dir}/in.wav", "{dir}/old.wav", "--plugin",
                                          "{Gain}"};
    arguments.insert(arguments.end(), rest.begin(), rest.end());
    return {name, arguments, wrong, right};
}

Row renderOf(const std::string& name, const std::string& in, const std::string& out,
             const std::string& plugin, const std::string& wrong, const std::string& right) {
    return {name, {"render", in, out, "--plugin", plugin}, wrong, right};
}

const std::vector<Row> kRows = {
    // The input.
    renderOf("NoInputFile", "{dir}/none.wav", "{dir}/old.wav", "{Gain}", "no file {dir}/none.wav",
             "give a sound file"),
    renderOf("InputIsAFolder", "{dir}/folder.wav", "{dir}/old.wav", "{Gain}", "is a folder",
             "give a sound file"),
    renderOf("InputIsText", "{dir}/text.wav", "{dir}/old.wav", "{Gain}", "cannot be read as sound",
             "WAV, AIFF, FLAC"),
    renderOf("InputHasNoBytes", "{dir}/zero.wav", "{dir}/old.wav", "{Gain}",
             "cannot be read as sound", "WAV, AIFF, FLAC"),
    renderOf("InputHasNoFrames", "{dir}/empty.wav", "{dir}/old.wav", "{Gain}", "holds no sound",
             "at least one frame"),
    renderOf("InputHoldsNoNumber", "{dir}/nan.wav", "{dir}/old.wav", "{Gain}",
             "NaN or infinity at 0.001134 s", "give a file without"),
    renderOf("InputIsTooFast", "{dir}/fast.wav", "{dir}/old.wav", "{Gain}", "384000 Hz",
             "--rate from 1000 to 192000"),
    renderOf("InputIsTooSlow", "{dir}/slow.wav", "{dir}/old.wav", "{Gain}", "500 Hz",
             "--rate from 1000 to 192000"),
    {"InputIsTooSlowForItsNewRate",
     {"render", "{dir}/slow.wav", "{dir}/old.wav", "--plugin", "{Gain}", "--rate", "192000"},
     "cannot be brought to 192000 Hz",
     "--rate"},

    // Pipes and several files.
    render("RawOfFiles", {"--raw", "s16le"}, "neither IN nor OUT is -", "can be raw"),
    {"RawOfNoKind", {"render", "{dir}/in.wav", "-", "--raw", "s17"}, "\"s17\"", "s16le"},
    {"RawInWithoutRate",
     {"render", "-", "{dir}/old.wav", "--raw", "s16le"},
     "rate and channels",
     "--raw s16le,44100,2"},
    {"RawInWithoutChannels",
     {"render", "-", "{dir}/old.wav", "--raw", "s16le,44100"},
     "--raw s16le,44100",
     "KIND,RATE,CHANNELS"},
    {"RawInOfNoChannels",
     {"render", "-", "{dir}/old.wav", "--raw", "s16le,44100,0"},
     "--raw s16le,44100,0",
     "KIND,RATE,CHANNELS"},
    {"RawOutWithARate",
     {"render", "{dir}/in.wav", "-", "--raw", "s16le,44100,2"},
     "only standard input has a rate",
     "--raw s16le"},
    {"StandardInputIsNoSound",
     {"render", "-", "{dir}/old.wav", "--plugin", "{Gain}"},
     "standard input cannot be read as sound",
     "give WAV"},
    {"OneFileTooMany",
     {"render", "{dir}/in.wav", "{dir}/old.wav", "{dir}/third.wav"},
     "third.wav",
     "--out-folder"},
    {"JobsOfOne",
     {"render", "{dir}/in.wav", "{dir}/old.wav", "--jobs", "2"},
     "--jobs 2",
     "several"},
    {"NoOutFolder",
     {"render", "{dir}/in.wav", "--out-folder", "{dir}/none"},
     "no such folder",
     "make it"},
    {"OutFolderIsAFile",
     {"render", "{dir}/in.wav", "--out-folder", "{dir}/old.wav"},
     "no such folder",
     "make it"},
    {"TwoIntoOne",
     {"render", "{dir}/six.wav", "{dir}/in.wav", "{dir}/folder.wav/../in.wav", "--out-folder",
      "{dir}/folder.wav"},
     "would both be written to {dir}/folder.wav/in.wav",
     "other names"},
    {"OneOfSeveralHasNoFormat",
     {"render", "{dir}/in.wav", "{dir}/old", "--out-folder", "{dir}/folder.wav"},
     "no extension",
     ".wav, .aiff"},
    {"StandardInputAmongSeveral",
     {"render", "{dir}/in.wav", "-", "--out-folder", "{dir}/folder.wav"},
     "has no name",
     "without --out-folder"},
    {"SeveralByNoPlugin",
     {"render", "{dir}/in.wav", "{dir}/six.wav", "--out-folder", "{dir}/folder.wav", "--plugin",
      "{dir}/none.so"},
     "no plug-in {dir}/none.so",
     "bundle or .so"},
    {"SeveralInNoJobs",
     {"render", "{dir}/in.wav", "--out-folder", "{dir}/folder.wav", "--jobs", "0"},
     "--jobs 0",
     "from 1 to 256"},
    {"SeveralIntoOneLog",
     {"render", "{dir}/in.wav", "--out-folder", "{dir}/folder.wav", "--log", "{dir}/calls"},
     "--log {dir}/calls",
     "leave out --out-folder"},
    {"SeveralRaw",
     {"render", "{dir}/in.wav", "--out-folder", "{dir}/folder.wav", "--raw", "s16le"},
     "--raw s16le",
     "leave out --out-folder"},

    // The output.
    renderOf("OutputHasAnUnknownExtension", "{dir}/in.wav", "{dir}/out.xyz", "{Gain}", "\".xyz\"",
             ".wav, .aiff"),
    renderOf("OutputHasNoExtension", "{dir}/in.wav", "{dir}/old", "{Gain}", "no extension",
             ".wav, .aiff"),
    renderOf("OutputFolderIsMissing", "{dir}/in.wav", "{dir}/none/out.wav", "{Gain}",
             "No such file or directory", "give a file in a folder"),
    renderOf("OutputIsAFolder", "{dir}/in.wav", "{dir}/folder.wav", "{Gain}",
             "not an ordinary file", "give the name"),
    renderOf("OutputFolderIsAFile", "{dir}/in.wav", "{dir}/old/out.wav", "{Gain}",
             "Not a directory", "give"),
    renderOf("OutputFormatCannotHoldTheRate", "{dir}/in.wav", "{dir}/old.opus", "{Gain}", "Opus",
             "--rate"),

    // The plug-in.
    renderOf("NoPlugin", "{dir}/in.wav", "{dir}/old.wav", "{dir}/none.vst",
             "no plug-in {dir}/none.vst", "bundle or .so"),
    renderOf("PluginIsText", "{dir}/in.wav", "{dir}/old.wav", "{dir}/text.so",
             "cannot be loaded as a plug-in", "VST 2 bundle or .so"),
    renderOf("PluginIsASound", "{dir}/in.wav", "{dir}/old.wav", "{dir}/in.wav",
             "cannot be loaded as a plug-in", "VST 2 bundle or .so"),
    renderOf("PluginHasNoEntry", "{dir}/in.wav", "{dir}/old.wav", "{NoEntry}",
             "neither VSTPluginMain nor main", "give one"),
    renderOf("PluginAnswersNull", "{dir}/in.wav", "{dir}/old.wav", "{Null}", "returned null",
             "VST 2.4"),
    renderOf("PluginAnswersNoEffect", "{dir}/in.wav", "{dir}/old.wav", "{WrongMagic}",
             "did not return a VST 2 effect", "give a VST 2"),
    renderOf("BundleIsEmpty", "{dir}/in.wav", "{dir}/old.wav", "{dir}/bundle.vst",
             "not a plug-in bundle", "Contents/x86_64-linux/*.so"),
    renderOf("OutputCannotHoldSixChannels", "{dir}/in.wav", "{dir}/old.mp3", "{Surround}",
             "MP3 cannot hold 6 channels", "use .wav"),
    render("LongestGapIsTooLong", {"--longest-gap", "61"}, "--longest-gap 61", "from 0 to 60"),
    renderOf("PluginOnlyAccumulates", "{dir}/in.wav", "{dir}/old.wav", "{Accumulating}", "only add",
             "replace"),
    renderOf("PluginIsAnInstrument", "{dir}/in.wav", "{dir}/old.wav", "{Instrument}",
             "without notes", "give an effect"),
    renderOf("PluginGivesNoNumbers", "{dir}/in.wav", "{dir}/old.wav", "{NotANumber}",
             "NaN or infinity at 0.022676 s", "other settings or another --rate"),
    {"InfoOfNoPlugin", {"info", "{dir}/none.so"}, "no plug-in", "bundle or .so"},
    {"InfoOfText", {"info", "--json", "{dir}/text.so"}, "cannot be loaded", "VST 2 bundle or .so"},
    {"InfoOfNull", {"info", "{Null}"}, "returned null", "VST 2.4"},
    {"PlotOfNull", {"plot", "{dir}/old.svg", "--plugin", "{Null}"}, "returned null", "VST 2.4"},
    {"PlotOfAnInstrument",
     {"plot", "{dir}/old.png", "--plugin", "{Instrument}"},
     "without notes",
     "give an effect"},
    {"PlotOfNoNumbers",
     {"plot", "{dir}/old.png", "--plugin", "{NotANumber}"},
     "NaN or infinity",
     "other settings"},
    {"EditOfAnEffectWithoutEditor", {"edit", "--plugin", "{Gain}"}, "has no editor", "one"},
    {"EditOfNoPlugin", {"edit", "--plugin", "{dir}/none.vst"}, "no plug-in", "bundle or .so"},
    {"SnapshotOfAnEffectWithoutEditor",
     {"snapshot", "{dir}/old.png", "--plugin", "{Gain}"},
     "has no editor",
     "one"},
    {"SnapshotOfNull",
     {"snapshot", "{dir}/old.png", "--plugin", "{Null}"},
     "returned null",
     "VST 2.4"},

    // Presets.
    render("NoSuchPreset", {"--preset", "{dir}/none.fxp"}, "no file {dir}/none.fxp",
           "give a preset"),
    render("PresetIsAFolder", {"--preset", "{dir}/folder.wav"}, "not an ordinary file",
           "give a preset"),
    render("PresetIsASound", {"--preset", "{dir}/in.wav"}, "does not begin with CcnK",
           "give a preset"),
    render("PresetIsEmpty", {"--preset", "{dir}/zero.wav"}, "is cut short", "give a preset"),
    render("PresetIsAnothers", {"--preset", "{dir}/other.fxp"}, "belongs to the plug-in \"Abcd\"",
           "give a preset of Gain"),
    {"SaveIsNoPreset",
     {"preset", "save", "{dir}/old.wav", "--plugin", "{Gain}"},
     "not the name",
     ".fxp for a program or .fxb for a bank"},
    {"SaveFolderIsMissing",
     {"preset", "save", "{dir}/none/a.fxp", "--plugin", "{Gain}"},
     "No such file or directory",
     "give a file in a folder"},
    {"ShowOfAnothers",
     {"preset", "show", "{dir}/other.fxp", "--plugin", "{Gain}"},
     "belongs to the plug-in",
     "give a preset of Gain"},
    {"PresetWithoutACommand",
     {"preset"},
     "no command is given to preset",
     "give save or show; see 'tvhost preset --help'"},
    {"PresetOfNoSuchCommand",
     {"preset", "load", "{dir}/other.fxp"},
     "no command \"preset load\"",
     "give save or show; see 'tvhost preset --help'"},
    {"PresetShowOfNothing", {"preset", "show"}, "FILE", "tvhost preset --help"},
    {"PlotAllOfAPreset",
     {"plot", "{dir}/old.svg", "--plugin", "{Gain}", "--all", "--preset", "{dir}/other.fxp"},
     "excludes",
     "tvhost plot --help"},

    // Playing.
    {"PlayOfNothing", {"play", "--plugin", "{Gain}"}, "nothing to play", "--input for live sound"},
    {"PlayOfNoFile",
     {"play", "{dir}/none.wav", "--plugin", "{Gain}"},
     "no file {dir}/none.wav",
     "give a sound file"},
    {"PlayOfFileAndInput", {"play", "{dir}/in.wav", "--input"}, "excludes", "tvhost play --help"},
    {"PlayByNobody",
     {"play", "{dir}/in.wav", "--plugin", "{Gain}", "--server", "oss"},
     "--server oss",
     "jack, pulse, alsa"},
    {"PlayTooFast",
     {"play", "{dir}/in.wav", "--plugin", "{Gain}", "--rate", "192001"},
     "--rate 192001",
     "from 1000 to 192000"},
    {"PlayInNoBlocks",
     {"play", "{dir}/in.wav", "--plugin", "{Gain}", "--block", "8"},
     "--block 8",
     "from 16 to 8192"},
    {"PlayWithoutAnEditor",
     {"play", "{dir}/in.wav", "--plugin", "{Gain}", "--editor"},
     "has no editor",
     "one"},
    {"PlayKeptAsASound",
     {"play", "{dir}/in.wav", "--plugin", "{Gain}", "--save", "{dir}/old.wav"},
     "not the name",
     ".fxp for a program"},
    {"ManualForNoShell",
     {"manual", "--completion", "csh"},
     "--completion csh",
     "bash, zsh or fish"},
    render("LogFolderIsMissing", {"--log", "{dir}/none/calls"}, "No such file or directory",
           "give a file in a folder"),
    render("TempoOfNothing", {"--tempo", "0"}, "--tempo 0", "from 1 to 999"),
    render("TempoIsAWord", {"--tempo", "allegro"}, "--tempo allegro", "from 1 to 999"),
    render("ValueIsNeverShown", {"--set", "Gain=9 times"}, "\"9 times\"",
           "0.00 times to 1.00 times"),

    // TvDelay shows nothing but the unit at a delay of 0.
    {"ValueIsBeyondWhatTvDelayShows",
     {"render", "{dir}/in.wav", "{dir}/old.wav", "--set", "Delay=9 s"},
     "\"9 s\"",
     "which goes from nothing to 44099 samples"},

    {"ListOfNoFolder", {"list", "{dir}/none"}, "no folder {dir}/none", "give one"},
    {"ListOfNoJobs", {"list", "{dir}", "--jobs", "0"}, "--jobs 0", "from 1 to 256"},
    {"ListOfHalfAJob", {"list", "{dir}", "--jobs", "0.5"}, "--jobs 0.5", "from 1 to 256"},
    {"ListWithoutTime", {"list", "{dir}", "--time-limit", "0"}, "--time-limit 0", "above 0"},
    {"ListUntilSoon", {"list", "{dir}", "--time-limit", "soon"}, "soon", "number of seconds"},

    // The display.
    {"EditWithoutADisplay",
     {"edit", "--plugin", "{Painter}"},
     "no display to show an editor on",
     "set DISPLAY"},

    // Programs and parameters.
    render("NoSuchProgram", {"--program", "Loud"}, "no program \"Loud\"", "0 to 2"),
    render("ProgramBeyondTheLast", {"--program", "3"}, "no program \"3\"", "0 to 2"),
    render("ProgramBelowTheFirst", {"--program", "-1"}, "no program \"-1\"", "0 to 2"),
    {"EffectWithoutPrograms",
     {"render", "{dir}/in.wav", "{dir}/old.wav", "--plugin", "{Mono}", "--program", "0"},
     "no programs",
     "\"0\""},
    render("NoSuchParameter", {"--set", "Volume=1"}, "no parameter \"Volume\"", "Gain"),
    render("ParameterBeyondTheLast", {"--set", "2=1"}, "no parameter \"2\"", "0 to 1"),
    render("ValueIsNoNumber", {"--set", "Gain=loud"}, "\"loud\"", "from 0 to 1"),
    render("ValueIsMissing", {"--set", "Gain="}, "not a value", "from 0 to 1"),
    render("ValueIsTooLarge", {"--set", "Gain=1.5"}, "\"1.5\"", "from 0 to 1"),
    render("ValueIsNegative", {"--set", "Gain=-0.5"}, "\"-0.5\"", "from 0 to 1"),
    render("SetHasNoSign", {"--set", "Gain"}, "--set Gain", "NAME=VALUE"),
    {"NameStandsForTwo",
     {"render", "{dir}/in.wav", "{dir}/old.wav", "--plugin", "{Rude}", "--set", "Twin=1"},
     "several",
     "give the number"},
    render("AutomateNoSuchParameter", {"--automate", "Volume=0:1"}, "no parameter \"Volume\"",
           "Gain"),
    render("AutomateWithoutPoints", {"--automate", "Gain="}, "--automate Gain=", "NAME=T:V"),
    render("AutomateNoPoint", {"--automate", "Gain=0.5"}, "\"0.5\"", "T:V"),
    render("AutomateNoTime", {"--automate", "Gain=soon:1"}, "\"soon\"", "seconds"),
    render("AutomateNegativeTime", {"--automate", "Gain=-1:1"}, "\"-1\"", "0 or more"),
    render("AutomateNoValue", {"--automate", "Gain=0:loud"}, "\"loud\"", "from 0 to 1"),
    {"PlotNoSuchProgram",
     {"plot", "{dir}/old.svg", "--plugin", "{Gain}", "--program", "Loud"},
     "no program",
     "0 to 2"},
    {"PlotNoSuchParameter",
     {"plot", "{dir}/old.svg", "--plugin", "{Gain}", "--all", "--set", "Volume=1"},
     "no parameter",
     "Gain"},
    {"PlotAllOfNone",
     {"plot", "{dir}/old.svg", "--plugin", "{Mono}", "--all"},
     "no programs",
     "leave out --all"},
    {"EditNoSuchProgram",
     {"edit", "--plugin", "{Painter}", "--program", "Loud"},
     "no program",
     "0 to 7"},
    {"EditNoValue", {"edit", "--plugin", "{Painter}", "--set", "Red=2"}, "\"2\"", "from 0 to 1"},
    {"SnapshotNoSuchProgram",
     {"snapshot", "{dir}/old.png", "--plugin", "{Painter}", "--program", "8"},
     "no program",
     "0 to 7"},
    {"SnapshotNoSuchParameter",
     {"snapshot", "{dir}/old.png", "--plugin", "{Painter}", "--set", "Blue=1"},
     "no parameter",
     "Red"},

    // Figures.
    render("BlockOfNothing", {"--block", "0"}, "--block 0", "from 1 to 65536"),
    render("BlockBelowNothing", {"--block", "-64"}, "--block -64", "from 1 to 65536"),
    render("BlockTooLarge", {"--block", "65537"}, "--block 65537", "from 1 to 65536"),
    render("BlockIsNoNumber", {"--block", "big"}, "--block big", "from 1 to 65536"),
    render("BlockIsNotWhole", {"--block", "64.5"}, "--block 64.5", "whole number"),
    render("RateOfNothing", {"--rate", "0"}, "--rate 0", "from 1000 to 192000"),
    render("RateTooHigh", {"--rate", "192001"}, "--rate 192001", "from 1000 to 192000"),
    render("RateIsNoNumber", {"--rate", "48k"}, "--rate 48k", "from 1000 to 192000"),
    render("RateIsNotWhole", {"--rate", "44100.5"}, "--rate 44100.5", "whole number"),
    render("TailBelowNothing", {"--tail", "-1"}, "--tail -1", "from 0 to 3600"),
    render("TailTooLong", {"--tail", "3601"}, "--tail 3601", "from 0 to 3600"),
    render("TailIsNoNumber", {"--tail", "nan"}, "--tail nan", "from 0 to 3600"),

    // The command line itself.
    {"NoCommand",
     {},
     "no command is given",
     "give info, list, render, play, plot, edit, snapshot, preset, check or manual"},
    {"NoSuchCommand",
     {"dance"},
     "no command \"dance\"",
     "give info, list, render, play, plot, edit, snapshot, preset, check or manual"},
    {"OptionBeforeTheCommand", {"--loud", "info"}, "--loud", "tvhost info --help"},
    {"NoSuchOption", {"info", "{Gain}", "--loud"}, "--loud", "tvhost info --help"},
    {"NoInput", {"render"}, "IN", "tvhost render --help"},
    {"NoOutput", {"render", "{dir}/in.wav"}, "OUT", "tvhost render --help"},
    {"NoPicture", {"plot"}, "OUT", "tvhost plot --help"},
    {"TooManyFiles",
     {"render", "{dir}/in.wav", "{dir}/old.wav", "{dir}/third.wav"},
     "third.wav",
     "tvhost render --help"},
    {"TwoCommands", {"info", "plot"}, "no plug-in plot", "bundle or .so"},
    render("OptionWithoutValue", {"--block"}, "--block", "tvhost render --help"),
    {"AllAndOne",
     {"plot", "{dir}/old.svg", "--plugin", "{Gain}", "--all", "--program", "1"},
     "excludes",
     "tvhost plot --help"},
    {"PictureIsASound",
     {"plot", "{dir}/old.wav", "--plugin", "{Gain}"},
     "unknown picture format",
     ".svg or .png"},
    {"SnapshotIsNoPng",
     {"snapshot", "{dir}/old.svg", "--plugin", "{Painter}"},
     "unknown picture format",
     ".png"},
    {"SnapshotFolderIsMissing",
     {"snapshot", "{dir}/none/out.png", "--plugin", "{Painter}"},
     "No such file or directory",
     "give a file in a folder"},
    {"SnapshotOfNothing", {"snapshot"}, "OUT", "tvhost snapshot --help"},
    {"PictureFolderIsMissing",
     {"plot", "{dir}/none/out.svg", "--plugin", "{Gain}"},
     "No such file or directory",
     "give a file in a folder"},
};

class Refusal : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(Refusal, IsOneLineAndLeavesNothing) {
    const Bench bench;
    const auto before = bench.contents();
    std::vector<std::string> arguments;
    for (const std::string& argument : GetParam().arguments) {
        arguments.push_back(bench.replaceWords(argument));
    }
    const ProcessResult result = runTvhost(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.errorLines().size(), 1u);
    EXPECT_THAT(result.err, testing::EndsWith("\n"));
    EXPECT_THAT(result.err, StartsWith("tvhost: "));
    EXPECT_THAT(result.err, HasSubstr(bench.replaceWords(GetParam().wrong)));
    EXPECT_THAT(result.err, HasSubstr(bench.replaceWords(GetParam().right)));
    EXPECT_EQ(bench.contents(), before);
}

INSTANTIATE_TEST_SUITE_P(Rows, Refusal, testing::ValuesIn(kRows),
                         [](const testing::TestParamInfo<Row>& row) { return row.param.name; });

namespace {

// A run that cannot get all of its output onto the disk.
void expectNoRoom(const std::vector<std::string>& arguments, const std::string& target) {
    Process::Options options;
    options.largestFile = 4096;
    const ProcessResult result = runTvhost(arguments, options);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr(target));
    EXPECT_THAT(result.err, HasSubstr("give a file in a folder with room for it"));
}

} // namespace

TEST(Refusal, OfAFullDiskLeavesNothing) {
    TemporaryFolder folder;
    writeSound(folder.file("in.wav"), noise(2, 44100, 44100, 0.5f, 1));
    for (const char* name : {"out.wav", "out.flac", "out.png", "out.svg"}) {
        writeFile(folder.file(name), "older");
    }
    for (const char* name : {"out.wav", "out.flac"}) {
        expectNoRoom(
            {"render", folder.file("in.wav"), folder.file(name), "--plugin", testPlugin("Gain")},
            name);
    }
    for (const char* name : {"out.png", "out.svg"}) {
        expectNoRoom({"plot", folder.file(name), "--plugin", testPlugin("Delay")}, name);
    }
    EXPECT_EQ(folder.entries(),
              (std::vector<std::string>{"in.wav", "out.flac", "out.png", "out.svg", "out.wav"}));
    for (const char* name : {"out.wav", "out.flac", "out.png", "out.svg"}) {
        EXPECT_EQ(readFile(folder.file(name)), "older");
    }
}

TEST(Help, GoesToStandardOutputWithStatusZero) {
    const std::vector<std::vector<std::string>> calls = {
        {"--help"},           {"-h"},
        {"info", "--help"},   {"list", "--help"},
        {"preset", "--help"}, {"preset", "save", "--help"},
        {"render", "--help"}, {"plot", "--help"},
        {"edit", "--help"},   {"snapshot", "--help"}};
    for (const auto& call : calls) {
        const ProcessResult result = runTvhost(call);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(result.out, HasSubstr("Usage: tvhost"));
    }
}

TEST(Help, OfRenderTellsHowValuesMoveAndWhoResamples) {
    const std::string help = runTvhost({"render", "--help"}).out;
    EXPECT_THAT(help, HasSubstr("step"));
    EXPECT_THAT(help, HasSubstr("libsamplerate"));
    EXPECT_THAT(help, HasSubstr("-90 dBFS"));
}

TEST(Version, IsThatOfTheProject) {
    const ProcessResult result = runTvhost({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "tvhost " TVHOST_VERSION "\n");
}
