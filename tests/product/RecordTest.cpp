// The record of the built plug-in, and what its dispatcher answers.
#include "tests/product/BuiltPlugin.h"

#include "plugin/vst2/Records.h"
#include "tests/support/FactoryTable.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

class Record : public BuiltPlugin {};

} // namespace

TEST_F(Record, ShowsTheEffectsIdentity) {
    const Instance instance(plugin);
    ASSERT_NE(instance.record(), nullptr);
    EXPECT_EQ(instance->magic, 0x56737450);
    EXPECT_EQ(instance->uniqueID, 0x54764479);
    EXPECT_EQ(instance->version, 1);
    EXPECT_EQ(instance->numPrograms, 26);
    EXPECT_EQ(instance->numParams, 9);
    EXPECT_EQ(instance->numInputs, 2);
    EXPECT_EQ(instance->numOutputs, 2);
    EXPECT_EQ(instance->flags, 0x11);
    EXPECT_EQ(instance->initialDelay, 0);
    EXPECT_EQ(instance->ioRatio, 1.0f);
    EXPECT_NE(instance->dispatcher, nullptr);
    EXPECT_NE(instance->process, nullptr);
    EXPECT_NE(instance->setParameter, nullptr);
    EXPECT_NE(instance->getParameter, nullptr);
    EXPECT_NE(instance->processReplacing, nullptr);
    EXPECT_NE(instance->processDoubleReplacing, nullptr);
}

TEST_F(Record, HostIsAskedForItsVersionAndNothingElse) {
    RecordingHost host;
    const Instance instance(plugin, RecordingHost::callback);
    ASSERT_NE(instance.record(), nullptr);
    EXPECT_EQ(host.calls, (std::vector<HostCall>{{nullptr, 1, 0, 0, nullptr, 0.0f}}));
}

TEST_F(Record, HostWithoutAVersionGetsNoInstance) {
    RecordingHost host;
    host.answersTo[1] = 0;
    EXPECT_EQ(plugin.entry()(RecordingHost::callback), nullptr);
    for (const VstIntPtr version : {1, 2, -1}) {
        host.answersTo[1] = version;
        const Instance instance(plugin, RecordingHost::callback);
        EXPECT_NE(instance.record(), nullptr) << version;
    }
}

TEST_F(Record, ClosingAnswersOne) {
    Instance instance(plugin);
    EXPECT_EQ(instance.close(), 1);
}

TEST_F(Record, EveryOpcodeAnswers) {
    const Instance instance(plugin);
    VstPinProperties pin;
    MidiKeyName key;
    ERect* rect = nullptr;
    void* chunk = nullptr;
    char text[256] = "name";
    VstSpeakerArrangement* arrangements[2] = {reinterpret_cast<VstSpeakerArrangement*>(1),
                                              reinterpret_cast<VstSpeakerArrangement*>(1)};
    struct Row {
        VstInt32 opcode, index;
        VstIntPtr value;
        void* ptr;
        float opt;
        VstIntPtr result;
    };
    const Row rows[] = {
        {effOpen, 0, 0, nullptr, 0.0f, 0},
        {effSetProgram, 0, 4, nullptr, 0.0f, 0},
        {effGetProgram, 0, 0, nullptr, 0.0f, 4},
        {effSetProgramName, 0, 0, text, 0.0f, 0},
        {effGetProgramName, 0, 0, text, 0.0f, 0},
        {effGetParamLabel, 0, 0, text, 0.0f, 0},
        {effGetParamDisplay, 0, 0, text, 0.0f, 0},
        {effGetParamName, 0, 0, text, 0.0f, 0},
        {effGetVu, 0, 0, nullptr, 0.0f, 0},
        {effSetSampleRate, 0, 0, nullptr, 48000.0f, 0},
        {effSetBlockSize, 0, 512, nullptr, 0.0f, 0},
        {effMainsChanged, 0, 1, nullptr, 0.0f, 0},
        {effMainsChanged, 0, 0, nullptr, 0.0f, 0},
        {effEditGetRect, 0, 0, &rect, 0.0f, 1},
        {effEditClose, 0, 0, nullptr, 0.0f, 0},
        {effEditDraw, 0, 0, nullptr, 0.0f, 0},
        {effEditMouse, 0, 0, nullptr, 0.0f, 0},
        {effEditKey, 0, 0, nullptr, 0.0f, 0},
        {effEditIdle, 0, 0, nullptr, 0.0f, 0},
        {effEditTop, 0, 0, nullptr, 0.0f, 0},
        {effEditSleep, 0, 0, nullptr, 0.0f, 0},
        {effIdentify, 0, 0, nullptr, 0.0f, 0x4E764566},
        {effGetChunk, 0, 0, &chunk, 0.0f, 0},
        {effSetChunk, 1, 4, text, 0.0f, 0},
        {effProcessEvents, 0, 0, nullptr, 0.0f, 0},
        {effCanBeAutomated, 0, 0, nullptr, 0.0f, 1},
        {effString2Parameter, 0, 0, text, 0.0f, 0},
        {effGetNumProgramCategories, 0, 0, nullptr, 0.0f, 0},
        {effGetProgramNameIndexed, 25, 7, text, 0.0f, 1},
        {effGetProgramNameIndexed, 26, 0, text, 0.0f, 0},
        {effCopyProgram, 1, 0, nullptr, 0.0f, 0},
        {effConnectInput, 0, 1, nullptr, 0.0f, 0},
        {effConnectOutput, 0, 1, nullptr, 0.0f, 0},
        {effGetInputProperties, 0, 0, &pin, 0.0f, 0},
        {effGetOutputProperties, 0, 0, &pin, 0.0f, 1},
        {effGetOutputProperties, 2, 0, &pin, 0.0f, 0},
        {effGetPlugCategory, 0, 0, nullptr, 0.0f, 1},
        {effGetCurrentPosition, 0, 0, nullptr, 0.0f, 0},
        {effGetDestinationBuffer, 0, 0, nullptr, 0.0f, 0},
        {effOfflineNotify, 1, 0, nullptr, 0.0f, 0},
        {effOfflinePrepare, 0, 0, nullptr, 0.0f, 0},
        {effOfflineRun, 0, 0, nullptr, 0.0f, 0},
        {effProcessVarIo, 0, 0, nullptr, 0.0f, 0},
        {effSetSpeakerArrangement, 0, 0, nullptr, 0.0f, 0},
        {effSetBlockSizeAndSampleRate, 0, 64, nullptr, 96000.0f, 0},
        {effSetBypass, 0, 1, nullptr, 0.0f, 0},
        {effGetEffectName, 0, 0, text, 0.0f, 1},
        {effGetErrorText, 0, 0, text, 0.0f, 0},
        {effGetVendorString, 0, 0, text, 0.0f, 1},
        {effGetProductString, 0, 0, text, 0.0f, 1},
        {effGetVendorVersion, 0, 0, nullptr, 0.0f, 1000},
        {effVendorSpecific, 1, 2, text, 3.0f, 0},
        {effCanDo, 0, 0, text, 0.0f, -1},
        {effCanDo, 0, 0, nullptr, 0.0f, -1},
        {effGetTailSize, 0, 0, nullptr, 0.0f, 0},
        {effIdle, 0, 0, nullptr, 0.0f, 0},
        {effGetIcon, 0, 0, nullptr, 0.0f, 0},
        {effSetViewPosition, 1, 2, nullptr, 0.0f, 0},
        {effGetParameterProperties, 0, 0, text, 0.0f, 0},
        {effKeysRequired, 0, 0, nullptr, 0.0f, 0},
        {effGetVstVersion, 0, 0, nullptr, 0.0f, 2400},
        {effEditKeyDown, 65, 1, nullptr, 2.0f, 0},
        {effEditKeyUp, 65, 1, nullptr, 2.0f, 0},
        {effSetEditKnobMode, 0, 2, nullptr, 0.0f, 1},
        {effGetMidiProgramName, 0, 0, text, 0.0f, 0},
        {effGetCurrentMidiProgram, 0, 0, text, 0.0f, -1},
        {effGetMidiProgramCategory, 0, 0, text, 0.0f, 0},
        {effHasMidiProgramsChanged, 0, 0, nullptr, 0.0f, 0},
        {effGetMidiKeyName, 0, 0, &key, 0.0f, 0},
        {effBeginSetProgram, 0, 0, nullptr, 0.0f, 0},
        {effEndSetProgram, 0, 0, nullptr, 0.0f, 0},
        {effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&arrangements[0]),
         &arrangements[1], 0.0f, 0},
        {effShellGetNextPlugin, 0, 0, text, 0.0f, 0},
        {effStartProcess, 0, 0, nullptr, 0.0f, 0},
        {effStopProcess, 0, 0, nullptr, 0.0f, 0},
        {effSetTotalSampleToProcess, 0, 44100, nullptr, 0.0f, 44100},
        {effSetPanLaw, 0, 1, nullptr, 0.5f, 0},
        {effBeginLoadBank, 0, 0, nullptr, 0.0f, 0},
        {effBeginLoadProgram, 0, 0, nullptr, 0.0f, 0},
        {effSetProcessPrecision, 0, 1, nullptr, 0.0f, 0},
        {effGetNumMidiInputChannels, 0, 0, nullptr, 0.0f, 0},
        {effGetNumMidiOutputChannels, 0, 0, nullptr, 0.0f, 0},
    };
    std::map<VstInt32, int> asked;
    for (const Row& row : rows) {
        EXPECT_EQ(instance.ask(row.opcode, row.index, row.value, row.ptr, row.opt), row.result)
            << row.opcode;
        ++asked[row.opcode];
    }
    for (VstInt32 opcode = 0; opcode < 80; ++opcode) {
        // Opening and closing have tests of their own.
        EXPECT_EQ(asked.count(opcode), opcode == effClose || opcode == effEditOpen ? 0u : 1u)
            << opcode;
    }
    EXPECT_EQ(arrangements[0], nullptr);
    EXPECT_EQ(arrangements[1], nullptr);
    EXPECT_EQ(chunk, nullptr);
    EXPECT_STREQ(pin.label, "TvDy 1");
    EXPECT_EQ(pin.flags, 3);
}

TEST_F(Record, UnknownOpcodesAnswerZero) {
    const Instance instance(plugin);
    for (const VstInt32 opcode : {80, 81, 1000, -1, -100, std::numeric_limits<VstInt32>::max(),
                                  std::numeric_limits<VstInt32>::min()}) {
        EXPECT_EQ(instance.ask(opcode, 1, 2, nullptr, 3.0f), 0) << opcode;
    }
}

TEST_F(Record, TellsItsNames) {
    const Instance instance(plugin);
    EXPECT_EQ(instance.text(effGetEffectName), "TvDelay");
    EXPECT_EQ(instance.text(effGetVendorString), "Tarnvale Music");
    EXPECT_EQ(instance.text(effGetProductString), "Tarnvale's Delay");
}

TEST_F(Record, TellsItsParameters) {
    const Instance instance(plugin);
    struct Row {
        const char *name, *label, *display;
    };
    const Row rows[9] = {{"Delay", "samples", "3526"},
                         {"FeedBack", "amount", "0.215000"},
                         {"lowPass", "%", "0.374000"},
                         {"highPass", "%", "0.655999"},
                         {"lowPass Type", "on/off", "1"},
                         {"highPass Type", "on/off", ""},
                         {"Left/Right", "left/right", "0.500000"},
                         {"Pan Depth", "%", "0.000000"},
                         {"MIX", "%", "1.000000"}};
    for (VstInt32 index = 0; index < 9; ++index) {
        EXPECT_EQ(instance.text(effGetParamName, index), rows[index].name);
        EXPECT_EQ(instance.text(effGetParamLabel, index), rows[index].label);
        EXPECT_EQ(instance.text(effGetParamDisplay, index), rows[index].display);
        EXPECT_EQ(instance.ask(effCanBeAutomated, index), 1);
    }
    for (const VstInt32 index : {-1, 9, 1000}) {
        EXPECT_EQ(instance.text(effGetParamName, index), "untouched");
        EXPECT_EQ(instance.text(effGetParamLabel, index), "untouched");
        EXPECT_EQ(instance.text(effGetParamDisplay, index), "untouched");
        EXPECT_EQ(instance.get(index), 0.0f);
    }
}

TEST_F(Record, TellsItsPrograms) {
    const Instance instance(plugin);
    for (VstInt32 program = 0; program < 26; ++program) {
        const FactoryRow& row = kFactoryTable[program];
        EXPECT_EQ(instance.text(effGetProgramNameIndexed, program, -1), row.name);
        instance.ask(effSetProgram, 0, program);
        EXPECT_EQ(instance.ask(effGetProgram), program);
        EXPECT_EQ(instance.text(effGetProgramName), row.name);
        EXPECT_EQ(instance.text(effGetParamDisplay, 0), std::to_string(row.lengthAt44100));
        const float values[9] = {row.delayTime,
                                 row.feedBack,
                                 static_cast<float>(row.lowPass),
                                 static_cast<float>(row.highPass),
                                 row.highPass != 0.0 ? 1.0f : 0.0f,
                                 row.highPassType ? 1.0f : 0.0f,
                                 static_cast<float>(row.leftRight),
                                 static_cast<float>(row.panDepth),
                                 static_cast<float>(row.mix)};
        for (VstInt32 index = 0; index < 9; ++index) {
            EXPECT_EQ(instance.get(index), values[index]) << program << ", " << index;
        }
    }
}

TEST_F(Record, ProgramsOutsideTheBankAreIgnored) {
    const Instance instance(plugin);
    instance.ask(effSetProgram, 0, 5);
    for (const VstIntPtr program : {VstIntPtr{26}, VstIntPtr{-1}, VstIntPtr{1} << 32,
                                    VstIntPtr{1} << 40, std::numeric_limits<VstIntPtr>::max()}) {
        EXPECT_EQ(instance.ask(effSetProgram, 0, program), 0);
        EXPECT_EQ(instance.ask(effGetProgram), 5) << program;
    }
}

TEST_F(Record, EditsAndNamesStayWithTheirProgram) {
    const Instance instance(plugin);
    instance.ask(effSetProgram, 0, 3);
    instance.set(8, 0.25f);
    char name[] = "abcdefghijklmnopqrstuvwxyz0123";
    instance.ask(effSetProgramName, 0, 0, name);
    instance.ask(effSetProgram, 0, 4);
    EXPECT_EQ(instance.get(8), 1.0f);
    EXPECT_EQ(instance.text(effGetProgramName), "Double Echo");
    instance.ask(effSetProgram, 0, 3);
    EXPECT_EQ(instance.get(8), 0.25f);
    EXPECT_EQ(instance.text(effGetProgramName), "abcdefghijklmnopqrstuvwx");
    EXPECT_EQ(instance.text(effGetProgramNameIndexed, 3), "abcdefghijklmnopqrstuvwx");
}

TEST_F(Record, EditorTellsItsSizeBeforeItOpens) {
    const Instance instance(plugin);
    ERect* rect = nullptr;
    EXPECT_EQ(instance.ask(effEditGetRect, 0, 0, &rect), 1);
    ASSERT_NE(rect, nullptr);
    EXPECT_EQ(rect->top, 0);
    EXPECT_EQ(rect->left, 0);
    EXPECT_EQ(rect->bottom, 400);
    EXPECT_EQ(rect->right, 344);
}

TEST_F(Record, ReservedFieldsStayTheHosts) {
    const Instance instance(plugin);
    int mine = 0;
    instance->user = &mine;
    instance->resvd1 = 17;
    instance->resvd2 = 18;
    instance.ask(effOpen);
    instance.ask(effMainsChanged, 0, 1);
    instance.ask(effSetProgram, 0, 9);
    EXPECT_EQ(instance->user, &mine);
    EXPECT_EQ(instance->resvd1, 17);
    EXPECT_EQ(instance->resvd2, 18);
}
