// The life of an instance.
#include "effect/VstXSynth.h"

#include "editor/tveditor13.h"
#include "plugin/VSTPluginMain.h"
#include "tests/effect/EffectState.h"
#include "tests/support/Bits.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ReferenceDelay.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

namespace {

// The base's fields laid open.
class OpenSynth : public VstXSynth {
public:
    OpenSynth() : VstXSynth(plainHost) {}

    using AudioEffect::blockSize;
    using AudioEffect::cEffect;
    using AudioEffect::curProgram;
    using AudioEffect::editor;
    using AudioEffect::numParams;
    using AudioEffect::numPrograms;
    using AudioEffect::sampleRate;
};

bool silent(const float* line) {
    return std::all_of(line, line + VstXSynth::kDelayCapacity,
                       [](float sample) { return bitsOf(sample) == 0; });
}

void fillLines(VstXSynth& effect, float value) {
    std::fill_n(effect.delayBufferLeft, VstXSynth::kDelayCapacity, value);
    std::fill_n(effect.delayBufferRight, VstXSynth::kDelayCapacity, value);
}

void processSilence(VstXSynth& effect, VstInt32 frames) {
    std::vector<float> left(static_cast<std::size_t>(std::max(frames, 1)));
    std::vector<float> right(left.size());
    float* channels[2] = {left.data(), right.data()};
    effect.processReplacing(channels, channels, frames);
}

} // namespace

TEST(VstXSynth, RecordShowsTheEffectsIdentity) {
    OpenSynth effect;
    const AEffect& record = effect.cEffect;
    EXPECT_EQ(record.magic, 0x56737450);
    EXPECT_EQ(record.uniqueID, 0x54764479); // 'T', 'v', 'D', 'y'
    EXPECT_EQ(record.numPrograms, 26);
    EXPECT_EQ(record.numParams, 9);
    EXPECT_EQ(record.numInputs, 2);
    EXPECT_EQ(record.numOutputs, 2);
    EXPECT_EQ(record.flags, 0x11); // processes in place of its output, has an editor
    EXPECT_EQ(record.version, 1);
    EXPECT_EQ(record.initialDelay, 0);
    EXPECT_EQ(record.ioRatio, 1.0f);
    EXPECT_EQ(record.object, static_cast<AudioEffect*>(&effect));
}

TEST(VstXSynth, BaseFieldsAfterConstruction) {
    OpenSynth effect;
    EXPECT_EQ(effect.sampleRate, 44100.0f);
    EXPECT_EQ(effect.blockSize, 1024);
    EXPECT_EQ(effect.numPrograms, 26);
    EXPECT_EQ(effect.numParams, 9);
    EXPECT_EQ(effect.curProgram, 0);
}

TEST(VstXSynth, FieldsAfterConstruction) {
    const VstXSynth effect(plainHost);
    EXPECT_FALSE(effect.editorUpdateHold);
    EXPECT_EQ(bitsOf(effect.delayTime), 0x3DA3CB27u);
    EXPECT_EQ(bitsOf(effect.feedBack), 0x3E5C28F6u);
    EXPECT_EQ(effect.delayLength, 3526);
    EXPECT_EQ(effect.spareLength, 44100);
    EXPECT_EQ(effect.delayPosition, 0);
    EXPECT_EQ(effect.sparePosition, 0);
    EXPECT_EQ(effect.lowPass, static_cast<double>(0.374f));
    EXPECT_EQ(effect.highPass, static_cast<double>(0.655999f));
    EXPECT_FALSE(effect.highPassType);
    EXPECT_TRUE(effect.lowPassType);
    EXPECT_EQ(effect.leftRight, 0.5);
    EXPECT_EQ(effect.mix, 1.0);
    EXPECT_EQ(bitsOf(effect.sweepPhase), 0u);
    EXPECT_EQ(effect.sineIndex, 0);
    EXPECT_EQ(effect.lastSampleRate, 44100);
    EXPECT_EQ(effect.panDepth, 0.0);
    EXPECT_FALSE(effect.panSide);
    EXPECT_EQ(effect.spareGain, 1.0f);
    EXPECT_EQ(bitsOf(effect.spareOffset), 0u);
    EXPECT_TRUE(silent(effect.delayBufferLeft));
    EXPECT_TRUE(silent(effect.delayBufferRight));
    EXPECT_EQ(stateDifference(effect, ReferenceDelay()), "");
}

TEST(VstXSynth, FieldsStandInOrder) {
    VstXSynth effect(plainHost);
    const auto at = [&](const auto& field) {
        return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&effect);
    };
    constexpr std::ptrdiff_t kBase = sizeof(AudioEffectX);
    EXPECT_EQ(at(effect.uiEditor), kBase);
    EXPECT_EQ(at(effect.editorUpdateHold), kBase + 8);
    EXPECT_EQ(at(effect.programs), kBase + 16);
    EXPECT_EQ(at(effect.delayBufferLeft), kBase + 24);
    EXPECT_EQ(at(effect.delayBufferRight), kBase + 32);
    EXPECT_EQ(at(effect.delayTime), kBase + 40);
    EXPECT_EQ(at(effect.feedBack), kBase + 44);
    EXPECT_EQ(at(effect.sineTable), kBase + 48);
    EXPECT_EQ(at(effect.highPassLeft), kBase + 56);
    EXPECT_EQ(at(effect.highPassRight), kBase + 64);
    EXPECT_EQ(at(effect.lowPassLeft), kBase + 72);
    EXPECT_EQ(at(effect.lowPassRight), kBase + 80);
    EXPECT_EQ(at(effect.delayLength), kBase + 88);
    EXPECT_EQ(at(effect.spareLength), kBase + 96);
    EXPECT_EQ(at(effect.delayPosition), kBase + 104);
    EXPECT_EQ(at(effect.sparePosition), kBase + 112);
    EXPECT_EQ(at(effect.lowPass), kBase + 120);
    EXPECT_EQ(at(effect.highPass), kBase + 128);
    EXPECT_EQ(at(effect.highPassType), kBase + 136);
    EXPECT_EQ(at(effect.lowPassType), kBase + 137);
    EXPECT_EQ(at(effect.leftRight), kBase + 144);
    EXPECT_EQ(at(effect.mix), kBase + 152);
    EXPECT_EQ(at(effect.sweepPhase), kBase + 160);
    EXPECT_EQ(at(effect.sineIndex), kBase + 168);
    EXPECT_EQ(at(effect.lastSampleRate), kBase + 176);
    EXPECT_EQ(at(effect.panDepth), kBase + 184);
    EXPECT_EQ(at(effect.panSide), kBase + 192);
    EXPECT_EQ(at(effect.spareGain), kBase + 196);
    EXPECT_EQ(at(effect.spareOffset), kBase + 200);
}

// The fast signal path compares fields together with what lies between them.
TEST(VstXSynth, BytesBetweenTheFieldsBeginAsZero) {
    alignas(VstXSynth) static unsigned char memory[sizeof(VstXSynth)];
    std::memset(memory, 0xA5, sizeof(memory));
    auto* const effect = new (memory) VstXSynth(plainHost);
    const auto between = [&](const auto& field, const auto& next) {
        const auto* at = reinterpret_cast<const unsigned char*>(&field) + sizeof(field);
        const auto* const end = reinterpret_cast<const unsigned char*>(&next);
        return std::vector<int>(at, end);
    };
    EXPECT_EQ(between(effect->editorUpdateHold, effect->programs), std::vector<int>(7, 0));
    EXPECT_EQ(between(effect->lowPassType, effect->leftRight), std::vector<int>(6, 0));
    EXPECT_EQ(between(effect->panSide, effect->spareGain), std::vector<int>(3, 0));
    effect->~VstXSynth();
}

TEST(VstXSynth, FiltersBeginWithTheGainsOfProgramZero) {
    const VstXSynth effect(plainHost);
    for (const FourPoleFilter* filter : {effect.lowPassLeft, effect.lowPassRight}) {
        FourPoleFilter expected;
        init(&expected, 600, 1800, 44100);
        EXPECT_EQ(filter->lowCoefficient, expected.lowCoefficient);
        EXPECT_EQ(filter->highCoefficient, expected.highCoefficient);
        EXPECT_EQ(filter->lowGain, 1.0);
        EXPECT_EQ(filter->midGain, 1.0 - static_cast<double>(0.374f));
        EXPECT_EQ(filter->highGain, 1.0 - static_cast<double>(0.374f));
    }
    for (const FourPoleFilter* filter : {effect.highPassLeft, effect.highPassRight}) {
        FourPoleFilter expected;
        init(&expected, 6000, 18500, 44100);
        EXPECT_EQ(filter->lowCoefficient, expected.lowCoefficient);
        EXPECT_EQ(filter->highCoefficient, expected.highCoefficient);
        EXPECT_EQ(filter->lowGain, 1.0 - static_cast<double>(0.655999f));
        EXPECT_EQ(filter->midGain, 1.0);
        EXPECT_EQ(filter->highGain, 1.0);
    }
    EXPECT_NE(effect.lowPassLeft, effect.lowPassRight);
    EXPECT_NE(effect.highPassLeft, effect.highPassRight);
}

TEST(VstXSynth, EditorIsMadeButNotOpen) {
    OpenSynth effect;
    ASSERT_NE(effect.uiEditor, nullptr);
    EXPECT_EQ(effect.editor, static_cast<AEffEditor*>(effect.uiEditor));
    EXPECT_EQ(effect.uiEditor->effectPtr, &effect);
    EXPECT_EQ(effect.uiEditor->getEffect(), &effect);
    EXPECT_FALSE(effect.uiEditor->editorOpen);
}

TEST(VstXSynth, ConstructionAsksTheHostNothing) {
    RecordingHost host;
    VstXSynth effect(RecordingHost::callback);
    EXPECT_TRUE(host.calls.empty());
}

TEST(VstXSynth, ConstructionNeedsNoHost) {
    VstXSynth effect(nullptr);
    EXPECT_EQ(effect.getMasterVersion(), 1);
    EXPECT_EQ(effect.delayLength, 3526);
}

TEST(VstXSynth, EntryMakesOneAndHandsItsRecordOut) {
    AEffect* const first = VSTPluginMain(plainHost);
    AEffect* const second = VSTPluginMain(plainHost);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_NE(dynamic_cast<VstXSynth*>(static_cast<AudioEffect*>(first->object)), nullptr);
    first->setParameter(first, kMix, 0.25f);
    EXPECT_EQ(first->getParameter(first, kMix), 0.25f);
    EXPECT_EQ(second->getParameter(second, kMix), 1.0f);
    EXPECT_EQ(first->dispatcher(first, effClose, 0, 0, nullptr, 0.0f), 1);
    EXPECT_EQ(second->getParameter(second, kMix), 1.0f);
    EXPECT_EQ(second->dispatcher(second, effClose, 0, 0, nullptr, 0.0f), 1);
}

TEST(VstXSynth, SineTableIsTheHalfPeriodThatItsStepsGive) {
    const VstXSynth effect(plainHost);
    const std::vector<double>& expected = ReferenceDelay::sineTable();
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(VstXSynth::kSineTableSize));
    EXPECT_EQ(firstDifference(effect.sineTable, expected.data(), expected.size()), -1);

    EXPECT_EQ(bitsOf(effect.sineTable[0]), 0u);
    EXPECT_NEAR(effect.sineTable[1], 0.0000174533, 0.5e-10);
    EXPECT_NEAR(effect.sineTable[90038], 0.9999999999957, 0.5e-13);
    EXPECT_NEAR(effect.sineTable[179691], 0.0000375506, 0.5e-10);
    EXPECT_GT(effect.sineTable[179691], 0.0);
    const double* const peak = std::max_element(effect.sineTable, effect.sineTable + 179692);
    EXPECT_EQ(peak - effect.sineTable, 90038);
}

TEST(VstXSynth, ResumeClearsTheLinesAndLeavesAllElse) {
    VstXSynth effect(plainHost);
    ReferenceDelay model;
    std::vector<float> ones(5000, 1.0f);
    float* channels[2] = {ones.data(), ones.data()};
    effect.processReplacing(channels, channels, 5000);
    std::fill(ones.begin(), ones.end(), 1.0f);
    model.process(channels, channels, 5000);
    ASSERT_EQ(effect.delayPosition, 5000 - 3526);
    ASSERT_TRUE(effect.panSide);
    ASSERT_FALSE(silent(effect.delayBufferLeft));

    effect.resume();
    model.resume();
    EXPECT_TRUE(silent(effect.delayBufferLeft));
    EXPECT_TRUE(silent(effect.delayBufferRight));
    EXPECT_EQ(effect.delayPosition, 5000 - 3526);
    EXPECT_TRUE(effect.panSide);
    EXPECT_EQ(stateDifference(effect, model), "");
}

TEST(VstXSynth, ResumeClearsTheWholeCapacity) {
    VstXSynth effect(plainHost);
    fillLines(effect, 0.5f);
    effect.resume();
    EXPECT_TRUE(silent(effect.delayBufferLeft));
    EXPECT_TRUE(silent(effect.delayBufferRight));
}

TEST(VstXSynth, ResumeAsksForEventsOnlyWhenDeclaredASynth) {
    RecordingHost host;
    VstXSynth effect(RecordingHost::callback);
    effect.resume();
    EXPECT_TRUE(host.calls.empty());
    effect.isSynth(true);
    effect.resume();
    EXPECT_EQ(host.calls, (std::vector<HostCall>{{effect.getAeffect(), 6, 0, 1, nullptr, 0.0f}}));
}

TEST(VstXSynth, ResumeClearsTheLinesBeforeItAsksForEvents) {
    static VstXSynth* asking;
    static bool asked;
    static bool silentThen;
    asked = false;
    const auto host = [](AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) -> VstIntPtr {
        asked = true;
        silentThen = silent(asking->delayBufferLeft) && silent(asking->delayBufferRight);
        return 0;
    };
    VstXSynth effect(host);
    asking = &effect;
    effect.isSynth(true);
    fillLines(effect, 0.5f);
    effect.resume();
    asking = nullptr;
    EXPECT_TRUE(asked);
    EXPECT_TRUE(silentThen);
}

TEST(VstXSynth, MissingLinesAreNotCleared) {
    VstXSynth effect(plainHost);
    float* const left = effect.delayBufferLeft;
    float* const right = effect.delayBufferRight;
    effect.delayBufferLeft = nullptr;
    std::fill_n(right, VstXSynth::kDelayCapacity, 1.0f);
    effect.resume();
    EXPECT_TRUE(silent(right));
    effect.delayBufferLeft = left;
    effect.delayBufferRight = nullptr;
    std::fill_n(left, VstXSynth::kDelayCapacity, 1.0f);
    effect.setParameter(kDelay, 0.5f);
    EXPECT_TRUE(silent(left));
    effect.delayBufferRight = right;
}

TEST(VstXSynth, SuspendChangesNothing) {
    VstXSynth effect(plainHost);
    ReferenceDelay model;
    std::vector<float> samples(3000, 0.5f);
    float* channels[2] = {samples.data(), samples.data()};
    effect.processReplacing(channels, channels, 3000);
    std::fill(samples.begin(), samples.end(), 0.5f);
    model.process(channels, channels, 3000);
    effect.suspend();
    EXPECT_EQ(stateDifference(effect, model), "");
    effect.getAeffect()->dispatcher(effect.getAeffect(), effMainsChanged, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(stateDifference(effect, model), "");
}

TEST(VstXSynth, SampleRateWaitsForTheNextBlock) {
    OpenSynth effect;
    fillLines(effect, 0.5f);
    const FourPoleFilter* const filter = effect.lowPassLeft;
    effect.setSampleRate(48000.0f);
    EXPECT_EQ(effect.sampleRate, 48000.0f);
    EXPECT_EQ(effect.delayLength, 3526);
    EXPECT_EQ(effect.lastSampleRate, 44100);
    EXPECT_EQ(effect.lowPassLeft, filter);
    EXPECT_FALSE(silent(effect.delayBufferLeft));
    processSilence(effect, 0);
    EXPECT_EQ(effect.delayLength, 3838); // 47999 times 0.0799773261
    EXPECT_EQ(effect.lastSampleRate, 48000);
    EXPECT_NE(effect.lowPassLeft, filter);
    EXPECT_TRUE(silent(effect.delayBufferLeft));
}

TEST(VstXSynth, BlockSizeChangesNothingElse) {
    OpenSynth effect;
    effect.setBlockSize(64);
    EXPECT_EQ(effect.blockSize, 64);
    EXPECT_EQ(stateDifference(effect, ReferenceDelay()), "");
}

TEST(VstXSynth, OperationsOfTheBaseKeepTheirDefaults) {
    OpenSynth effect;
    void* data = &effect;
    EXPECT_EQ(effect.getChunk(&data, true), 0);
    EXPECT_EQ(effect.setChunk(data, 10, false), 0);
    EXPECT_EQ(effect.getGetTailSize(), 0);
    effect.open();
    effect.close();
    effect.processDoubleReplacing(nullptr, nullptr, 100);
    effect.process(nullptr, nullptr, 100);
    EXPECT_EQ(stateDifference(effect, ReferenceDelay()), "");
}

namespace {

class CountedEditor : public tveditor13 {
public:
    CountedEditor(AudioEffect* owner, int* ends) : tveditor13(owner), ends_(ends) {}
    ~CountedEditor() override { ++*ends_; }

private:
    int* ends_;
};

} // namespace

TEST(VstXSynth, EditorIsDeletedOnceThoughTwoFieldsHoldIt) {
    int ends = 0;
    AEffect* const record = VSTPluginMain(plainHost);
    auto* const effect = static_cast<VstXSynth*>(static_cast<AudioEffect*>(record->object));
    delete effect->uiEditor;
    effect->uiEditor = new CountedEditor(effect, &ends); // makes itself the effect's
    EXPECT_EQ(effect->getEditor(), effect->uiEditor);
    EXPECT_EQ(record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f), 1);
    EXPECT_EQ(ends, 1);
}

TEST(VstXSynth, EndLeavesBuffersFiltersAndProgramsAllocated) {
    auto effect = std::make_unique<VstXSynth>(plainHost);
    float* const left = effect->delayBufferLeft;
    float* const right = effect->delayBufferRight;
    double* const table = effect->sineTable;
    DelayProgram* const programs = effect->programs;
    FourPoleFilter* const filters[4] = {effect->lowPassLeft, effect->lowPassRight,
                                        effect->highPassLeft, effect->highPassRight};
    effect.reset();
    // Freed memory would show under AddressSanitizer, and here by its contents.
    left[191999] = right[191999] = 1.0f;
    EXPECT_EQ(bitsOf(table[0]), 0u);
    EXPECT_STREQ(programs[25].name, "Punk");
    for (FourPoleFilter* filter : filters) {
        tick(filter, 1.0);
    }
    for (const FourPoleFilter* filter : filters) {
        EXPECT_EQ(filter->inputHistory[0], 1.0);
    }
}

TEST(VstXSynth, ResumeInTheMiddleOfAPassGivesSilentEchoes) {
    VstXSynth effect(plainHost);
    effect.setParameter(kLowPass, 0.0f);
    effect.setParameter(kHighPass, 0.0f);
    std::vector<float> samples(3526, 1.0f);
    float* channels[2] = {samples.data(), samples.data()};
    effect.processReplacing(channels, channels, 3526);
    effect.resume();
    std::fill(samples.begin(), samples.end(), 0.0f);
    effect.processReplacing(channels, channels, 3526);
    for (const float sample : samples) {
        ASSERT_EQ(sample, 0.0f);
    }
}
