#include "host/render/Automation.h"

#include "host/base/UserError.h"
#include "tests/host/TestPlugin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tvhost;
using testing::HasSubstr;

TEST(Automation, SetsEachValueAtItsFrame) {
    EffectInstance effect(loadTestPlugin("Gain"));
    Automation automation(effect, {"Gain=0:0.5,0.001:0.25,0.002:0.75"}, 1000.0);
    EXPECT_EQ(automation.lastFrame(), 2);
    EXPECT_EQ(automation.pending(), 3u);
    automation.apply(effect, 0);
    EXPECT_EQ(effect.parameter(0), 0.5f);
    EXPECT_EQ(automation.framesUntilNext(0, 64), 1);
    automation.apply(effect, 1);
    EXPECT_EQ(effect.parameter(0), 0.25f);
    automation.apply(effect, 2);
    EXPECT_EQ(effect.parameter(0), 0.75f);
    EXPECT_EQ(automation.framesUntilNext(2, 64), 64);
    EXPECT_EQ(automation.pending(), 0u);
}

TEST(Automation, RoundsTimesToTheNearestFrame) {
    EffectInstance effect(loadTestPlugin("Gain"));
    Automation automation(effect, {"Gain=0.50001:1"}, 48000.0);
    EXPECT_EQ(automation.framesUntilNext(0, 1000000), 24000);
}

TEST(Automation, SortsByTimeAndKeepsTheOrderGivenWithinAFrame) {
    EffectInstance effect(loadTestPlugin("Gain"));
    Automation automation(effect, {"Gain=2:0.2,1:0.1", "0=1:0.3"}, 10.0);
    automation.apply(effect, 10);
    EXPECT_EQ(effect.parameter(0), 0.3f);
    EXPECT_EQ(automation.framesUntilNext(10, 100), 10);
    automation.apply(effect, 20);
    EXPECT_EQ(effect.parameter(0), 0.2f);
}

TEST(Automation, IsNothingWithoutPoints) {
    EffectInstance effect(loadTestPlugin("Gain"));
    Automation automation(effect, {}, 44100.0);
    automation.apply(effect, 0);
    EXPECT_EQ(effect.parameter(0), 1.0f);
    EXPECT_EQ(automation.framesUntilNext(0, 512), 512);
    EXPECT_EQ(automation.lastFrame(), 0);
}

TEST(Automation, TakesNamesThatHoldTheSign) {
    EffectInstance effect(loadTestPlugin("Gain"));
    Automation automation(effect, {"Shift = Up=0:0.5"}, 44100.0);
    automation.apply(effect, 0);
    EXPECT_EQ(effect.parameter(1), 0.5f);
}

TEST(Automation, RefusesWhatIsNoListOfPoints) {
    EffectInstance effect(loadTestPlugin("Gain"));
    for (const char* text :
         {"Gain", "Gain=", "=0:1", "Gain=0.5", "Gain=0:1,", "Gain=0:1,,1:1", "Gain=a:1",
          "Gain=-1:1", "Gain=0:2", "Gain=0:-0.1", "Gain=0:x", "Gain=:1", "Gain=0:", "Gain=nan:1",
          "Gain=0:1:2", "Gain=1e300:1", "Volume=0:1"}) {
        try {
            const Automation automation(effect, {text}, 44100.0);
            ADD_FAILURE() << text << " was taken";
        } catch (const UserError& error) {
            EXPECT_THAT(error.what(), HasSubstr("give")) << text;
        }
    }
}
