// What each opcode calls and answers, row by row.
#include "plugin/AEffEditor.h"
#include "plugin/AudioEffectX.h"
#include "tests/plugin/PlainEffect.h"
#include "tests/plugin/RecordingEffect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr VstIntPtr kWide = 0x1234567890; // more than 32 bits: 0x34567890 when cut
constexpr VstIntPtr kNegative = -5;

// Made-up addresses; nothing looks behind them.
void* at(std::uintptr_t address) {
    return reinterpret_cast<void*>(address);
}

struct Row {
    VstInt32 opcode;
    VstInt32 index;
    VstIntPtr value;
    std::uintptr_t ptr;
    float opt;
    std::string call; // empty: nothing is called
    VstIntPtr answer; // of the operation
    VstIntPtr result; // of the opcode
};

void expectRow(const Row& row) {
    SCOPED_TRACE("opcode " + std::to_string(row.opcode) + ", value " + std::to_string(row.value) +
                 ", answer " + std::to_string(row.answer));
    RecordingEffect effect;
    effect.answer = row.answer;
    EXPECT_EQ(effect.dispatcher(row.opcode, row.index, row.value, at(row.ptr), row.opt),
              row.result);
    const std::vector<std::string> expected =
        row.call.empty() ? std::vector<std::string>{} : std::vector<std::string>{row.call};
    EXPECT_EQ(effect.calls, expected);
}

} // namespace

TEST(Dispatcher, FirstGenerationOpcodes) {
    const Row rows[] = {
        {0, 1, 2, 3, 4.0f, "open()", 9, 0},
        {1, 1, 2, 3, 4.0f, "close()", 9, 0},
        {2, 1, 25, 3, 4.0f, "setProgram(25)", 9, 0},
        {2, 1, 0, 3, 4.0f, "setProgram(0)", 9, 0},
        {2, 1, 26, 3, 4.0f, "", 9, 0},
        {2, 1, kWide, 3, 4.0f, "", 9, 0},
        {2, 1, std::int64_t{1} << 32, 3, 4.0f, "", 9, 0},
        {2, 1, -1, 3, 4.0f, "setProgram(-1)", 9, 0},
        {3, 1, 2, 3, 4.0f, "getProgram()", 17, 17},
        {3, 1, 2, 3, 4.0f, "getProgram()", -17, -17},
        {4, 1, 2, 3, 4.0f, "setProgramName(3)", 9, 0},
        {5, 1, 2, 3, 4.0f, "getProgramName(3)", 9, 0},
        {6, 1, 2, 3, 4.0f, "getParameterLabel(1, 3)", 9, 0},
        {6, -1, 2, 3, 4.0f, "getParameterLabel(-1, 3)", 9, 0},
        {7, 1, 2, 3, 4.0f, "getParameterDisplay(1, 3)", 9, 0},
        {8, 1, 2, 3, 4.0f, "getParameterName(1, 3)", 9, 0},
        {9, 1, 2, 3, 4.0f, "", 9, 0},
        {10, 1, 2, 3, 48000.0f, "setSampleRate(48000)", 9, 0},
        {11, 1, 512, 3, 4.0f, "setBlockSize(512)", 9, 0},
        {11, 1, kWide, 3, 4.0f, "setBlockSize(878082192)", 9, 0},
        {12, 1, 0, 3, 4.0f, "suspend()", 9, 0},
        {12, 1, 1, 3, 4.0f, "resume()", 9, 0},
        {12, 1, std::int64_t{1} << 32, 3, 4.0f, "resume()", 9, 0},
        {12, 1, -1, 3, 4.0f, "resume()", 9, 0},
        {16, 1, 2, 3, 4.0f, "", 9, 0},
        {17, 1, 2, 3, 4.0f, "", 9, 0},
        {18, 1, 2, 3, 4.0f, "", 9, 0},
        {20, 1, 2, 3, 4.0f, "", 9, 0},
        {21, 1, 2, 3, 4.0f, "", 9, 0},
        {22, 1, 2, 3, 4.0f, "", 9, 0x4E764566},
        {22, -1, kWide, 0, -4.0f, "", -9, 0x4E764566},
        {23, 1, 2, 3, 4.0f, "getChunk(3, true)", 21, 21},
        {23, 0, 2, 3, 4.0f, "getChunk(3, false)", -21, -21},
        {23, -1, 2, 3, 4.0f, "getChunk(3, true)", 0, 0},
        {24, 1, 2, 3, 4.0f, "setChunk(3, 2, true)", 22, 22},
        {24, 0, kWide, 3, 4.0f, "setChunk(3, 878082192, false)", -22, -22},
    };
    for (const Row& row : rows) {
        expectRow(row);
    }
}

TEST(Dispatcher, LaterOpcodes) {
    const Row rows[] = {
        {25, 1, 2, 3, 4.0f, "processEvents(3)", 7, 7},
        {25, 1, 2, 3, 4.0f, "processEvents(3)", -7, -7},
        {26, 1, 2, 3, 4.0f, "canParameterBeAutomated(1)", 7, 1},
        {26, -1, 2, 3, 4.0f, "canParameterBeAutomated(-1)", 0, 0},
        {27, 1, 2, 3, 4.0f, "string2parameter(1, 3)", 1, 1},
        {27, 1, 2, 0, 4.0f, "string2parameter(1, 0)", 0, 0},
        {29, 1, 2, 3, 4.0f, "getProgramNameIndexed(2, 1, 3)", 1, 1},
        {29, -1, kNegative, 3, 4.0f, "getProgramNameIndexed(-5, -1, 3)", 0, 0},
        {33, 1, 2, 3, 4.0f, "getInputProperties(1, 3)", 1, 1},
        {33, 0, 2, 3, 4.0f, "getInputProperties(0, 3)", 0, 0},
        {34, 1, 2, 3, 4.0f, "getOutputProperties(1, 3)", 1, 1},
        {34, 0, 2, 3, 4.0f, "getOutputProperties(0, 3)", 0, 0},
        {35, 1, 2, 3, 4.0f, "getPlugCategory()", 2, 2},
        {35, 1, 2, 3, 4.0f, "getPlugCategory()", -1, 0xFFFFFFFF},
        {38, 1, 2, 3, 4.0f, "offlineNotify(3, 2, true)", 1, 1},
        {38, 0, 2, 3, 4.0f, "offlineNotify(3, 2, false)", 0, 0},
        {38, 256, kWide, 3, 4.0f, "offlineNotify(3, 878082192, true)", 1, 1},
        {39, 1, 2, 3, 4.0f, "offlinePrepare(3, 2)", 1, 1},
        {39, 1, 2, 3, 4.0f, "offlinePrepare(3, 2)", 0, 0},
        {40, 1, 2, 3, 4.0f, "offlineRun(3, 2)", 1, 1},
        {40, 1, 2, 3, 4.0f, "offlineRun(3, 2)", 0, 0},
        {41, 1, 2, 3, 4.0f, "processVariableIo(3)", 1, 1},
        {41, 1, 2, 3, 4.0f, "processVariableIo(3)", 0, 0},
        {42, 1, 2, 3, 4.0f, "setSpeakerArrangement(2, 3)", 1, 1},
        {42, 1, kWide, 3, 4.0f, "setSpeakerArrangement(78187493520, 3)", 0, 0},
        {44, 1, 1, 3, 4.0f, "setBypass(true)", 1, 1},
        {44, 1, 0, 3, 4.0f, "setBypass(false)", 1, 1},
        {44, 1, std::int64_t{1} << 32, 3, 4.0f, "setBypass(true)", 0, 0},
        {45, 1, 2, 3, 4.0f, "getEffectName(3)", 1, 1},
        {45, 1, 2, 3, 4.0f, "getEffectName(3)", 0, 0},
        {47, 1, 2, 3, 4.0f, "getVendorString(3)", 1, 1},
        {47, 1, 2, 3, 4.0f, "getVendorString(3)", 0, 0},
        {48, 1, 2, 3, 4.0f, "getProductString(3)", 1, 1},
        {48, 1, 2, 3, 4.0f, "getProductString(3)", 0, 0},
        {49, 1, 2, 3, 4.0f, "getVendorVersion()", 1000, 1000},
        {49, 1, 2, 3, 4.0f, "getVendorVersion()", -1000, -1000},
        {50, 1, kWide, 3, 4.5f, "vendorSpecific(1, 78187493520, 3, 4.5)", kWide, kWide},
        {50, 1, 2, 3, 4.5f, "vendorSpecific(1, 2, 3, 4.5)", kNegative, kNegative},
        {51, 1, 2, 3, 4.0f, "canDo(3)", -1, -1},
        {51, 1, 2, 0, 4.0f, "canDo(0)", 1, 1},
        {52, 1, 2, 3, 4.0f, "getGetTailSize()", 44100, 44100},
        {52, 1, 2, 3, 4.0f, "getGetTailSize()", -1, -1},
        {56, 1, 2, 3, 4.0f, "getParameterProperties(1, 3)", 1, 1},
        {56, 1, 2, 3, 4.0f, "getParameterProperties(1, 3)", 0, 0},
        {58, 1, 2, 3, 4.0f, "getVstVersion()", 2400, 2400},
        {58, 1, 2, 3, 4.0f, "getVstVersion()", -2, -2},
        {62, 1, 2, 3, 4.0f, "getMidiProgramName(1, 3)", 5, 5},
        {62, 1, 2, 3, 4.0f, "getMidiProgramName(1, 3)", -5, -5},
        {63, 1, 2, 3, 4.0f, "getCurrentMidiProgram(1, 3)", 5, 5},
        {63, 1, 2, 3, 4.0f, "getCurrentMidiProgram(1, 3)", -5, -5},
        {64, 1, 2, 3, 4.0f, "getMidiProgramCategory(1, 3)", 5, 5},
        {64, 1, 2, 3, 4.0f, "getMidiProgramCategory(1, 3)", -5, -5},
        {65, 1, 2, 3, 4.0f, "hasMidiProgramsChanged(1)", 1, 1},
        {65, 1, 2, 3, 4.0f, "hasMidiProgramsChanged(1)", 0, 0},
        {66, 1, 2, 3, 4.0f, "getMidiKeyName(1, 3)", 1, 1},
        {66, 1, 2, 3, 4.0f, "getMidiKeyName(1, 3)", 0, 0},
        {67, 1, 2, 3, 4.0f, "beginSetProgram()", 1, 1},
        {67, 1, 2, 3, 4.0f, "beginSetProgram()", 0, 0},
        {68, 1, 2, 3, 4.0f, "endSetProgram()", 1, 1},
        {68, 1, 2, 3, 4.0f, "endSetProgram()", 0, 0},
        {69, 1, 2, 3, 4.0f, "getSpeakerArrangement(2, 3)", 1, 1},
        {69, 1, kWide, 3, 4.0f, "getSpeakerArrangement(78187493520, 3)", 0, 0},
        {70, 1, 2, 3, 4.0f, "getNextShellPlugin(3)", 5, 5},
        {70, 1, 2, 3, 4.0f, "getNextShellPlugin(3)", -5, -5},
        {71, 1, 2, 3, 4.0f, "startProcess()", 5, 5},
        {71, 1, 2, 3, 4.0f, "startProcess()", -5, -5},
        {72, 1, 2, 3, 4.0f, "stopProcess()", 5, 5},
        {72, 1, 2, 3, 4.0f, "stopProcess()", -5, -5},
        {73, 1, 2, 3, 4.0f, "setTotalSampleToProcess(2)", 5, 5},
        {73, 1, kWide, 3, 4.0f, "setTotalSampleToProcess(878082192)", -5, -5},
        {74, 1, 2, 3, 4.5f, "setPanLaw(2, 4.5)", 1, 1},
        {74, 1, kNegative, 3, -4.5f, "setPanLaw(-5, -4.5)", 0, 0},
        {75, 1, 2, 3, 4.0f, "beginLoadBank(3)", 5, 5},
        {75, 1, 2, 3, 4.0f, "beginLoadBank(3)", -1, -1},
        {76, 1, 2, 3, 4.0f, "beginLoadProgram(3)", 5, 5},
        {76, 1, 2, 3, 4.0f, "beginLoadProgram(3)", -1, -1},
        {77, 1, 1, 3, 4.0f, "setProcessPrecision(1)", 1, 1},
        {77, 1, kWide, 3, 4.0f, "setProcessPrecision(878082192)", 0, 0},
        {78, 1, 2, 3, 4.0f, "getNumMidiInputChannels()", 16, 16},
        {78, 1, 2, 3, 4.0f, "getNumMidiInputChannels()", -1, -1},
        {79, 1, 2, 3, 4.0f, "getNumMidiOutputChannels()", 16, 16},
        {79, 1, 2, 3, 4.0f, "getNumMidiOutputChannels()", -1, -1},
    };
    for (const Row& row : rows) {
        expectRow(row);
    }
}

TEST(Dispatcher, GivenUpOpcodesReachNothing) {
    for (const VstInt32 opcode : {28, 30, 31, 32, 36, 37, 43, 46, 53, 54, 55, 57}) {
        expectRow({opcode, 1, 2, 3, 4.0f, "", 7, 0});
    }
}

TEST(Dispatcher, UnknownOpcodesReachNothing) {
    constexpr VstInt32 kLowest = std::numeric_limits<VstInt32>::min();
    constexpr VstInt32 kHighest = std::numeric_limits<VstInt32>::max();
    for (const VstInt32 opcode : {80, 81, 100, 1000, 0x10000, kHighest, -1, -25, -80, kLowest}) {
        expectRow({opcode, 1, 2, 3, 4.0f, "", 7, 0});
    }
}

TEST(Dispatcher, ProgramsAreBoundedByTheEffectsNumberNotByTheRecords) {
    for (const VstInt32 inTheRecord : {0, 3, 1000}) {
        RecordingEffect effect; // of 26 programs
        effect.getAeffect()->numPrograms = inTheRecord;
        effect.dispatcher(effSetProgram, 0, 25, nullptr, 0.0f);
        effect.dispatcher(effSetProgram, 0, 26, nullptr, 0.0f);
        EXPECT_EQ(effect.calls, (std::vector<std::string>{"setProgram(25)"})) << inTheRecord;
    }
}

TEST(Dispatcher, BaseAloneAnswersNothingAboveItsOpcodes) {
    PlainEffect effect;
    for (VstInt32 opcode = 25; opcode <= 100; ++opcode) {
        EXPECT_EQ(effect.dispatcher(opcode, 1, 2, nullptr, 4.0f), 0) << opcode;
    }
    EXPECT_EQ(effect.dispatcher(effIdentify, 0, 0, nullptr, 0.0f), 0x4E764566);
}

TEST(Dispatcher, EditorOpcodesWithoutAnEditorAnswerZero) {
    for (const VstInt32 opcode : {13, 14, 15, 19, 59, 60, 61}) {
        expectRow({opcode, 1, 2, 3, 4.0f, "", 7, 0});
    }
}

namespace {

// Owned by its effect.
class RecordingEditor : public AEffEditor {
public:
    explicit RecordingEditor(std::vector<std::string>* calls) : calls_(calls) {}

    bool answer = false;

    bool getRect(ERect** out) override { return note(callText("getRect", out)); }
    bool open(void* ptr) override { return note(callText("open", ptr)); }
    void close() override { note("close()"); }
    void idle() override { note("idle()"); }
    void draw(ERect*) override { note("draw"); }
    VstInt32 mouse(VstInt32, VstInt32) override { return note("mouse"); }
    VstInt32 key(VstInt32) override { return note("key"); }
    void top() override { note("top"); }
    void sleep() override { note("sleep"); }
    bool onKeyDown(VstKeyCode& code) override { return note(keyText("onKeyDown", code)); }
    bool onKeyUp(VstKeyCode& code) override { return note(keyText("onKeyUp", code)); }
    bool setKnobMode(VstInt32 mode) override { return note(callText("setKnobMode", mode)); }

private:
    static std::string keyText(const char* operation, const VstKeyCode& code) {
        return callText(operation, code.character, int{code.virt}, int{code.modifier});
    }
    bool note(const std::string& call) {
        calls_->push_back(call);
        return answer;
    }

    std::vector<std::string>* calls_;
};

void expectEditorRow(const Row& row) {
    SCOPED_TRACE("opcode " + std::to_string(row.opcode) + ", value " + std::to_string(row.value) +
                 ", opt " + std::to_string(row.opt));
    RecordingEffect effect;
    auto* const editor = new RecordingEditor(&effect.calls);
    editor->answer = row.answer != 0;
    effect.setEditor(editor);
    EXPECT_EQ(effect.dispatcher(row.opcode, row.index, row.value, at(row.ptr), row.opt),
              row.result);
    const std::vector<std::string> expected =
        row.call.empty() ? std::vector<std::string>{} : std::vector<std::string>{row.call};
    EXPECT_EQ(effect.calls, expected);
}

} // namespace

TEST(Dispatcher, EditorOpcodesReachTheEditor) {
    const Row rows[] = {
        {13, 1, 2, 3, 4.0f, "getRect(3)", 1, 1},
        {13, 1, 2, 3, 4.0f, "getRect(3)", 0, 0},
        {14, 1, 2, 3, 4.0f, "open(3)", 1, 1},
        {14, 1, 2, 0, 4.0f, "open(0)", 0, 0},
        {15, 1, 2, 3, 4.0f, "close()", 1, 0},
        {16, 1, 2, 3, 4.0f, "", 1, 0},
        {17, 1, 2, 3, 4.0f, "", 1, 0},
        {18, 1, 2, 3, 4.0f, "", 1, 0},
        {19, 1, 2, 3, 4.0f, "idle()", 1, 0},
        {20, 1, 2, 3, 4.0f, "", 1, 0},
        {21, 1, 2, 3, 4.0f, "", 1, 0},
        {61, 1, 2, 3, 4.0f, "setKnobMode(2)", 1, 1},
        {61, 1, -1, 3, 4.0f, "setKnobMode(-1)", 0, 0},
        {61, 1, kWide, 3, 4.0f, "setKnobMode(878082192)", 1, 1},
    };
    for (const Row& row : rows) {
        expectEditorRow(row);
    }
}

TEST(Dispatcher, KeyOpcodesHandTheEditorAKeyCode) {
    const Row rows[] = {
        {59, 65, 2, 3, 4.0f, "onKeyDown(65, 2, 4)", 1, 1},
        {59, -65, 0x1FF, 3, 4.99f, "onKeyDown(-65, 255, 4)", 0, 0},
        {59, 0, -1, 3, -1.5f, "onKeyDown(0, 255, 255)", 1, 1},
        {59, 0, 0x100, 3, 257.0f, "onKeyDown(0, 0, 1)", 1, 1},
        {60, 65, 2, 3, 4.0f, "onKeyUp(65, 2, 4)", 1, 1},
        {60, -65, 0x1FF, 3, 4.99f, "onKeyUp(-65, 255, 4)", 0, 0},
        {60, 0, -1, 3, -1.5f, "onKeyUp(0, 255, 255)", 1, 1},
        {60, 0, 0x100, 3, 257.0f, "onKeyUp(0, 0, 1)", 1, 1},
    };
    for (const Row& row : rows) {
        expectEditorRow(row);
    }
}

TEST(Dispatcher, SampleRateArrivesUnchanged) {
    PlainEffectX effect;
    for (const float rate : {44100.5f, 0.0f, -1.0f, 1e30f}) {
        effect.dispatcher(effSetSampleRate, 0, 0, nullptr, rate);
        EXPECT_EQ(effect.sampleRate, rate);
    }
    effect.dispatcher(effSetSampleRate, 0, 0, nullptr, std::nanf(""));
    EXPECT_TRUE(std::isnan(effect.sampleRate));
}
