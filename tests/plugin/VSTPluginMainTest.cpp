// The entry by itself, with instances of the test's own behind it.
#include "plugin/VSTPluginMain.h"

#include "tests/plugin/PlainEffect.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace {

int instancesAsked = 0;
audioMasterCallback instanceHost = nullptr;
AudioEffect* instance = nullptr;
bool allocationFails = false;

// Its record is another one than its base's.
class Elsewhere : public PlainEffect {
public:
    AEffect* getAeffect() override { return &record; }
    AEffect record{};
};

class VSTPluginMainTest : public testing::Test {
protected:
    VSTPluginMainTest() {
        instancesAsked = 0;
        instanceHost = nullptr;
        instance = nullptr;
        allocationFails = false;
    }

    RecordingHost host;
};

} // namespace

AudioEffect* createEffectInstance(audioMasterCallback audioMaster) {
    ++instancesAsked;
    instanceHost = audioMaster;
    if (allocationFails) {
        throw std::bad_alloc();
    }
    return instance;
}

TEST_F(VSTPluginMainTest, AsksTheHostForItsVersionOnceAndWithNothingElse) {
    VSTPluginMain(RecordingHost::callback);
    EXPECT_EQ(host.calls, (std::vector<HostCall>{{nullptr, 1, 0, 0, nullptr, 0.0f}}));
}

TEST_F(VSTPluginMainTest, MakesNothingForAHostThatAnswersZero) {
    PlainEffect effect;
    instance = &effect;
    host.answersTo[1] = 0;
    EXPECT_EQ(VSTPluginMain(RecordingHost::callback), nullptr);
    EXPECT_EQ(instancesAsked, 0);
}

TEST_F(VSTPluginMainTest, TakesAnyOtherAnswerForAVersion) {
    PlainEffect effect;
    instance = &effect;
    for (const VstIntPtr answer : {VstIntPtr{1}, VstIntPtr{-1}, VstIntPtr{2400},
                                   static_cast<VstIntPtr>(std::int64_t{1} << 32)}) {
        host.answersTo[1] = answer;
        EXPECT_EQ(VSTPluginMain(RecordingHost::callback), effect.getAeffect()) << answer;
    }
    EXPECT_EQ(instancesAsked, 4);
    EXPECT_EQ(instanceHost, RecordingHost::callback);
}

TEST_F(VSTPluginMainTest, AnswersNullWithoutAnInstance) {
    EXPECT_EQ(VSTPluginMain(RecordingHost::callback), nullptr);
    EXPECT_EQ(instancesAsked, 1);
}

TEST_F(VSTPluginMainTest, AsksTheInstanceForItsRecord) {
    Elsewhere effect;
    instance = &effect;
    EXPECT_EQ(VSTPluginMain(RecordingHost::callback), &effect.record);
}

TEST_F(VSTPluginMainTest, LetsAFailedAllocationThrough) {
    allocationFails = true;
    EXPECT_THROW(VSTPluginMain(RecordingHost::callback), std::bad_alloc);
}
