#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"

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
                           {"initialDelay", 0},
                           {"tailSize", 1},
                           {"flags",
                            {{"hasEditor", false},
                             {"canReplacing", true},
                             {"programChunks", false},
                             {"isSynth", false},
                             {"noSoundInStop", false},
                             {"canDoubleReplacing", false}}},
                           {"currentProgram", 0},
                           {"parameters",
                            {{{"index", 0},
                              {"name", "Gain"},
                              {"value", 1.0},
                              {"display", "1.00"},
                              {"label", "times"},
                              {"automatable", true}},
                             {{"index", 1},
                              {"name", "Shift = Up"},
                              {"value", 0.0},
                              {"display", "0.00"},
                              {"label", ""},
                              {"automatable", false}}}},
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
    EXPECT_EQ(keys, (std::vector<std::string>{"file", "uniqueId", "uniqueIdNumber", "effectName",
                                              "productName", "vendorName", "vendorVersion",
                                              "version", "interfaceVersion", "category", "inputs",
                                              "outputs", "initialDelay", "tailSize", "flags",
                                              "currentProgram", "parameters", "programs"}));
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
