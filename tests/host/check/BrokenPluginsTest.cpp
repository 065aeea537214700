// Each check finds what is wrong with the plug-in that breaks what it looks for, and no other check
// takes offence.
#include "host/check/CheckTable.h"
#include "tests/host/check/CheckedPlugins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Broken {
    const char* plugin;
    const char* check;
};

void PrintTo(const Broken& broken, std::ostream* out) {
    *out << broken.plugin;
}

constexpr Broken kBroken[] = {
    {"CrashesOnClose", "opens-and-closes"},
    {"WithoutIdentifier", "describes-itself"},
    {"Prints", "prints-nothing"},
    {"ChangesFolder", "leaves-process-alone"},
    {"UnendedText", "texts-end"},
    {"TooLongText", "texts-fit"},
    {"LosesOne", "parameters-keep-values"},
    {"MovesNeighbour", "parameters-stay-apart"},
    {"MovesByItself", "parameters-rest"},
    {"MisnamesPrograms", "programs-answer"},
    {"LowRates", "every-rate"},
    {"LargeBlocks", "every-block-size"},
    {"BreaksInPlace", "works-in-place"},
    {"WritesInputs", "inputs-untouched"},
    {"WritesPastBlock", "stays-in-block"},
    {"AddsToOutputs", "replaces-outputs"},
    {"Hums", "silence-stays-silence"},
    {"LoudNan", "gives-numbers"},
    {"KeepsNan", "forgets-nan"},
    {"Crawls", "rests-after-sound"},
    {"Grows", "fades-out"},
    {"RestoresInOneOrder", "parameters-restore"},
    {"ResetsOnStart", "state-outlives-start"},
    {"ForgetsState", "chunks-restore"},
    {"RefusesPresets", "presets-restore"},
    {"ForgetsEdits", "programs-keep-edits"},
    {"DependsOnBlocks", "blocks-agree"},
    {"DependsOnBlocksAtFractions", "blocks-agree"},
    {"SilentAtFractions", "blocks-agree"},
    {"TellsLatency", "latency-as-told"},
    {"ConcealsLatency", "latency-as-told"},
    {"ConcealsTail", "tail-as-told"},
    {"BreaksWhenAutomated", "automation-inside-blocks"},
    {"KeepsProgramWhileOn", "programs-while-running"},
    {"HangsInEditor", "editor-opens-and-closes"},
    {"LeaksWindow", "editor-leaves-no-window"},
    {"TellsWrongSize", "editor-size-as-told"},
    {"NeedsItsWindow", "editor-loses-its-window"},
    {"EditorRaces", "editor-beside-audio"},
    {"OneThreadOnly", "editor-on-another-thread"},
    {"RacesOnWrites", "writes-from-four-threads"},
    {"FewInstances", "many-instances"},
    {"SharesParameters", "instances-apart"},
    {"AllocatesInBlock", "no-allocation-in-block"},
    {"LocksInBlock", "no-lock-in-block"},
    {"CallsSystemInBlock", "no-system-call-in-block"},
    {"MissesDeadline", "meets-its-deadline"},
    {"OverflowsAtHighRates", "settings-at-every-rate"},
    {"WritesPastItsLine", "settings-at-every-rate"},
    {"TrustsIndices", "indices-beyond"},
    {"TrustsChunks", "damaged-chunks"},
    {"CrashesOnOddCall", "random-calls"},
};

// A sanitizer's own memory can't be counted, and its checks take their time.
bool isSanitized() {
    return *TVDELAY_SANITIZERS != 0;
}

class BrokenPlugins : public testing::TestWithParam<Broken> {};

TEST_P(BrokenPlugins, AreFoundByTheirCheckAlone) {
    const Broken& broken = GetParam();
    const bool counted = std::string_view(broken.check) == "no-allocation-in-block" ||
                         std::string_view(broken.check) == "no-lock-in-block";
    if (isSanitized() && (counted || std::string_view(broken.check) == "meets-its-deadline")) {
        GTEST_SKIP() << "not with a sanitizer";
    }
    // Long for what works on any machine, and not much longer for what hangs.
    const nlohmann::json result = checkAsJson(
        checkedPlugin(broken.plugin), {"--level", "10", "--seed", "7", "--time-limit", "30"});
    EXPECT_THAT(failedChecks(result), ElementsAre(broken.check)) << result.dump(2);
}

INSTANTIATE_TEST_SUITE_P(Checks, BrokenPlugins, testing::ValuesIn(kBroken),
                         [](const testing::TestParamInfo<Broken>& info) {
                             return std::string(info.param.plugin);
                         });

TEST(GoodPlugin, PassesAllChecks) {
    for (const char* seed : {"1", "2"}) {
        const nlohmann::json result =
            checkAsJson(checkedPlugin("Good"), {"--level", "10", "--seed", seed});
        EXPECT_THAT(failedChecks(result), IsEmpty()) << result.dump(2);
    }
}

TEST(Checks, EachHaveAPluginThatTheyFind) {
    for (const tvhost::Check& check : tvhost::allChecks()) {
        EXPECT_TRUE(std::any_of(std::begin(kBroken), std::end(kBroken), [&](const Broken& broken) {
            return std::string_view(broken.check) == check.name;
        })) << check.name;
    }
}

} // namespace
