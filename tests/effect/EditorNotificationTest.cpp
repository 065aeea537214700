// When the editor hears of a parameter, and of which.
#include "effect/VstXSynth.h"

#include "editor/tveditor13.h"
#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace {

using Told = std::vector<std::pair<VstInt32, float>>;

class ListeningEditor : public tveditor13 {
public:
    using tveditor13::tveditor13;
    void setParameter(VstInt32 index, float value) override { told.emplace_back(index, value); }

    Told told;
};

class EditorNotification : public testing::Test {
protected:
    EditorNotification() {
        delete effect.uiEditor;
        editor = new ListeningEditor(&effect); // makes itself the effect's
        effect.uiEditor = editor;
        editor->editorOpen = true;
    }

    VstXSynth effect{plainHost};
    ListeningEditor* editor; // the effect's
};

} // namespace

TEST_F(EditorNotification, EveryIndexIsTold) {
    constexpr VstInt32 kLowest = std::numeric_limits<VstInt32>::min();
    Told expected;
    for (const VstInt32 index : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 100, -1, kLowest}) {
        effect.setParameter(index, 0.25f);
        expected.emplace_back(index, 0.25f);
    }
    EXPECT_EQ(editor->told, expected);
}

TEST_F(EditorNotification, HighPassIsToldAloneThoughItMovesTheLowPass) {
    effect.setParameter(kLowPassType, 0.0f);
    editor->told.clear();
    effect.setParameter(kHighPass, 0.5f);
    EXPECT_EQ(editor->told, (Told{{3, 0.5f}}));
    EXPECT_TRUE(effect.lowPassType);
}

TEST_F(EditorNotification, ClosedEditorIsToldNothing) {
    editor->editorOpen = false;
    effect.setParameter(kMix, 0.5f);
    effect.setParameter(9, 0.5f);
    effect.setProgram(3);
    EXPECT_TRUE(editor->told.empty());
}

TEST_F(EditorNotification, EditorsOwnWritesDoNotComeBack) {
    effect.editorUpdateHold = true;
    effect.setParameter(kMix, 0.5f);
    effect.setParameter(9, 0.5f);
    effect.setProgram(3);
    EXPECT_TRUE(editor->told.empty());
    EXPECT_EQ(effect.getProgram(), 3);
    effect.editorUpdateHold = false;
    effect.setParameter(kMix, 0.75f);
    EXPECT_EQ(editor->told, (Told{{8, 0.75f}}));
}

TEST_F(EditorNotification, WriteWithoutAnEditorIsFine) {
    effect.setEditor(nullptr);
    effect.setParameter(kMix, 0.5f);
    EXPECT_EQ(effect.getParameter(kMix), 0.5f);
    EXPECT_TRUE(editor->told.empty());
    effect.setEditor(editor);
}

TEST_F(EditorNotification, ProgramChangeTellsAllNineInOrder) {
    effect.setProgram(9);
    EXPECT_EQ(editor->told, (Told{{0, 0.1349886f},
                                  {1, 0.5f},
                                  {2, 0.239999f},
                                  {3, 0.474999f},
                                  {4, 1.0f},
                                  {5, 1.0f},
                                  {6, 0.5f},
                                  {7, 0.0f},
                                  {8, 0.5f}}));
}

TEST_F(EditorNotification, NewSampleRateTellsTheTwoFilterParameters) {
    effect.setSampleRate(48000.0f);
    EXPECT_TRUE(editor->told.empty());
    float samples[2] = {};
    float* channels[2] = {samples, samples + 1};
    effect.processReplacing(channels, channels, 1);
    EXPECT_EQ(editor->told, (Told{{2, 0.374f}, {3, 0.655999f}}));
    effect.processReplacing(channels, channels, 1);
    EXPECT_EQ(editor->told.size(), 2u);
}

TEST_F(EditorNotification, ValueIsToldAsItCameIn) {
    effect.setParameter(kLowPassType, -0.5f);
    effect.setParameter(kDelay, 7.25f);
    EXPECT_EQ(editor->told, (Told{{4, -0.5f}, {0, 7.25f}}));
}

TEST_F(EditorNotification, TheBasesEditorHearsAndNotTheEffectsOwnField) {
    auto* const other = new ListeningEditor(&effect);
    other->editorOpen = true;
    effect.setParameter(kMix, 0.5f);
    EXPECT_EQ(other->told, (Told{{8, 0.5f}}));
    EXPECT_TRUE(editor->told.empty());
    effect.setEditor(editor);
    delete other;
}
