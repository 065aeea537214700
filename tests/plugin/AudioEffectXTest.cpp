#include "plugin/AudioEffectX.h"

#include "plugin/CanDos.h"
#include "tests/plugin/PlainEffect.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

TEST(AudioEffectX, DefaultsAreNeutral) {
    PlainEffectX effect;
    char text[4] = {'a', 'b', 'c', 'd'};
    EXPECT_TRUE(effect.canParameterBeAutomated(0));
    EXPECT_TRUE(effect.canParameterBeAutomated(-1));
    EXPECT_FALSE(effect.string2parameter(0, text));
    EXPECT_FALSE(effect.getParameterProperties(0, nullptr));
    EXPECT_FALSE(effect.getProgramNameIndexed(0, 0, text));
    EXPECT_FALSE(effect.beginSetProgram());
    EXPECT_FALSE(effect.endSetProgram());
    EXPECT_EQ(effect.beginLoadBank(nullptr), 0);
    EXPECT_EQ(effect.beginLoadProgram(nullptr), 0);
    EXPECT_FALSE(effect.getInputProperties(0, nullptr));
    EXPECT_FALSE(effect.getOutputProperties(0, nullptr));
    EXPECT_FALSE(effect.setSpeakerArrangement(nullptr, nullptr));
    EXPECT_FALSE(effect.setBypass(true));
    EXPECT_FALSE(effect.setPanLaw(1, 0.5f));
    EXPECT_FALSE(effect.setProcessPrecision(1));
    EXPECT_EQ(effect.getNumMidiInputChannels(), 0);
    EXPECT_EQ(effect.getNumMidiOutputChannels(), 0);
    EXPECT_EQ(effect.processEvents(nullptr), 0);
    EXPECT_EQ(effect.startProcess(), 0);
    EXPECT_EQ(effect.stopProcess(), 0);
    EXPECT_FALSE(effect.processVariableIo(nullptr));
    EXPECT_EQ(effect.setTotalSampleToProcess(-12345), -12345);
    EXPECT_EQ(effect.getGetTailSize(), 0);
    EXPECT_FALSE(effect.getEffectName(text));
    EXPECT_FALSE(effect.getVendorString(text));
    EXPECT_FALSE(effect.getProductString(text));
    EXPECT_EQ(effect.getVendorVersion(), 0);
    EXPECT_EQ(effect.vendorSpecific(1, 2, nullptr, 3.0f), 0);
    EXPECT_EQ(effect.canDo(nullptr), 0);
    EXPECT_EQ(effect.getVstVersion(), 2400);
    EXPECT_EQ(effect.getMidiProgramName(0, nullptr), 0);
    EXPECT_EQ(effect.getCurrentMidiProgram(0, nullptr), -1);
    EXPECT_EQ(effect.getMidiProgramCategory(0, nullptr), 0);
    EXPECT_FALSE(effect.hasMidiProgramsChanged(0));
    EXPECT_FALSE(effect.getMidiKeyName(0, nullptr));
    EXPECT_EQ(effect.getNextShellPlugin(text), 0);
    EXPECT_FALSE(effect.offlineNotify(nullptr, 1, true));
    EXPECT_FALSE(effect.offlinePrepare(nullptr, 1));
    EXPECT_FALSE(effect.offlineRun(nullptr, 1));
    EXPECT_EQ(effect.offlineGetNumPasses(), 0);
    EXPECT_EQ(effect.offlineGetNumMetaPasses(), 0);
    EXPECT_EQ(effect.getNumCategories(), 1);
    EXPECT_FALSE(effect.copyProgram(1));
    EXPECT_EQ(effect.reportCurrentPosition(), 0);
    EXPECT_EQ(effect.reportDestinationBuffer(), nullptr);
    EXPECT_FALSE(effect.getErrorText(text));
    EXPECT_EQ(effect.getIcon(), nullptr);
    EXPECT_FALSE(effect.setViewPosition(1, 2));
    EXPECT_EQ(effect.fxIdle(), 0);
    EXPECT_FALSE(effect.keysRequired());
    EXPECT_EQ(std::string(text, 4), "abcd") << "a default wrote into its caller's text";
}

TEST(AudioEffectX, SpeakerArrangementDefaultAnswersNoneForBoth) {
    PlainEffectX effect;
    VstSpeakerArrangement arrangement;
    VstSpeakerArrangement* in = &arrangement;
    VstSpeakerArrangement* out = &arrangement;
    EXPECT_FALSE(effect.getSpeakerArrangement(&in, &out));
    EXPECT_EQ(in, nullptr);
    EXPECT_EQ(out, nullptr);
}

TEST(AudioEffectX, PinConnectionNoticesChangeNothing) {
    PlainEffectX effect;
    const std::string before(reinterpret_cast<const char*>(&effect), sizeof(effect));
    effect.inputConnected(0, true);
    effect.outputConnected(1, false);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&effect), sizeof(effect)), before);
}

TEST(AudioEffectX, CategoryFollowsTheSynthFlag) {
    PlainEffectX effect;
    EXPECT_EQ(effect.getPlugCategory(), 0);
    effect.isSynth(true);
    EXPECT_EQ(effect.getPlugCategory(), 2);
    EXPECT_EQ(effect.dispatcher(effGetPlugCategory, 0, 0, nullptr, 0.0f), 2);
    effect.isSynth(false);
    EXPECT_EQ(effect.getPlugCategory(), 0);
    EXPECT_EQ(effect.dispatcher(effGetPlugCategory, 0, 0, nullptr, 0.0f), 0);
}

TEST(AudioEffectX, DispatchedDefaultsAnswerAsTheInterfaceExpects) {
    PlainEffectX effect;
    const auto ask = [&](VstInt32 opcode, VstIntPtr value = 0) {
        return effect.dispatcher(opcode, 0, value, nullptr, 0.0f);
    };
    EXPECT_EQ(ask(effCanBeAutomated), 1);
    EXPECT_EQ(ask(effSetBypass, 1), 0);
    EXPECT_EQ(ask(effSetBypass, 77), 0);
    EXPECT_EQ(ask(effCanDo), 0);
    EXPECT_EQ(ask(effGetVstVersion), 2400);
    EXPECT_EQ(ask(effGetCurrentMidiProgram), -1);
    EXPECT_EQ(ask(effGetMidiProgramName), 0);
    EXPECT_EQ(ask(effGetMidiProgramCategory), 0);
    EXPECT_EQ(ask(effSetTotalSampleToProcess, 100), 100);
    EXPECT_EQ(ask(effSetTotalSampleToProcess, 0x180000000), -0x80000000LL);
    EXPECT_EQ(ask(effGetNumProgramCategories), 0) << "though the operation would answer 1";
    EXPECT_EQ(effect.getNumCategories(), 1);
}

TEST(AudioEffectX, GivenUpBlockSizeOpcodeStoresNothing) {
    PlainEffectX effect;
    EXPECT_EQ(effect.dispatcher(effSetBlockSizeAndSampleRate, 0, 512, nullptr, 96000.0f), 0);
    EXPECT_EQ(effect.blockSize, 1024);
    EXPECT_EQ(effect.sampleRate, 44100.0f);
}

TEST(AudioEffectX, CapabilityStringsStandInOrder) {
    const std::vector<std::string> host = {"sendVstEvents",
                                           "sendVstMidiEvent",
                                           "sendVstTimeInfo",
                                           "receiveVstEvents",
                                           "receiveVstMidiEvent",
                                           "reportConnectionChanges",
                                           "acceptIOChanges",
                                           "sizeWindow",
                                           "offline",
                                           "openFileSelector",
                                           "closeFileSelector",
                                           "startStopProcess",
                                           "shellCategory",
                                           "sendVstMidiEventFlagIsRealtime"};
    const std::vector<std::string> plug = {
        "sendVstEvents",      "sendVstMidiEvent", "receiveVstEvents", "receiveVstMidiEvent",
        "receiveVstTimeInfo", "offline",          "midiProgramNames", "bypass"};
    EXPECT_EQ(std::vector<std::string>(std::begin(HostCanDos), std::end(HostCanDos)), host);
    EXPECT_EQ(std::vector<std::string>(std::begin(PlugCanDos), std::end(PlugCanDos)), plug);
}
