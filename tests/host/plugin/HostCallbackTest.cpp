#include "host/plugin/HostCallback.h"

#include "plugin/vst2/HostOpcodes.h"

#include <gtest/gtest.h>

#include <thread>

#include <cstring>

using namespace tvhost;

namespace {

VstIntPtr ask(AEffect* effect, VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
              void* ptr = nullptr) {
    return HostCallback::entry(effect, opcode, index, value, ptr, 0.0f);
}

VstIntPtr canDo(const char* ability) {
    char text[64];
    std::strcpy(text, ability);
    return ask(nullptr, audioMasterCanDo, 0, 0, text);
}

} // namespace

TEST(HostCallback, AnswersWithoutAnEffectWhatNeedsNone) {
    EXPECT_EQ(ask(nullptr, audioMasterVersion), 2400);
    EXPECT_GT(ask(nullptr, audioMasterGetVendorVersion), 0);
    EXPECT_EQ(ask(nullptr, audioMasterGetLanguage), 1);
    char text[65] = {};
    EXPECT_EQ(ask(nullptr, audioMasterGetVendorString, 0, 0, text), 1);
    EXPECT_STREQ(text, "Tarnvale Music");
    EXPECT_EQ(ask(nullptr, audioMasterGetProductString, 0, 0, text), 1);
    EXPECT_STREQ(text, "tvhost");
    EXPECT_EQ(canDo("sendVstTimeInfo"), 1);
    EXPECT_EQ(canDo("startStopProcess"), 1);
    EXPECT_EQ(canDo("sendVstMidiEvent"), 0);
    EXPECT_EQ(canDo("sizeWindow"), 1);
    EXPECT_EQ(canDo("openFileSelector"), 0);
}

TEST(HostCallback, TakesNullTextsAndStrayEffectsCalmly) {
    EXPECT_EQ(ask(nullptr, audioMasterGetVendorString), 0);
    EXPECT_EQ(ask(nullptr, audioMasterCanDo), 0);
    AEffect stray{};
    for (VstInt32 opcode = -1; opcode < 60; ++opcode) {
        ask(&stray, opcode);
    }
    EXPECT_EQ(ask(&stray, audioMasterGetSampleRate), 0);
    EXPECT_EQ(ask(nullptr, audioMasterGetTime), 0);
}

TEST(HostCallback, ServesTheEffectUnderConstructionThenTheBoundOne) {
    HostCallback first("/folder/one");
    first.setSampleRate(48000.0);
    AEffect effect{};
    EXPECT_EQ(ask(&effect, audioMasterGetSampleRate), 48000);
    EXPECT_EQ(ask(nullptr, audioMasterGetSampleRate), 48000);
    first.bind(effect);
    EXPECT_EQ(ask(&effect, audioMasterGetSampleRate), 48000);
    EXPECT_EQ(ask(nullptr, audioMasterGetSampleRate), 0);

    HostCallback second("/folder/two");
    AEffect other{};
    second.bind(other);
    second.setSampleRate(96000.0);
    EXPECT_EQ(ask(&effect, audioMasterGetSampleRate), 48000);
    EXPECT_EQ(ask(&other, audioMasterGetSampleRate), 96000);
}

TEST(HostCallback, AnswersFromItsState) {
    HostCallback host("/folder");
    AEffect effect{};
    effect.numInputs = 2;
    effect.numOutputs = 1;
    effect.numParams = 9;
    host.bind(effect);
    host.setBlockSize(64);
    EXPECT_EQ(ask(&effect, audioMasterGetBlockSize), 64);
    EXPECT_EQ(ask(&effect, audioMasterGetNumAutomatableParameters), 9);
    EXPECT_STREQ(reinterpret_cast<const char*>(ask(&effect, audioMasterGetDirectory)), "/folder");
    EXPECT_EQ(ask(&effect, audioMasterGetCurrentProcessLevel), 1);
    host.setProcessing(true);
    EXPECT_EQ(ask(&effect, audioMasterGetCurrentProcessLevel), 4);
    // A window's thread does not process while the sound's does.
    VstIntPtr elsewhere = 0;
    std::thread([&] { elsewhere = ask(&effect, audioMasterGetCurrentProcessLevel); }).join();
    EXPECT_EQ(elsewhere, 1);
    host.setRealTime(true);
    EXPECT_EQ(ask(&effect, audioMasterGetCurrentProcessLevel), 2);
    EXPECT_EQ(ask(&effect, audioMasterGetInputLatency), 0);
    EXPECT_EQ(ask(&effect, audioMasterIOChanged), 1);
}

TEST(HostCallback, GrantsASizeWhenSomebodyTakesIt) {
    HostCallback host("/folder");
    AEffect effect{};
    host.bind(effect);
    EXPECT_EQ(ask(&effect, audioMasterSizeWindow, 300, 200), 0);
    int width = 0, height = 0;
    host.setSizeRequestHandler([&](int w, int h) {
        width = w;
        height = h;
        return w < 1000;
    });
    EXPECT_EQ(ask(&effect, audioMasterSizeWindow, 300, 200), 1);
    EXPECT_EQ(width, 300);
    EXPECT_EQ(height, 200);
    EXPECT_EQ(ask(&effect, audioMasterSizeWindow, 1000, 200), 0);
    host.setSizeRequestHandler(nullptr);
    EXPECT_EQ(ask(&effect, audioMasterSizeWindow, 300, 200), 0);
}

TEST(HostCallback, CallsPinsConnectedThatTheEffectHas) {
    HostCallback host("/folder");
    AEffect effect{};
    effect.numInputs = 2;
    effect.numOutputs = 1;
    host.bind(effect);
    // 0 stands for connected.
    EXPECT_EQ(ask(&effect, audioMasterPinConnected, 0, 0), 0);
    EXPECT_EQ(ask(&effect, audioMasterPinConnected, 1, 0), 0);
    EXPECT_NE(ask(&effect, audioMasterPinConnected, 2, 0), 0);
    EXPECT_EQ(ask(&effect, audioMasterPinConnected, 0, 1), 0);
    EXPECT_NE(ask(&effect, audioMasterPinConnected, 1, 1), 0);
    EXPECT_NE(ask(&effect, audioMasterPinConnected, -1, 0), 0);
}

TEST(HostCallback, TimeFollowsThePosition) {
    HostCallback host("/folder");
    AEffect effect{};
    host.bind(effect);
    host.setSampleRate(48000.0);
    host.setPosition(48000 * 5);
    const auto* time = reinterpret_cast<const VstTimeInfo*>(ask(&effect, audioMasterGetTime));
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(time->samplePos, 240000.0);
    EXPECT_EQ(time->sampleRate, 48000.0);
    EXPECT_EQ(time->nanoSeconds, 5e9);
    EXPECT_EQ(time->tempo, 120.0);
    EXPECT_EQ(time->ppqPos, 10.0);
    EXPECT_EQ(time->barStartPos, 8.0);
    EXPECT_EQ(time->timeSigNumerator, 4);
    EXPECT_EQ(time->timeSigDenominator, 4);
    // Playing, with nanoseconds, beats, tempo, bars and time signature.
    EXPECT_EQ(time->flags, 0x2F02);

    host.setTempo(90.0);
    time = reinterpret_cast<const VstTimeInfo*>(ask(&effect, audioMasterGetTime));
    EXPECT_EQ(time->tempo, 90.0);
    EXPECT_EQ(time->ppqPos, 7.5);
    EXPECT_EQ(time->barStartPos, 4.0);
    EXPECT_EQ(ask(&effect, audioMasterTempoAt), 900000);
}
