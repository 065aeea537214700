#include "host/plugin/EffectInstance.h"

#include "host/base/UserError.h"
#include "plugin/vst2/EffectOpcodes.h"
#include "tests/host/TestPlugin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace tvhost;

namespace {

// Lives as long as its module.
const std::string& journalOf(const EffectInstance& effect) {
    AEffect record = effect.record();
    return *reinterpret_cast<const std::string*>(
        record.dispatcher(&record, effVendorSpecific, 0, 0, nullptr, 0.0f));
}

} // namespace

TEST(EffectInstance, GoesThroughTheLifeOfAnEffectInOrder) {
    const auto module = loadTestPlugin("Journal");
    const std::string* journal = nullptr;
    {
        EffectInstance effect(module);
        EXPECT_EQ(journalOf(effect), "rate while made 44100, open");
        effect.start(48000.0, 256);
        effect.setProgram(0);
        effect.setParameter(0, 0.5f);
        std::vector<float> left(256);
        std::vector<float> right(256);
        float* channels[] = {left.data(), right.data()};
        effect.process(channels, channels, 100);
        effect.process(channels, channels, 256);
        effect.stop();
        journal = &journalOf(effect);
        EXPECT_EQ(journalOf(effect),
                  "rate while made 44100, open, rate 48000, block 256, on, start, "
                  "process 256 at 0 level 4 standing, process 256 at 0 level 4 standing, begin "
                  "program, program 0, end program, knob 50, "
                  "process 100 at 0 level 4, process 256 at 100 level 4, stop, off");
    }
    EXPECT_THAT(*journal, testing::EndsWith("off, close, gone"));
}

TEST(EffectInstance, StopsARunningEffectBeforeItCloses) {
    const auto module = loadTestPlugin("Journal");
    const std::string* journal = nullptr;
    {
        EffectInstance effect(module);
        effect.start(44100.0, 64);
        journal = &journalOf(effect);
    }
    EXPECT_THAT(*journal, testing::EndsWith("stop, off, close, gone"));
}

// The journal's effect resets its parameter at the first block of a new rate.
TEST(EffectInstance, ParametersSetAfterStartOutliveARateChange) {
    EffectInstance effect(loadTestPlugin("Journal"));
    effect.start(48000.0, 4);
    effect.setParameter(0, 0.5f);
    float left[] = {1.0f, 1.0f};
    float right[] = {1.0f, 1.0f};
    float* channels[] = {left, right};
    effect.process(channels, channels, 2);
    EXPECT_EQ(left[0], 0.5f);
    EXPECT_EQ(effect.parameter(0), 0.5f);
}

TEST(EffectInstance, TellsWhatTheEffectSays) {
    EffectInstance effect(loadTestPlugin("Gain"));
    EXPECT_EQ(effect.name(), "Gain");
    EXPECT_EQ(effect.vendorName(), "Testers");
    EXPECT_EQ(effect.productName(), "Gain for Tests");
    EXPECT_EQ(effect.vendorVersion(), 1234);
    EXPECT_EQ(effect.interfaceVersion(), 2400);
    EXPECT_EQ(effect.category(), kPlugCategEffect);
    EXPECT_EQ(effect.tailSize(), 1);
    EXPECT_EQ(effect.parameterCount(), 2);
    EXPECT_EQ(effect.parameterName(0), "Gain");
    EXPECT_EQ(effect.parameterLabel(0), "times");
    EXPECT_EQ(effect.parameterDisplay(0), "1.00");
    EXPECT_TRUE(effect.isAutomatable(0));
    EXPECT_FALSE(effect.isAutomatable(1));
    EXPECT_EQ(effect.programNames(), (std::vector<std::string>{"Unity", "Half", "808"}));
    effect.setProgram(1);
    EXPECT_EQ(effect.currentProgram(), 1);
    EXPECT_EQ(effect.parameter(0), 0.5f);
}

TEST(EffectInstance, NamesProgramsThatOnlyTheCurrentOneTellsAndGoesBack) {
    EffectInstance effect(loadTestPlugin("Delay"));
    EXPECT_EQ(effect.programNames(), (std::vector<std::string>{"Short", "Long", "Forever"}));
    EXPECT_EQ(effect.currentProgram(), 0);
}

TEST(EffectInstance, CallsANamelessEffectAfterItsFile) {
    EXPECT_EQ(EffectInstance(loadTestPlugin("Mono")).name(), "Mono");
}

TEST(EffectInstance, SurvivesTextsFarBeyondTheLimits) {
    EffectInstance effect(loadTestPlugin("Rude"));
    EXPECT_EQ(effect.name(), "Rude Effect \xEF\xBF\xBD [31m");
    EXPECT_EQ(effect.parameterName(2), std::string(1000, 'n'));
    EXPECT_EQ(effect.parameterLabel(0), std::string(200, 'l'));
    EXPECT_EQ(effect.parameterDisplay(0), "");
    EXPECT_EQ(effect.programNames().at(0), std::string(3000, 'p'));
}

TEST(EffectInstance, RefusesAPluginThatMakesNoEffect) {
    EXPECT_THROW(EffectInstance(loadTestPlugin("Null")), UserError);
    EXPECT_THROW(EffectInstance(loadTestPlugin("WrongMagic")), UserError);
}

TEST(EffectInstance, RefusesToDriveWhatItCannot) {
    for (const char* plugin : {"Accumulating", "Instrument"}) {
        EXPECT_THROW(EffectInstance(loadTestPlugin(plugin)).requireAudio(), UserError) << plugin;
    }
    for (const char* plugin : {"Gain", "Mono", "MonoToStereo"}) {
        EXPECT_NO_THROW(EffectInstance(loadTestPlugin(plugin)).requireAudio()) << plugin;
    }
}

TEST(EffectInstance, KeepsTwoEffectsApart) {
    const auto module = loadTestPlugin("Gain");
    EffectInstance one(module);
    EffectInstance two(module);
    one.setParameter(0, 0.25f);
    EXPECT_EQ(one.parameter(0), 0.25f);
    EXPECT_EQ(two.parameter(0), 1.0f);
}
