#include "plugin/AudioEffect.h"

#include "plugin/AEffEditor.h"
#include "tests/plugin/PlainEffect.h"
#include "tests/plugin/RecordingEffect.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

TEST(AudioEffect, RecordShowsTheBasesIdentity) {
    PlainEffect effect(nullptr, 5, 7);
    const AEffect& record = effect.cEffect;
    EXPECT_EQ(record.magic, 0x56737450);
    EXPECT_EQ(record.numPrograms, 5);
    EXPECT_EQ(record.numParams, 7);
    EXPECT_EQ(record.numInputs, 1);
    EXPECT_EQ(record.numOutputs, 2);
    EXPECT_EQ(record.flags, 0x10);
    EXPECT_EQ(record.ioRatio, 1.0f);
    EXPECT_EQ(record.object, static_cast<AudioEffect*>(&effect));
    EXPECT_EQ(record.uniqueID, 0x4E6F4566);
    EXPECT_EQ(record.version, 1);
    EXPECT_EQ(record.resvd1, 0);
    EXPECT_EQ(record.resvd2, 0);
    EXPECT_EQ(record.initialDelay, 0);
    EXPECT_EQ(record.realQualities, 0);
    EXPECT_EQ(record.offQualities, 0);
    EXPECT_EQ(record.user, nullptr);
    const char zeros[sizeof(record.future)] = {};
    EXPECT_EQ(std::memcmp(record.future, zeros, sizeof(zeros)), 0);
}

TEST(AudioEffect, RecordHasAllSixEntries) {
    PlainEffect effect;
    EXPECT_NE(effect.cEffect.dispatcher, nullptr);
    EXPECT_NE(effect.cEffect.process, nullptr);
    EXPECT_NE(effect.cEffect.setParameter, nullptr);
    EXPECT_NE(effect.cEffect.getParameter, nullptr);
    EXPECT_NE(effect.cEffect.processReplacing, nullptr);
    EXPECT_NE(effect.cEffect.processDoubleReplacing, nullptr);
}

// Other code built against the class finds each field by its place.
TEST(AudioEffect, FieldsStandInOrderBehindTheTable) {
    PlainEffect effect;
    const auto at = [&](const auto& field) {
        return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&effect);
    };
    EXPECT_EQ(at(effect.audioMaster), 8);
    EXPECT_EQ(at(effect.editor), 16);
    EXPECT_EQ(at(effect.sampleRate), 24);
    EXPECT_EQ(at(effect.blockSize), 28);
    EXPECT_EQ(at(effect.numPrograms), 32);
    EXPECT_EQ(at(effect.numParams), 36);
    EXPECT_EQ(at(effect.curProgram), 40);
    EXPECT_EQ(at(effect.cEffect), 48);
    EXPECT_EQ(sizeof(PlainEffect), 48 + sizeof(AEffect));
    EXPECT_EQ(sizeof(AudioEffectX), sizeof(AudioEffect)) << "the layer above adds no field";
}

TEST(AudioEffect, FieldsBeginWithTheirInitialValues) {
    PlainEffect effect(RecordingHost::callback, 5, 7);
    EXPECT_EQ(effect.audioMaster, RecordingHost::callback);
    EXPECT_EQ(effect.editor, nullptr);
    EXPECT_EQ(effect.sampleRate, 44100.0f);
    EXPECT_EQ(effect.blockSize, 1024);
    EXPECT_EQ(effect.numPrograms, 5);
    EXPECT_EQ(effect.numParams, 7);
    EXPECT_EQ(effect.curProgram, 0);
}

TEST(AudioEffect, DefaultsThatStoreStoreNothingElse) {
    PlainEffect effect;
    effect.setSampleRate(96000.0f);
    EXPECT_EQ(effect.sampleRate, 96000.0f);
    EXPECT_EQ(effect.getSampleRate(), 96000.0f);
    effect.setBlockSize(64);
    EXPECT_EQ(effect.blockSize, 64);
    EXPECT_EQ(effect.getBlockSize(), 64);
    effect.setProgram(-3);
    EXPECT_EQ(effect.curProgram, -3);
    EXPECT_EQ(effect.getProgram(), -3);

    AEffect expected = effect.cEffect;
    effect.setUniqueID(0x01020304);
    expected.uniqueID = 0x01020304;
    effect.setNumInputs(11);
    expected.numInputs = 11;
    effect.setNumOutputs(12);
    expected.numOutputs = 12;
    effect.setInitialDelay(13);
    expected.initialDelay = 13;
    effect.setRealtimeQualities(14);
    expected.realQualities = 14;
    effect.setOfflineQualities(15);
    expected.offQualities = 15;
    EXPECT_EQ(std::memcmp(&effect.cEffect, &expected, sizeof(expected)), 0);
}

TEST(AudioEffect, SettingTheInitialDelayTellsTheHostNothing) {
    RecordingHost host;
    PlainEffect effect(RecordingHost::callback);
    effect.setInitialDelay(100);
    EXPECT_TRUE(host.calls.empty());
}

namespace {

struct FlagRow {
    const char* name;
    void (*set)(PlainEffectX&, bool);
    VstInt32 flag;
};

const FlagRow kFlagRows[] = {
    {"canProcessReplacing", [](PlainEffectX& e, bool on) { e.canProcessReplacing(on); }, 0x10},
    {"canDoubleReplacing", [](PlainEffectX& e, bool on) { e.canDoubleReplacing(on); }, 0x1000},
    {"programsAreChunks", [](PlainEffectX& e, bool on) { e.programsAreChunks(on); }, 0x20},
    {"hasVu", [](PlainEffectX& e, bool on) { e.hasVu(on); }, 0x4},
    {"hasClip", [](PlainEffectX& e, bool on) { e.hasClip(on); }, 0x2},
    {"canMono", [](PlainEffectX& e, bool on) { e.canMono(on); }, 0x8},
    {"isSynth", [](PlainEffectX& e, bool on) { e.isSynth(on); }, 0x100},
    {"noTail", [](PlainEffectX& e, bool on) { e.noTail(on); }, 0x200},
    {"wantAsyncOperation", [](PlainEffectX& e, bool on) { e.wantAsyncOperation(on); }, 0x400},
    {"hasExternalBuffer", [](PlainEffectX& e, bool on) { e.hasExternalBuffer(on); }, 0x800},
};

} // namespace

TEST(AudioEffect, FlagSettersSetAndClearTheirOwnFlagAlone) {
    for (const FlagRow& row : kFlagRows) {
        for (const VstInt32 others : {0, 0x7FFFFFFF, 0x1FFF, 0x10}) {
            PlainEffectX effect;
            effect.cEffect.flags = others;
            row.set(effect, true);
            EXPECT_EQ(effect.cEffect.flags, others | row.flag) << row.name;
            row.set(effect, true);
            EXPECT_EQ(effect.cEffect.flags, others | row.flag) << row.name;
            row.set(effect, false);
            EXPECT_EQ(effect.cEffect.flags, others & ~row.flag) << row.name;
        }
    }
}

TEST(AudioEffect, DefaultsThatAnswerAnswerNothing) {
    PlainEffect effect;
    EXPECT_EQ(effect.getParameter(0), 0.0f);
    EXPECT_EQ(effect.getParameter(-1), 0.0f);
    void* data = &effect;
    EXPECT_EQ(effect.getChunk(&data, false), 0);
    EXPECT_EQ(effect.getChunk(&data, true), 0);
    EXPECT_EQ(data, &effect);
    EXPECT_EQ(effect.setChunk(data, 100, true), 0);
    EXPECT_EQ(effect.getVu(), 0.0f);
    EXPECT_EQ(effect.getEditor(), nullptr);
    EXPECT_EQ(effect.getAeffect(), &effect.cEffect);
}

TEST(AudioEffect, DefaultTextsAreEmptyAndTouchOneByte) {
    PlainEffect effect;
    const auto expectEmpty = [](const char* name, auto write) {
        char text[4] = {'a', 'b', 'c', 'd'};
        write(text);
        EXPECT_EQ(std::string(text, 4), std::string("\0bcd", 4)) << name;
    };
    expectEmpty("getProgramName", [&](char* text) { effect.getProgramName(text); });
    expectEmpty("getParameterLabel", [&](char* text) { effect.getParameterLabel(1, text); });
    expectEmpty("getParameterDisplay", [&](char* text) { effect.getParameterDisplay(1, text); });
    expectEmpty("getParameterName", [&](char* text) { effect.getParameterName(1, text); });
}

TEST(AudioEffect, DefaultsThatDoNothingChangeNoField) {
    RecordingHost host;
    PlainEffect effect(RecordingHost::callback);
    const std::string before(reinterpret_cast<const char*>(&effect), sizeof(effect));
    char name[] = "name";
    effect.open();
    effect.close();
    effect.suspend();
    effect.resume();
    effect.processDoubleReplacing(nullptr, nullptr, 64);
    effect.process(nullptr, nullptr, 64);
    effect.setParameter(3, 0.5f);
    effect.setProgramName(name);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&effect), sizeof(effect)), before);
    EXPECT_TRUE(host.calls.empty());
    EXPECT_STREQ(name, "name");
}

namespace {

class CountedEditor : public AEffEditor {
public:
    explicit CountedEditor(int* ends) : ends_(ends) {}
    ~CountedEditor() override { ++*ends_; }

private:
    int* ends_;
};

} // namespace

TEST(AudioEffect, EditorIsDeletedWithTheEffectOnce) {
    int ends = 0;
    {
        PlainEffect effect;
        effect.setEditor(new CountedEditor(&ends));
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
}

TEST(AudioEffect, SettingAnEditorRaisesTheFlagAndClearingItDropsTheFlag) {
    int ends = 0;
    CountedEditor first(&ends);
    CountedEditor second(&ends);
    PlainEffect effect;
    effect.setEditor(&first);
    EXPECT_EQ(effect.cEffect.flags, 0x11);
    EXPECT_EQ(effect.getEditor(), &first);
    effect.setEditor(&second);
    EXPECT_EQ(ends, 0) << "the one before is not the effect's to delete";
    EXPECT_EQ(effect.getEditor(), &second);
    effect.setEditor(nullptr);
    EXPECT_EQ(effect.cEffect.flags, 0x10);
    EXPECT_EQ(effect.getEditor(), nullptr);
}

TEST(AudioEffect, EntriesForwardTheirArgumentsUnchanged) {
    RecordingEffect effect;
    AEffect* const record = effect.getAeffect();
    auto** const in = reinterpret_cast<float**>(100);
    auto** const out = reinterpret_cast<float**>(200);
    record->process(record, in, out, -5);
    record->processReplacing(record, in, out, 64);
    record->processDoubleReplacing(record, reinterpret_cast<double**>(300),
                                   reinterpret_cast<double**>(400), 32);
    record->setParameter(record, -7, 0.25f);
    EXPECT_EQ(record->getParameter(record, 8), 0.75f);
    EXPECT_EQ(effect.calls,
              (std::vector<std::string>{"process(100, 200, -5)", "processReplacing(100, 200, 64)",
                                        "processDoubleReplacing(300, 400, 32)",
                                        "setParameter(-7, 0.25)", "getParameter(8)"}));
}

TEST(AudioEffect, ClosingThroughTheRecordEndsTheObjectAndAnswersOne) {
    int destroyed = 0;
    auto* const effect = new RecordingEffect;
    effect->destroyed = &destroyed;
    effect->answer = 77;
    AEffect* const record = effect->getAeffect();
    EXPECT_EQ(record->dispatcher(record, effClose, 1, 2, nullptr, 3.0f), 1);
    EXPECT_EQ(destroyed, 1);
}

TEST(AudioEffect, ClosingAsksTheEffectFirst) {
    struct Closing : PlainEffect {
        explicit Closing(std::vector<std::string>* log) : calls(log) {}
        ~Closing() override { calls->push_back("end"); }
        void close() override { calls->push_back("close"); }
        std::vector<std::string>* calls;
    };
    std::vector<std::string> log;
    AEffect* const record = (new Closing(&log))->getAeffect();
    record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(log, (std::vector<std::string>{"close", "end"}));
}

TEST(AudioEffect, OtherOpcodesThroughTheRecordKeepTheObject) {
    int destroyed = 0;
    RecordingEffect effect;
    effect.destroyed = &destroyed;
    effect.answer = 12;
    AEffect* const record = effect.getAeffect();
    EXPECT_EQ(record->dispatcher(record, effGetProgram, 0, 0, nullptr, 0.0f), 12);
    EXPECT_EQ(record->dispatcher(record, effOpen, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(destroyed, 0);
    effect.destroyed = nullptr;
}

TEST(AudioEffect, OtherOpcodesThroughTheRecordAnswerWhatTheDispatcherAnswers) {
    class Answering : public PlainEffect {
    public:
        VstIntPtr dispatcher(VstInt32, VstInt32, VstIntPtr, void*, float) override {
            return answer;
        }
        VstIntPtr answer = 0;
    };
    Answering effect;
    AEffect* const record = effect.getAeffect();
    for (const VstIntPtr answer : {VstIntPtr{0}, VstIntPtr{2}, VstIntPtr{-2}, VstIntPtr{1} << 40}) {
        effect.answer = answer;
        for (const VstInt32 opcode : {0, 2, 3, 9, 22, 24, 58, 200, -1}) {
            EXPECT_EQ(record->dispatcher(record, opcode, 0, 0, nullptr, 0.0f), answer) << opcode;
        }
    }
}

TEST(AudioEffect, AutomatedWriteSetsTheParameterBeforeItTellsTheHost) {
    struct Automated : PlainEffect {
        explicit Automated(RecordingHost* host)
            : PlainEffect(RecordingHost::callback), recorder(host) {}
        void setParameter(VstInt32 index, float value) override {
            lastIndex = index;
            lastValue = value;
            callsBefore = recorder->calls.size();
        }
        RecordingHost* recorder;
        VstInt32 lastIndex = -1;
        float lastValue = -1.0f;
        std::size_t callsBefore = 99;
    };
    RecordingHost host;
    Automated effect(&host);
    effect.setParameterAutomated(4, 0.625f);
    EXPECT_EQ(effect.lastIndex, 4);
    EXPECT_EQ(effect.lastValue, 0.625f);
    EXPECT_EQ(effect.callsBefore, 0u);
    EXPECT_EQ(host.calls, (std::vector<HostCall>{{effect.getAeffect(), 0, 4, 0, nullptr, 0.625f}}));
}

TEST(AudioEffect, WritesOfTheHostAreNotEchoed) {
    RecordingHost host;
    PlainEffect effect(RecordingHost::callback);
    effect.cEffect.setParameter(&effect.cEffect, 1, 0.5f);
    EXPECT_TRUE(host.calls.empty());
}
