#include "host/presets/ShownValue.h"

#include "host/base/UserError.h"
#include "host/presets/EffectSettings.h"
#include "tests/host/TestPlugin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tvhost;
using testing::HasSubstr;

namespace {

// What a parameter of the plug-in of many displays shows after a --set.
std::string shownAfter(const std::string& set, int parameter, double sampleRate = 44100.0) {
    EffectInstance effect(loadTestPlugin("Shower"));
    effect.start(sampleRate, 64);
    EffectSettings settings;
    settings.sets = {set};
    settings.apply(effect);
    return effect.parameterDisplay(parameter);
}

std::string refusal(const std::string& set) {
    try {
        shownAfter(set, 0);
    } catch (const UserError& error) {
        return error.what();
    }
    return "no refusal";
}

} // namespace

TEST(ShownValue, FindsANumberByItsUnit) {
    EXPECT_EQ(shownAfter("Time=300 ms", 0), "300.0");
    EXPECT_EQ(shownAfter("Time=300ms", 0), "300.0");
    EXPECT_EQ(shownAfter("Time=0.3 s", 0), "300.0");
    EXPECT_EQ(shownAfter("Time=13230 samples", 0), "300.0");
    EXPECT_EQ(shownAfter("Time=13230 samples", 0, 88200.0), "150.0");
    EXPECT_EQ(shownAfter("Time=0 ms", 0), "0.0");
    EXPECT_EQ(shownAfter("Time=2000 ms", 0), "2000.0");
}

TEST(ShownValue, FindsWhatRunsBackwardsAndChangesItsUnit) {
    EXPECT_EQ(shownAfter("Cut=1 kHz", 1), "1.00 kHz");
    EXPECT_EQ(shownAfter("Cut=200 Hz", 1), "200 Hz");
    EXPECT_EQ(shownAfter("Cut=0.2 khz", 1), "200 Hz");
    EXPECT_EQ(shownAfter("Gain=-6 dB", 2), "-6.0");
}

TEST(ShownValue, FindsAWord) {
    EXPECT_EQ(shownAfter("Shape=saw", 3), "Saw");
    EXPECT_EQ(shownAfter("Shape=Sine", 3), "Sine");
    EXPECT_EQ(shownAfter("Shape=Square", 3), "Square");
}

TEST(ShownValue, LeavesPlainNumbersAsTheyAre) {
    EXPECT_EQ(shownAfter("Time=0.5", 0), "1000.0");
    EXPECT_THAT(refusal("Time=300"), HasSubstr("from 0 to 1"));
}

TEST(ShownValue, TouchesNothingElse) {
    EffectInstance effect(loadTestPlugin("Shower"));
    effect.start(44100.0, 64);
    effect.setParameter(0, 0.25f);
    ShownValue(effect, 3).find("Saw");
    EXPECT_EQ(effect.parameter(0), 0.25f);
    EXPECT_EQ(effect.parameter(3), 0.0f);
}

TEST(ShownValue, RefusesWhatIsNeverShown) {
    for (const char* set :
         {"Time=3 s", "Time=-1 ms", "Time=300 dB", "Time=soon", "Shape=Triangle"}) {
        EXPECT_THAT(refusal(set), HasSubstr("from 0 to 1, or what ")) << set;
    }
    EXPECT_THAT(refusal("Time=3 s"), HasSubstr("Time shows, which goes from 0.0 ms to 2000.0 ms"));
}
