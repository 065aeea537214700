#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;
using testing::HasSubstr;

namespace {

ProcessResult info(const char* plugin, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"info", testPlugin(plugin)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runTvhost(arguments);
}

} // namespace

TEST(InfoCommand, PrintsAlignedText) {
    const ProcessResult result = info("Gain");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Gain\n"
                          "  product    Gain for Tests\n"
                          "  vendor     Testers\n"
                          "  unique ID  Tst1 (1416852529)\n"
                          "  version    1234, record 7\n"
                          "  interface  VST 2400\n"
                          "  category   effect\n"
                          "  channels   2 in, 2 out\n"
                          "  latency    0 samples\n"
                          "  flags      replaces its output\n"
                          "  file       " +
                              testPlugin("Gain") +
                              "\n"
                              "\n"
                              "Parameters (2)\n"
                              "  #  name           value  display  label\n"
                              "  0  Gain        1.000000     1.00  times\n"
                              "  1  Shift = Up  0.000000     0.00\n"
                              "\n"
                              "Programs (3), current 0\n"
                              "  0  Unity\n"
                              "  1  Half\n"
                              "  2  808\n");
}

TEST(InfoCommand, PrintsJsonUnderItsKeys) {
    const ProcessResult result = info("Gain", {"--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    const json expected = {{"file", testPlugin("Gain")},
                           {"uniqueId", "Tst1"},
                           {"uniqueIdNumber", 1416852529},
                           {"effectName", "Gain"},
                           {"productName", "Gain for Tests"},
                           {"vendorName", "Testers"},
                           {"vendorVersion", 1234},
                           {"version", 7},
                           {"interfaceVersion", 2400},
                           {"category", "effect"},
                           {"inputs", 2},
                           {"outputs", 2},
                           {"inputPins", {{{"index", 0}}, {{"index", 1}}}},
                           {"outputPins", {{{"index", 0}}, {{"index", 1}}}},
                           {"midiInputChannels", 0},
                           {"midiOutputChannels", 0},
                           {"initialDelay", 0},
                           {"tailSize", 1},
                           {"flags",
                            {{"hasEditor", false},
                             {"canReplacing", true},
                             {"programChunks", false},
                             {"isSynth", false},
                             {"noSoundInStop", false},
                             {"canDoubleReplacing", false}}},
                           {"canDo",
                            {{"sendVstEvents", nullptr},
                             {"sendVstMidiEvent", nullptr},
                             {"receiveVstEvents", nullptr},
                             {"receiveVstMidiEvent", nullptr},
                             {"receiveVstTimeInfo", nullptr},
                             {"offline", nullptr},
                             {"midiProgramNames", nullptr},
                             {"bypass", nullptr}}},
                           {"editor", nullptr},
                           {"currentProgram", 0},
                           {"parameters",
                            {{{"index", 0},
                              {"name", "Gain"},
                              {"value", 1.0},
                              {"display", "1.00"},
                              {"label", "times"},
                              {"automatable", true},
                              {"properties", nullptr}},
                             {{"index", 1},
                              {"name", "Shift = Up"},
                              {"value", 0.0},
                              {"display", "0.00"},
                              {"label", ""},
                              {"automatable", false},
                              {"properties", nullptr}}}},
                           {"programs",
                            {{{"index", 0}, {"name", "Unity"}},
                             {{"index", 1}, {"name", "Half"}},
                             {{"index", 2}, {"name", "808"}}}}};
    EXPECT_EQ(json::parse(result.out), expected);
}

TEST(InfoCommand, KeepsItsKeysInOrder) {
    const auto parsed = nlohmann::ordered_json::parse(info("Gain", {"--json"}).out);
    std::vector<std::string> keys;
    for (const auto& [key, value] : parsed.items()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::string>{"file",
                                              "uniqueId",
                                              "uniqueIdNumber",
                                              "effectName",
                                              "productName",
                                              "vendorName",
                                              "vendorVersion",
                                              "version",
                                              "interfaceVersion",
                                              "category",
                                              "inputs",
                                              "outputs",
                                              "inputPins",
                                              "outputPins",
                                              "midiInputChannels",
                                              "midiOutputChannels",
                                              "initialDelay",
                                              "tailSize",
                                              "flags",
                                              "canDo",
                                              "editor",
                                              "currentProgram",
                                              "parameters",
                                              "programs"}));
}

TEST(InfoCommand, TellsWhatAPluginSaysOfItsParts) {
    const json parsed = json::parse(info("Talkative", {"--json"}).out);
    EXPECT_EQ(parsed["inputPins"], json({{{"index", 0},
                                          {"label", "Main Left"},
                                          {"shortLabel", "MainLeft"}, // fills its place to the end
                                          {"active", true},
                                          {"stereo", true}},
                                         {{"index", 1}},
                                         {{"index", 2},
                                          {"label", "Side Chain"},
                                          {"shortLabel", "SC"},
                                          {"active", false},
                                          {"stereo", false},
                                          {"arrangement", -2}}}));
    EXPECT_EQ(parsed["outputPins"], json({{{"index", 0}}, {{"index", 1}}}));
    EXPECT_EQ(parsed["midiInputChannels"], 16);
    EXPECT_EQ(parsed["midiOutputChannels"], 3);
    EXPECT_EQ(parsed["editor"], json({{"width", 300}, {"height", 200}}));
    EXPECT_EQ(parsed["canDo"]["bypass"], true);
    EXPECT_EQ(parsed["canDo"]["offline"], false);
    EXPECT_EQ(parsed["canDo"]["sendVstEvents"], nullptr);
    const auto properties = [&](int index) { return parsed["parameters"][index]["properties"]; };
    EXPECT_EQ(properties(0), json({{"label", "Switch"},
                                   {"shortLabel", "Sw"},
                                   {"isSwitch", true},
                                   {"canRamp", false},
                                   {"minInteger", -3},
                                   {"maxInteger", 4},
                                   {"stepInteger", 2},
                                   {"largeStepInteger", 5}}));
    EXPECT_EQ(properties(1), json({{"label", "Level"},
                                   {"shortLabel", ""},
                                   {"isSwitch", false},
                                   {"canRamp", true},
                                   {"step", 0.1},
                                   {"smallStep", 0.01},
                                   {"largeStep", 0.5},
                                   {"displayIndex", 7},
                                   {"category", 1},
                                   {"categoryLabel", "Output"},
                                   {"parametersInCategory", 2}}));
    EXPECT_EQ(properties(2), nullptr);
    EXPECT_THAT(info("Talkative").out, HasSubstr("\n  editor     300 x 200\n"));
}

// Editors of some toolkits know their size only on a display.
TEST(InfoCommand, OutlivesAnEditorThatCannotTellItsSize) {
    Process::Options options;
    options.environment = {"TALKATIVE_EDITOR=crash"};
    const ProcessResult result = runTvhost({"info", "--json", testPlugin("Talkative")}, options);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(json::parse(result.out)["editor"], nullptr);
}

TEST(InfoCommand, HasAnsweredBeforeThePluginCrashesAsItIsClosed) {
    Process::Options options;
    options.environment = {"MEDDLE=crash"};
    const ProcessResult result = runTvhost({"info", "--json", testPlugin("Meddling")}, options);
    EXPECT_EQ(json::parse(result.out)["effectName"], "Meddling");
}

TEST(InfoCommand, LogsEveryCall) {
    const TemporaryFolder folder;
    EXPECT_EQ(info("Gain", {"--log", folder.file("calls")}).status, 0);
    EXPECT_THAT(readFile(folder.file("calls")), HasSubstr("effGetParamName = "));
}

TEST(InfoCommand, WorksForEffectsThatCannotBeDriven) {
    EXPECT_THAT(info("Surround").out, HasSubstr("6 in, 6 out"));
    EXPECT_THAT(info("Instrument").out, HasSubstr("is an instrument"));
    EXPECT_THAT(info("Accumulating").out, HasSubstr("flags      -\n"));
}

TEST(InfoCommand, LeavesEmptyListsForAnEffectWithout) {
    EXPECT_THAT(info("Mono").out, HasSubstr("Parameters (0)\n\nPrograms (0)"));
    const json parsed = json::parse(info("Mono", {"--json"}).out);
    EXPECT_EQ(parsed["parameters"], json::array());
    EXPECT_EQ(parsed["programs"], json::array());
}

TEST(InfoCommand, StaysReadableWhateverThePluginSays) {
    const ProcessResult text = info("Rude");
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.out.find('\x1B'), std::string::npos);
    EXPECT_THAT(text.out, testing::StartsWith("Rude Effect "));
    const json parsed = json::parse(info("Rude", {"--json"}).out);
    EXPECT_EQ(parsed["effectName"], "Rude Effect \xEF\xBF\xBD [31m");
    EXPECT_EQ(parsed["parameters"][0]["value"], nullptr);
    EXPECT_EQ(parsed["parameters"][2]["name"], std::string(1000, 'n'));
}

TEST(InfoCommand, FailsWhenStandardOutputIsFull) {
    const ProcessResult result =
        runShell("'" TVHOST_PROGRAM "' info '" + testPlugin("Gain") + "' > /dev/full");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errorLines().size(), 1u) << result.err;
}
