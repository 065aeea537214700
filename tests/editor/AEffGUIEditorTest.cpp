#include "editor/AEffGUIEditor.h"

#include "editor/tveditor13.h"
#include "tests/editor/FakeCarbon.h"
#include "tests/editor/OpenEditor.h"
#include "tests/plugin/PlainEffect.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

const VstInt32 kKnobModeAtStart = AEffGUIEditor::knobMode;

// Writes the calls of its editor down.
class EditedEffect : public PlainEffectX {
public:
    EditedEffect() : PlainEffectX(RecordingHost::callback) {}

    void masterIdle() override {
        calls.push_back(shown->inIdleStuff ? "masterIdle inside" : "masterIdle outside");
    }
    VstInt32 canHostDo(char* text) override {
        calls.push_back("canHostDo " + std::string(text));
        return hostSizesWindows;
    }
    bool sizeWindow(VstInt32 width, VstInt32 height) override {
        calls.push_back("sizeWindow " + std::to_string(width) + " " + std::to_string(height));
        return sizeAnswer;
    }
    bool beginEdit(VstInt32 index) override {
        calls.push_back("beginEdit " + std::to_string(index));
        return true;
    }
    bool endEdit(VstInt32 index) override {
        calls.push_back("endEdit " + std::to_string(index));
        return true;
    }

    std::vector<std::string> calls;
    OpenEditor* shown = nullptr;
    VstInt32 hostSizesWindows = 0;
    bool sizeAnswer = false;
};

class IdlingEditor : public OpenEditor {
public:
    explicit IdlingEditor(EditedEffect* owner) : OpenEditor(owner), log_(&owner->calls) {
        owner->shown = this;
    }
    void idle() override { log_->push_back(inIdleStuff ? "idle inside" : "idle"); }

private:
    std::vector<std::string>* log_;
};

class AEffGUIEditorTest : public testing::Test {
protected:
    AEffGUIEditorTest() {
        FakeCarbon::ticks = 600; // 10000 ms
        FakeCarbon::loopTimeouts.clear();
        editor = new IdlingEditor(&effect);
    }

    EditedEffect effect;
    IdlingEditor* editor; // the effect's
};

using Calls = std::vector<std::string>;

} // namespace

TEST_F(AEffGUIEditorTest, TicksAreMillisecondsThatWrapBeforeTheDivision) {
    const std::pair<std::uint32_t, std::uint32_t> rows[] = {
        {0, 0},
        {1, 16},
        {2, 33},
        {59, 983},
        {60, 1000},
        {600, 10000},
        {4294967, 71582783},
        {4294968, 11},
        {4294969, 28},
        {0x80000000u, 0},
        {0xFFFFFFFFu, 71582771},
    };
    for (const auto& [ticks, milliseconds] : rows) {
        FakeCarbon::ticks = ticks;
        EXPECT_EQ(AEffGUIEditor::getTicks(), milliseconds) << ticks;
    }
}

TEST_F(AEffGUIEditorTest, WaitingRunsTheEventLoopForThatTime) {
    AEffGUIEditor::wait(4);
    AEffGUIEditor::wait(250);
    AEffGUIEditor::wait(0);
    AEffGUIEditor::wait(0xFFFFFFFFu);
    EXPECT_EQ(FakeCarbon::loopTimeouts,
              (std::vector<double>{4 * 0.001, 250 * 0.001, 0.0, 4294967295.0 * 0.001}));
}

TEST_F(AEffGUIEditorTest, ConstructionMakesItTheEffectsEditor) {
    EXPECT_EQ(effect.getEditor(), editor);
    EXPECT_NE(effect.cEffect.flags & effFlagsHasEditor, 0);
    EXPECT_EQ(editor->getEffect(), &effect);
    EXPECT_EQ(editor->systemWindow, nullptr);
    EXPECT_EQ(editor->frame, nullptr);
    EXPECT_EQ(editor->getFrame(), nullptr);
    EXPECT_FALSE(editor->inIdleStuff);
    EXPECT_EQ(editor->lastTicks, 10000u);
    EXPECT_TRUE(effect.calls.empty());
}

TEST_F(AEffGUIEditorTest, FieldsStandInOrder) {
    const auto at = [](const auto& object, const auto& field) {
        return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&object);
    };
    EXPECT_EQ(at(*editor, editor->effect), 8);
    EXPECT_EQ(at(*editor, editor->systemWindow), 16);
    EXPECT_EQ(at(*editor, static_cast<VSTGUIEditorInterface&>(*editor)), 24);
    EXPECT_EQ(at(*editor, editor->frame), 32);
    EXPECT_EQ(at(*editor, editor->rect), 40);
    EXPECT_EQ(at(*editor, editor->lastTicks), 48);
    EXPECT_EQ(at(*editor, editor->inIdleStuff), 52);
    static_assert(std::is_same_v<decltype(OpenEditor::lastTicks), std::uint32_t>);

    EditedEffect owner;
    auto* const product = new tveditor13(&owner);
    EXPECT_EQ(at(*product, product->embedView), 56);
    EXPECT_EQ(at(*product, product->uiView), 64);
    EXPECT_EQ(at(*product, product->effectPtr), 72);
    EXPECT_EQ(at(*product, product->detachedWindow), 80);
    EXPECT_EQ(at(*product, product->editorOpen), 88);
}

TEST_F(AEffGUIEditorTest, RectangleIsTheEditorsOwnRecord) {
    ERect* told = nullptr;
    EXPECT_TRUE(editor->getRect(&told));
    EXPECT_EQ(told, &editor->rect);
    EXPECT_EQ(told->top, 0);
    EXPECT_EQ(told->left, 0);
    EXPECT_EQ(told->bottom, 400);
    EXPECT_EQ(told->right, 344);
}

TEST_F(AEffGUIEditorTest, FrameOpensByKeepingTheWindow) {
    int window = 0;
    EXPECT_FALSE(editor->isOpen());
    EXPECT_FALSE(editor->open(&window));
    EXPECT_EQ(editor->systemWindow, &window);
    EXPECT_TRUE(editor->isOpen());
    editor->close();
    EXPECT_EQ(editor->systemWindow, nullptr);
    EXPECT_FALSE(editor->isOpen());
    EXPECT_FALSE(editor->open(nullptr));
    EXPECT_FALSE(editor->isOpen());
}

TEST_F(AEffGUIEditorTest, EventOperationsDoNothing) {
    EditedEffect owner;
    auto* const plain = new OpenEditor(&owner);
    VstKeyCode key = {65, 1, 2};
    ERect area = {1, 2, 3, 4};
    plain->idle();
    plain->draw(&area);
    EXPECT_EQ(plain->mouse(1, 2), 0);
    EXPECT_EQ(plain->key(3), 0);
    plain->top();
    plain->sleep();
    EXPECT_FALSE(plain->onKeyDown(key));
    EXPECT_FALSE(plain->onKeyUp(key));
    EXPECT_FALSE(plain->onWheel(1.5f));
    plain->setParameter(0, 0.5f);
    plain->editorReservedHook();
    EXPECT_TRUE(owner.calls.empty());
    EXPECT_TRUE(FakeCarbon::loopTimeouts.empty());
}

TEST_F(AEffGUIEditorTest, KnobModeIsSharedByAllEditors) {
    EXPECT_EQ(kKnobModeAtStart, 0);
    EditedEffect otherEffect;
    auto* const other = new OpenEditor(&otherEffect);
    EXPECT_TRUE(editor->setKnobMode(2));
    EXPECT_EQ(editor->getKnobMode(), 2);
    EXPECT_EQ(other->getKnobMode(), 2);
    EXPECT_TRUE(other->setKnobMode(-7));
    EXPECT_EQ(editor->getKnobMode(), -7);
    EXPECT_EQ(effect.dispatcher(effSetEditKnobMode, 0, 1, nullptr, 0.0f), 1);
    EXPECT_EQ(other->getKnobMode(), 1);
    EXPECT_TRUE(editor->setKnobMode(0));
}

TEST_F(AEffGUIEditorTest, IdlePassOnTimeRunsAtOnce) {
    editor->lastTicks = 10000; // now
    editor->doIdleStuff();
    EXPECT_EQ(effect.calls, (Calls{"idle", "masterIdle inside"}));
    EXPECT_TRUE(FakeCarbon::loopTimeouts.empty());
    EXPECT_EQ(editor->lastTicks, 10100u);
    EXPECT_FALSE(editor->inIdleStuff);
}

TEST_F(AEffGUIEditorTest, LateIdlePassRunsAtOnce) {
    editor->lastTicks = 3;
    editor->doIdleStuff();
    EXPECT_EQ(effect.calls, (Calls{"idle", "masterIdle inside"}));
    EXPECT_TRUE(FakeCarbon::loopTimeouts.empty());
    EXPECT_EQ(editor->lastTicks, 10100u);
}

TEST_F(AEffGUIEditorTest, IdlePassALittleEarlyRunsAfterAWait) {
    for (const std::uint32_t early : {1u, 4u, 50u, 54u}) {
        effect.calls.clear();
        FakeCarbon::loopTimeouts.clear();
        editor->lastTicks = 10000 + early;
        editor->doIdleStuff();
        EXPECT_EQ(FakeCarbon::loopTimeouts, std::vector<double>{0.004}) << early;
        EXPECT_EQ(effect.calls, (Calls{"idle", "masterIdle inside"})) << early;
        EXPECT_EQ(editor->lastTicks, 10104u) << early;
    }
}

TEST_F(AEffGUIEditorTest, IdlePassTooEarlyOnlyWaits) {
    for (const std::uint32_t early : {55u, 100u, 100000u}) {
        effect.calls.clear();
        FakeCarbon::loopTimeouts.clear();
        editor->lastTicks = 10000 + early;
        editor->doIdleStuff();
        EXPECT_EQ(FakeCarbon::loopTimeouts, std::vector<double>{0.004}) << early;
        EXPECT_TRUE(effect.calls.empty()) << early;
        EXPECT_EQ(editor->lastTicks, 10000 + early);
        EXPECT_FALSE(editor->inIdleStuff);
    }
}

TEST_F(AEffGUIEditorTest, IdlePassWithoutAnEffectAsksNobody) {
    editor->effect = nullptr;
    editor->lastTicks = 0;
    editor->doIdleStuff();
    EXPECT_EQ(effect.calls, Calls{"idle"});
    EXPECT_EQ(editor->lastTicks, 10100u);
    EXPECT_FALSE(editor->inIdleStuff);
}

TEST_F(AEffGUIEditorTest, IdlePassWorksThroughTheFramesInterface) {
    editor->lastTicks = 0;
    static_cast<VSTGUIEditorInterface*>(editor)->doIdleStuff();
    EXPECT_EQ(effect.calls, (Calls{"idle", "masterIdle inside"}));
}

TEST_F(AEffGUIEditorTest, SizeChangeIsGrantedByAHostThatCanNotSizeWindows) {
    EXPECT_TRUE(editor->beforeSizeChange({0, 0, 344, 400}, {0, 0, 1, 1}));
    EXPECT_EQ(effect.calls, Calls{"canHostDo sizeWindow"});
}

TEST_F(AEffGUIEditorTest, SizeChangeIsTheHostsDecisionWhereItCan) {
    for (const VstInt32 can : {1, -1}) {
        for (const bool answer : {false, true}) {
            effect.calls.clear();
            effect.hostSizesWindows = can;
            effect.sizeAnswer = answer;
            EXPECT_EQ(editor->beforeSizeChange({10.9, 20.2, 355.5, 419.9}, {9, 9, 9, 9}), answer);
            EXPECT_EQ(effect.calls, (Calls{"canHostDo sizeWindow", "sizeWindow 344 399"}));
        }
    }
    effect.calls.clear();
    static_cast<VSTGUIEditorInterface*>(editor)->beforeSizeChange({5.5, 2.0, 4.6, 0.5}, {});
    EXPECT_EQ(effect.calls, (Calls{"canHostDo sizeWindow", "sizeWindow 0 -1"}));
}

TEST_F(AEffGUIEditorTest, SizeChangeWithoutAnEffectIsGranted) {
    effect.hostSizesWindows = 1;
    editor->effect = nullptr;
    EXPECT_TRUE(editor->beforeSizeChange({0, 0, 10, 10}, {0, 0, 1, 1}));
    EXPECT_TRUE(effect.calls.empty());
}

TEST_F(AEffGUIEditorTest, EditsAreHandedToTheEffect) {
    editor->beginEdit(3);
    editor->endEdit(-4);
    VSTGUIEditorInterface* const seenByTheFrame = editor;
    seenByTheFrame->beginEdit(5);
    seenByTheFrame->endEdit(6);
    EXPECT_EQ(effect.calls, (Calls{"beginEdit 3", "endEdit -4", "beginEdit 5", "endEdit 6"}));
}

TEST_F(AEffGUIEditorTest, EditorThatWasAskedToOpenIsNotSaidToBeOpen) {
    EditedEffect owner;
    auto* const product = new tveditor13(&owner);
    EXPECT_FALSE(product->editorOpen);
    EXPECT_TRUE(product->open(nullptr));
    EXPECT_TRUE(product->editorOpen);
    EXPECT_FALSE(product->isOpen());
    EXPECT_EQ(product->embedView, nullptr);
    product->close();
    EXPECT_FALSE(product->editorOpen);
    EXPECT_FALSE(product->isOpen());
}
