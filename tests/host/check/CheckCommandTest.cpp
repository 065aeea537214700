// What tvhost check says and how it ends.
#include "host/check/CheckTable.h"
#include "tests/host/check/CheckedPlugins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

ProcessResult check(const std::string& plugin, std::vector<std::string> more) {
    more.insert(more.begin(), {"check", checkedPlugin(plugin)});
    return runTvhost(more);
}

TEST(CheckCommand, EndsWithZeroWhenAllPass) {
    const ProcessResult result = check("Good", {"--level", "3", "--seed", "1"});
    EXPECT_EQ(result.status, 0) << result.out << result.err;
    EXPECT_THAT(result.out, AllOf(StartsWith("Good, seed 1: "), HasSubstr("0 failed")));
    EXPECT_THAT(result.err, IsEmpty());
}

TEST(CheckCommand, EndsWithOneWhenACheckFindsSomething) {
    const ProcessResult result = check("TooLongText", {"--only", "texts-fit", "--seed", "4"});
    EXPECT_EQ(result.status, 1) << result.out << result.err;
    EXPECT_THAT(result.out, HasSubstr("the product name (\"GGGG"));
    EXPECT_THAT(result.out, HasSubstr("has 70 characters; the interface allows 64"));
}

TEST(CheckCommand, EndsWithTwoWhenNothingCanBeRun) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"check", "/nowhere.so"},
          {"check", TVHOST_PROGRAM},
          {"check", checkedPlugin("Good"), "--only", "no-such-check"},
          {"check", checkedPlugin("Good"), "--level", "0"},
          {"check", checkedPlugin("Good"), "--level", "11"},
          {"check", checkedPlugin("Good"), "--jobs", "0"},
          {"check", checkedPlugin("Good"), "--time-limit", "0"},
          {"check", checkedPlugin("Good"), "--seed", "-1"}}) {
        const ProcessResult result = runTvhost(arguments);
        EXPECT_EQ(result.status, 2) << arguments.back();
        EXPECT_EQ(result.errorLines().size(), 1u) << result.err;
        EXPECT_THAT(result.out, IsEmpty()) << arguments.back();
    }
}

TEST(CheckCommand, NamesTheChecksWhenThereIsNoneOfThatName) {
    const ProcessResult result = check("Good", {"--only", "no-such-check"});
    EXPECT_THAT(result.err, AllOf(HasSubstr("no-such-check"), HasSubstr("tvhost check --list")));
}

TEST(CheckCommand, RunsTheChecksUpToItsLevel) {
    const nlohmann::json result = checkAsJson(checkedPlugin("Good"), {"--level", "2"});
    std::vector<int> levels;
    for (const nlohmann::json& item : result.at("checks")) {
        levels.push_back(item.at("level"));
    }
    EXPECT_THAT(levels, AllOf(Each(testing::Le(2)), Contains(1), Contains(2)));
}

TEST(CheckCommand, ListsEveryCheckWithoutAPlugin) {
    const ProcessResult result = runTvhost({"check", "--list"});
    EXPECT_EQ(result.status, 0);
    for (const tvhost::Check& check : tvhost::allChecks()) {
        EXPECT_THAT(result.out, HasSubstr(check.name));
    }
}

TEST(CheckCommand, SaysTheSameSentenceInListHelpAndFailure) {
    const std::string sentence = tvhost::findCheck("texts-fit")->protects;
    EXPECT_THAT(runTvhost({"check", "--list"}).out, HasSubstr(sentence));
    EXPECT_THAT(runTvhost({"check", "--help"}).out, HasSubstr(sentence));
    EXPECT_THAT(check("TooLongText", {"--only", "texts-fit"}).out, HasSubstr(sentence));
    const nlohmann::json result =
        checkAsJson(checkedPlugin("TooLongText"), {"--only", "texts-fit"});
    EXPECT_EQ(result.at("checks").at(0).at("protects"), sentence);
}

TEST(CheckTable, HasNamesOfTheirOwnAndSentencesThatEnd) {
    std::set<std::string> names;
    for (const tvhost::Check& check : tvhost::allChecks()) {
        EXPECT_TRUE(names.insert(check.name).second) << check.name;
        EXPECT_TRUE(std::regex_match(check.name, std::regex("[a-z]+(-[a-z]+)*"))) << check.name;
        EXPECT_TRUE(std::regex_match(check.protects, std::regex("[A-Z][^.]+\\."))) << check.name;
        EXPECT_GE(check.level, 1);
        EXPECT_LE(check.level, tvhost::kHighestCheckLevel);
    }
}

TEST(CheckCommand, ReplaysAFailureByTheCommandThatItPrints) {
    const ProcessResult first =
        check("RestoresInOneOrder", {"--only", "parameters-restore"}); // a seed of its own
    std::smatch found;
    ASSERT_TRUE(std::regex_search(
        first.out, found, std::regex("Again: tvhost (check .*) --only (\\S+) --seed (\\d+)")))
        << first.out;
    const ProcessResult again =
        check("RestoresInOneOrder", {"--only", found[2], "--seed", found[3]});
    EXPECT_EQ(again.out, first.out);
    EXPECT_EQ(again.status, 1);
}

TEST(CheckCommand, DrawsOtherSettingsWithAnotherSeed) {
    const auto outFor = [](const char* seed) {
        const nlohmann::json result = checkAsJson(checkedPlugin("RestoresInOneOrder"),
                                                  {"--only", "parameters-restore", "--seed", seed});
        return result.at("checks").at(0).at("findings").dump();
    };
    EXPECT_EQ(outFor("5"), outFor("5"));
    EXPECT_NE(outFor("5"), outFor("6"));
}

TEST(CheckCommand, TellsInWhichCallAPluginCrashed) {
    const nlohmann::json result =
        checkAsJson(checkedPlugin("CrashesOnOddCall"), {"--only", "random-calls", "--seed", "1"});
    const nlohmann::json& finding = result.at("checks").at(0).at("findings").at(0);
    EXPECT_EQ(finding.at("topic"), "crash");
    EXPECT_THAT(finding.at("text").get<std::string>(),
                AllOf(HasSubstr("SIGABRT"), HasSubstr("in effCopyProgram")));
}

TEST(CheckCommand, TellsInWhichCallAPluginHangs) {
    const nlohmann::json result = checkAsJson(
        checkedPlugin("HangsInEditor"), {"--only", "editor-opens-and-closes", "--time-limit", "5"});
    const nlohmann::json& finding = result.at("checks").at(0).at("findings").at(0);
    EXPECT_EQ(finding.at("topic"), "hang");
    EXPECT_THAT(
        finding.at("text").get<std::string>(),
        AllOf(HasSubstr("after 5 s"), HasSubstr("in effEditIdle"), HasSubstr("time 3 of 5")));
}

TEST(CheckCommand, KeepsItsOutputFreeOfWhatPluginsPrint) {
    const ProcessResult result = runTvhost({"check", checkedPlugin("Prints"), "--json"});
    EXPECT_TRUE(nlohmann::json::accept(result.out)) << result.out;
    EXPECT_THAT(check("Prints", {"--level", "1"}).out, Not(HasSubstr("\nPrints: ready")));
}

TEST(CheckCommand, SaysWhyACheckIsNotForAPlugin) {
    const ProcessResult result = check("ForgetsEdits", {"--only", "chunks-restore"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("not for this plug-in: it keeps no state in chunks"));
}

TEST(TvDelayCheck, PassesTheHighestLevel) {
    for (const char* seed : {"1", "20", "300"}) {
        const nlohmann::json result =
            checkAsJson(TVDELAY_PLUGIN, {"--level", "10", "--seed", seed});
        if (*TVDELAY_SANITIZERS != 0) { // which end the process where a long delay leaves the lines
            EXPECT_THAT(failedChecks(result), ElementsAre("settings-at-every-rate"));
        } else {
            EXPECT_THAT(failedChecks(result), IsEmpty()) << result.dump(2);
        }
    }
}

// What stays as it is, is said with its name and reason.
TEST(TvDelayCheck, TellsItsKnownBehaviours) {
    const nlohmann::json result = checkAsJson(TVDELAY_PLUGIN, {"--level", "10", "--seed", "2"});
    std::set<std::string> behaviours;
    for (const nlohmann::json& item : result.at("checks")) {
        for (const nlohmann::json& remark : item.at("remarks")) {
            behaviours.insert(remark.at("behaviour").get<std::string>());
            EXPECT_FALSE(remark.at("reason").get<std::string>().empty());
        }
    }
    for (const char* expected :
         {"long-parameter-texts", "high-pass-moves-low-pass", "new-rate-writes-high-pass",
          "new-rate-makes-filters", "filters-for-usual-rates", "growth-above-a-feedback",
          "keeps-what-is-no-number"}) {
        EXPECT_THAT(behaviours, Contains(expected));
    }
}

} // namespace
