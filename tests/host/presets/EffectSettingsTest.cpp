#include "host/presets/EffectSettings.h"

#include "host/base/UserError.h"
#include "host/plugin/EffectLookup.h"
#include "tests/host/TestPlugin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tvhost;
using testing::AllOf;
using testing::HasSubstr;

namespace {

std::string refusal(const EffectSettings& settings, const char* plugin = "Gain") {
    EffectInstance effect(loadTestPlugin(plugin));
    try {
        settings.apply(effect);
    } catch (const UserError& error) {
        return error.what();
    }
    return "no refusal";
}

} // namespace

TEST(EffectLookup, FindsByNameWithoutCaseOrByNumber) {
    EffectInstance effect(loadTestPlugin("Gain"));
    EXPECT_EQ(findParameter(effect, "Gain"), 0);
    EXPECT_EQ(findParameter(effect, "gAIN"), 0);
    EXPECT_EQ(findParameter(effect, " gain "), 0);
    EXPECT_EQ(findParameter(effect, "1"), 1);
    EXPECT_EQ(findProgram(effect, "half"), 1);
    EXPECT_EQ(findProgram(effect, "2"), 2);
}

TEST(EffectLookup, TakesANameOfDigitsBeforeANumber) {
    EffectInstance effect(loadTestPlugin("Gain"));
    EXPECT_EQ(findProgram(effect, "808"), 2);
}

TEST(EffectLookup, RefusesWhatIsNotThereAndSaysWhatIs) {
    EXPECT_THAT(refusal({"Loud", {}}),
                AllOf(HasSubstr("\"Loud\""), HasSubstr("0 to 2"), HasSubstr("Unity, Half, 808")));
    EXPECT_THAT(refusal({"3", {}}), HasSubstr("0 to 2"));
    EXPECT_THAT(refusal({"-1", {}}), HasSubstr("0 to 2"));
    EXPECT_THAT(refusal({"1.0", {}}), HasSubstr("0 to 2"));
    EXPECT_THAT(refusal({"", {"Volume=1"}}), AllOf(HasSubstr("\"Volume\""), HasSubstr("Gain")));
    EXPECT_THAT(refusal({"0", {}}, "Mono"), HasSubstr("no programs"));
    EXPECT_THAT(refusal({"", {"0=1"}}, "Mono"), HasSubstr("no parameters"));
}

TEST(EffectLookup, AsksForTheNumberWhereANameStandsForSeveral) {
    EXPECT_THAT(refusal({"", {"twin=1"}}, "Rude"), HasSubstr("several"));
    EXPECT_EQ(refusal({"", {"1=1"}}, "Rude"), "no refusal");
}

TEST(EffectSettings, SelectsTheProgramThenSetsInOrder) {
    EffectInstance effect(loadTestPlugin("Gain"));
    EffectSettings{"Half", {"shift = up=0.25"}}.apply(effect);
    EXPECT_EQ(effect.currentProgram(), 1);
    EXPECT_EQ(effect.parameter(0), 0.5f);
    EXPECT_EQ(effect.parameter(1), 0.25f);
    EffectSettings{"", {"gain=0.1", "0=0.9"}}.apply(effect);
    EXPECT_EQ(effect.parameter(0), 0.9f);
}

TEST(EffectSettings, LeavesTheEffectAloneWhenNothingIsGiven) {
    EffectInstance effect(loadTestPlugin("Gain"));
    effect.setParameter(0, 0.3f);
    EffectSettings{}.apply(effect);
    EXPECT_EQ(effect.parameter(0), 0.3f);
}

TEST(EffectSettings, RefusesWhatIsNoAssignment) {
    for (const char* text : {"Gain", "=0.5", "", "=", "Gain="}) {
        EXPECT_THAT(refusal({"", {text}}), HasSubstr("give")) << text;
    }
}

TEST(EffectSettings, RefusesValuesOutsideTheRange) {
    for (const char* text : {"Gain=1.01", "Gain=-0.01", "Gain=nan", "Gain=inf", "Gain=loud",
                             "Gain=0,5", "Gain=0.5dB"}) {
        EXPECT_THAT(refusal({"", {text}}), HasSubstr("from 0 to 1")) << text;
    }
    EXPECT_EQ(refusal({"", {"Gain=0", "Gain=1"}}), "no refusal");
}
