// Each call of an effect to its host: what is asked, what becomes of the answer, and what is
// answered when there is no host.
#include "plugin/AudioEffectX.h"
#include "tests/plugin/PlainEffect.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr VstIntPtr kWide = 0x1234567890;
constexpr VstIntPtr kHighHalf = std::int64_t{1} << 32; // zero when cut to 32 bits

template <typename Pointee>
Pointee* at(std::uintptr_t address) {
    return reinterpret_cast<Pointee*>(address);
}

template <typename Pointee>
VstIntPtr number(Pointee* pointer) {
    return reinterpret_cast<VstIntPtr>(pointer);
}

enum class Answer {
    kNone,      // no result
    kNarrow,    // cut to 32 bits
    kWhole,     // as it stands
    kNonZero,   // any answer but 0
    kExactlyOne // the answer 1 alone
};

struct Row {
    const char* name;
    // Bools and pointers as numbers; 0 for operations without a result.
    std::function<VstIntPtr(AudioEffectX&)> ask;
    VstInt32 opcode;
    VstInt32 index;
    VstIntPtr value;
    std::uintptr_t ptr;
    float opt;
    Answer answer;
    VstIntPtr withoutHost;
};

const std::vector<Row>& rows() {
    using X = AudioEffectX;
    static const std::vector<Row> all = {
        // clang-format off
        {"setParameterAutomated", [](X& e) { e.setParameterAutomated(3, 0.5f); return 0; }, 0, 3, 0, 0, 0.5f, Answer::kNone, 0},
        {"getCurrentUniqueId", [](X& e) { return e.getCurrentUniqueId(); }, 2, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"masterIdle", [](X& e) { e.masterIdle(); return 0; }, 3, 0, 0, 0, 0.0f, Answer::kNone, 0},
        {"wantEvents", [](X& e) { e.wantEvents(-7); return 0; }, 6, 0, -7, 0, 0.0f, Answer::kNone, 0},
        {"getTimeInfo", [](X& e) { return number(e.getTimeInfo(-7)); }, 7, 0, -7, 0, 0.0f, Answer::kWhole, 0},
        {"sendVstEventsToHost", [](X& e) { return VstIntPtr{e.sendVstEventsToHost(at<VstEvents>(99))}; }, 8, 0, 0, 99, 0.0f, Answer::kExactlyOne, 0},
        {"tempoAt", [](X& e) { return e.tempoAt(-7); }, 10, 0, -7, 0, 0.0f, Answer::kNarrow, 0},
        {"getNumAutomatableParameters", [](X& e) { return e.getNumAutomatableParameters(); }, 11, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"getParameterQuantization", [](X& e) { return e.getParameterQuantization(); }, 12, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"ioChanged", [](X& e) { return e.ioChanged(); }, 13, 0, 0, 0, 0.0f, Answer::kNonZero, 0},
        {"needIdle", [](X& e) { return e.needIdle(); }, 14, 0, 0, 0, 0.0f, Answer::kNonZero, 0},
        {"sizeWindow", [](X& e) { return e.sizeWindow(344, -400); }, 15, 344, -400, 0, 0.0f, Answer::kNonZero, 0},
        {"getInputLatency", [](X& e) { return e.getInputLatency(); }, 18, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"getOutputLatency", [](X& e) { return e.getOutputLatency(); }, 19, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"getPreviousPlug", [](X& e) { return number(e.getPreviousPlug(0)); }, 20, 0, 0, 0, 0.0f, Answer::kWhole, 0},
        {"getPreviousPlug of pin 3", [](X& e) { return number(e.getPreviousPlug(3)); }, 20, 0, 0, 0, 0.0f, Answer::kWhole, 0},
        {"getNextPlug", [](X& e) { return number(e.getNextPlug(3)); }, 21, 0, 0, 0, 0.0f, Answer::kWhole, 0},
        {"willProcessReplacing", [](X& e) { return e.willProcessReplacing(); }, 22, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"getCurrentProcessLevel", [](X& e) { return e.getCurrentProcessLevel(); }, 23, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"getAutomationState", [](X& e) { return e.getAutomationState(); }, 24, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"offlineStart", [](X& e) { return e.offlineStart(at<VstAudioFile>(99), 4, 5); }, 25, 5, 4, 99, 0.0f, Answer::kNonZero, 0},
        {"offlineRead of the source", [](X& e) { return e.offlineRead(at<VstOfflineTask>(99), 4, true); }, 26, 1, 4, 99, 0.0f, Answer::kNonZero, 0},
        {"offlineRead", [](X& e) { return e.offlineRead(at<VstOfflineTask>(99), -4, false); }, 26, 0, -4, 99, 0.0f, Answer::kNonZero, 0},
        {"offlineWrite", [](X& e) { return e.offlineWrite(at<VstOfflineTask>(99), 4); }, 27, 0, 4, 99, 0.0f, Answer::kNonZero, 0},
        {"offlineGetCurrentPass", [](X& e) { return e.offlineGetCurrentPass(); }, 28, 0, 0, 0, 0.0f, Answer::kNonZero, 0},
        {"offlineGetCurrentMetaPass", [](X& e) { return e.offlineGetCurrentMetaPass(); }, 29, 0, 0, 0, 0.0f, Answer::kNonZero, 0},
        {"setOutputSamplerate", [](X& e) { e.setOutputSamplerate(48000.5f); return 0; }, 30, 0, 0, 0, 48000.5f, Answer::kNone, 0},
        {"getOutputSpeakerArrangement", [](X& e) { return number(e.getOutputSpeakerArrangement()); }, 31, 0, 0, 0, 0.0f, Answer::kWhole, 0},
        {"getHostVendorString", [](X& e) { return e.getHostVendorString(at<char>(99)); }, 32, 0, 0, 99, 0.0f, Answer::kNonZero, 0},
        {"getHostProductString", [](X& e) { return e.getHostProductString(at<char>(99)); }, 33, 0, 0, 99, 0.0f, Answer::kNonZero, 0},
        {"getHostVendorVersion", [](X& e) { return e.getHostVendorVersion(); }, 34, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"hostVendorSpecific", [](X& e) { return e.hostVendorSpecific(-4, kWide, at<void>(99), 0.25f); }, 35, -4, kWide, 99, 0.25f, Answer::kWhole, 0},
        {"canHostDo", [](X& e) { return e.canHostDo(at<char>(99)); }, 37, 0, 0, 99, 0.0f, Answer::kNonZero, 0},
        {"getHostLanguage", [](X& e) { return e.getHostLanguage(); }, 38, 0, 0, 0, 0.0f, Answer::kNarrow, 0},
        {"openWindow", [](X& e) { return number(e.openWindow(at<VstWindow>(99))); }, 39, 0, 0, 99, 0.0f, Answer::kWhole, 0},
        {"closeWindow", [](X& e) { return e.closeWindow(at<VstWindow>(99)); }, 40, 0, 0, 99, 0.0f, Answer::kNonZero, 0},
        {"getDirectory", [](X& e) { return number(e.getDirectory()); }, 41, 0, 0, 0, 0.0f, Answer::kWhole, 0},
        {"updateDisplay", [](X& e) { return e.updateDisplay(); }, 42, 0, 0, 0, 0.0f, Answer::kNonZero, 0},
        {"beginEdit", [](X& e) { return e.beginEdit(-3); }, 43, -3, 0, 0, 0.0f, Answer::kNonZero, 0},
        {"endEdit", [](X& e) { return e.endEdit(-3); }, 44, -3, 0, 0, 0.0f, Answer::kNonZero, 0},
        {"openFileSelector", [](X& e) { return e.openFileSelector(at<VstFileSelect>(99)); }, 45, 0, 0, 99, 0.0f, Answer::kNonZero, 0},
        {"closeFileSelector", [](X& e) { return e.closeFileSelector(at<VstFileSelect>(99)); }, 46, 0, 0, 99, 0.0f, Answer::kNonZero, 0},
        {"getChunkFile", [](X& e) { return e.getChunkFile(at<void>(99)); }, 48, 0, 0, 99, 0.0f, Answer::kNonZero, 0},
        {"getInputSpeakerArrangement", [](X& e) { return number(e.getInputSpeakerArrangement()); }, 49, 0, 0, 0, 0.0f, Answer::kWhole, 0},
        // clang-format on
    };
    return all;
}

VstIntPtr resultOf(Answer kind, VstIntPtr answer) {
    switch (kind) {
    case Answer::kNone:
        return 0;
    case Answer::kNarrow:
        return static_cast<VstInt32>(answer);
    case Answer::kWhole:
        return answer;
    case Answer::kNonZero:
        return answer != 0 ? 1 : 0;
    case Answer::kExactlyOne:
        return answer == 1 ? 1 : 0;
    }
    return 0;
}

} // namespace

TEST(HostCalls, AskOnceWithTheirArgumentsAndConvertTheAnswer) {
    for (const Row& row : rows()) {
        for (const VstIntPtr answer :
             {VstIntPtr{0}, VstIntPtr{1}, VstIntPtr{2}, VstIntPtr{-1}, kWide, kHighHalf}) {
            SCOPED_TRACE(std::string(row.name) + ", answer " + std::to_string(answer));
            RecordingHost host;
            host.answersTo.clear();
            host.answer = answer;
            PlainEffectX effect(RecordingHost::callback);
            EXPECT_EQ(row.ask(effect), resultOf(row.answer, answer));
            EXPECT_EQ(host.calls, (std::vector<HostCall>{{&effect.cEffect, row.opcode, row.index,
                                                          row.value, at<void>(row.ptr), row.opt}}));
        }
    }
}

TEST(HostCalls, EventsAreSentOnlyWhenTheWholeAnswerIsOne) {
    RecordingHost host;
    PlainEffectX effect(RecordingHost::callback);
    for (const VstIntPtr answer :
         {(VstIntPtr{1} << 32) + 1, (VstIntPtr{-1} * (VstIntPtr{1} << 32)) + 1}) {
        host.answer = answer;
        EXPECT_FALSE(effect.sendVstEventsToHost(nullptr)) << answer;
    }
    host.answer = 1;
    EXPECT_TRUE(effect.sendVstEventsToHost(nullptr));
}

TEST(HostCalls, AnswerWithoutAHost) {
    for (const Row& row : rows()) {
        PlainEffectX effect(nullptr);
        EXPECT_EQ(row.ask(effect), row.withoutHost) << row.name;
    }
}

TEST(HostCalls, MasterVersionIsNeverZero) {
    for (const auto& [answer, expected] : std::vector<std::pair<VstIntPtr, VstInt32>>{
             {0, 1}, {1, 1}, {2400, 2400}, {-1, -1}, {kHighHalf, 1}, {kHighHalf + 5, 5}}) {
        RecordingHost host;
        host.answersTo[1] = answer;
        PlainEffect effect(RecordingHost::callback);
        EXPECT_EQ(effect.getMasterVersion(), expected) << answer;
        EXPECT_EQ(host.calls, (std::vector<HostCall>{{&effect.cEffect, 1, 0, 0, nullptr, 0.0f}}));
    }
    PlainEffect alone(nullptr);
    EXPECT_EQ(alone.getMasterVersion(), 1);
}

TEST(HostCalls, PinsCountAsConnectedUnlessTheHostSaysOtherwise) {
    for (const VstIntPtr answer : {VstIntPtr{0}, VstIntPtr{1}, VstIntPtr{-1}, kHighHalf}) {
        RecordingHost host;
        host.answer = answer;
        PlainEffect effect(RecordingHost::callback);
        EXPECT_EQ(effect.isInputConnected(6), answer == 0) << answer;
        EXPECT_EQ(effect.isOutputConnected(7), answer == 0) << answer;
        EXPECT_EQ(host.calls, (std::vector<HostCall>{{&effect.cEffect, 4, 6, 0, nullptr, 0.0f},
                                                     {&effect.cEffect, 4, 7, 1, nullptr, 0.0f}}));
    }
    PlainEffect alone(nullptr);
    EXPECT_TRUE(alone.isInputConnected(0));
    EXPECT_TRUE(alone.isOutputConnected(0));
}

TEST(HostCalls, UpdatingTheSampleRateStoresOnlyRatesAboveZero) {
    for (const auto& [answer, expected] :
         std::vector<std::pair<VstIntPtr, float>>{{48000, 48000.0f},
                                                  {1, 1.0f},
                                                  {0, 22050.0f},
                                                  {-1, 22050.0f},
                                                  {-48000, 22050.0f},
                                                  {kHighHalf, 4294967296.0f},
                                                  {16777217, 16777216.0f}}) {
        RecordingHost host;
        host.answersTo[16] = answer;
        PlainEffectX effect(RecordingHost::callback);
        effect.sampleRate = 22050.0f;
        EXPECT_EQ(effect.updateSampleRate(), static_cast<double>(expected)) << answer;
        EXPECT_EQ(effect.sampleRate, expected) << answer;
        EXPECT_EQ(host.calls, (std::vector<HostCall>{{&effect.cEffect, 16, 0, 0, nullptr, 0.0f}}));
    }
    PlainEffectX alone(nullptr);
    alone.sampleRate = 32000.5f;
    EXPECT_EQ(alone.updateSampleRate(), 32000.5);
}

TEST(HostCalls, UpdatingTheSampleRateBypassesTheSetter) {
    struct Counting : PlainEffectX {
        using PlainEffectX::PlainEffectX;
        void setSampleRate(float) override { ++sets; }
        void setBlockSize(VstInt32) override { ++sets; }
        int sets = 0;
    };
    RecordingHost host;
    host.answer = 48000;
    Counting effect(RecordingHost::callback);
    effect.updateSampleRate();
    effect.updateBlockSize();
    effect.setBlockSizeAndSampleRate(128, 96000.0f);
    EXPECT_EQ(effect.sets, 0);
    EXPECT_EQ(effect.sampleRate, 96000.0f);
    EXPECT_EQ(effect.blockSize, 128);
}

TEST(HostCalls, UpdatingTheBlockSizeStoresOnlySizesAboveZero) {
    for (const auto& [answer, expected] :
         std::vector<std::pair<VstIntPtr, VstInt32>>{{512, 512},
                                                     {0, 77},
                                                     {-1, 77},
                                                     {kHighHalf, 77},
                                                     {kHighHalf + 256, 256},
                                                     {0x80000000, 77}}) {
        RecordingHost host;
        host.answersTo[17] = answer;
        PlainEffectX effect(RecordingHost::callback);
        effect.blockSize = 77;
        EXPECT_EQ(effect.updateBlockSize(), expected) << answer;
        EXPECT_EQ(effect.blockSize, expected) << answer;
        EXPECT_EQ(host.calls, (std::vector<HostCall>{{&effect.cEffect, 17, 0, 0, nullptr, 0.0f}}));
    }
    PlainEffectX alone(nullptr);
    alone.blockSize = 33;
    EXPECT_EQ(alone.updateBlockSize(), 33);
}

TEST(HostCalls, NothingIsAskedForANullSelectionOrPath) {
    RecordingHost host;
    host.answer = 1;
    PlainEffectX effect(RecordingHost::callback);
    EXPECT_FALSE(effect.openFileSelector(nullptr));
    EXPECT_FALSE(effect.closeFileSelector(nullptr));
    EXPECT_FALSE(effect.getChunkFile(nullptr));
    EXPECT_TRUE(host.calls.empty());
}

TEST(HostCalls, ResumeAsksForEventsWhenTheEffectTakesThem) {
    struct Midi : PlainEffectX {
        using PlainEffectX::PlainEffectX;
        VstInt32 canDo(char* text) override {
            asked.emplace_back(text);
            return answer;
        }
        VstInt32 answer = 0;
        std::vector<std::string> asked;
    };
    for (const VstInt32 canDo : {1, 0, -1, 2}) {
        for (const bool synth : {false, true}) {
            RecordingHost host;
            Midi effect(RecordingHost::callback);
            effect.answer = canDo;
            effect.isSynth(synth);
            effect.resume();
            const bool wants = synth || canDo == 1;
            EXPECT_EQ(host.calls,
                      wants ? (std::vector<HostCall>{{&effect.cEffect, 6, 0, 1, nullptr, 0.0f}})
                            : std::vector<HostCall>{})
                << canDo << (synth ? " synth" : "");
            if (!synth) {
                EXPECT_EQ(effect.asked, std::vector<std::string>{"receiveVstMidiEvent"});
            }
        }
    }
}
