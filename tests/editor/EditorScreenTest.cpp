// An editor in the window of a Linux host: what it shows, and what the mouse makes of it.
#include "tests/editor/RecordingSynth.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include "editor/tveditor13.h"
#include "plugin/vst2/EffectOpcodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <random>
#include <thread>

namespace {

struct Centre {
    int parameter, x, y;
};

constexpr std::array<Centre, 7> kKnobs{{{0, 84, 226},
                                        {8, 263, 226},
                                        {1, 178, 226},
                                        {2, 141, 143},
                                        {3, 216, 143},
                                        {7, 99, 61},
                                        {6, 246, 61}}};
constexpr std::array<Centre, 2> kSwitches{{{4, 89, 140}, {5, 260, 140}}};

std::vector<ParameterWrite> broadcast(const std::array<float, 9>& values) {
    std::vector<ParameterWrite> writes;
    for (const int parameter : {0, 8, 1, 2, 3, 7, 6, 4, 5}) {
        writes.push_back({parameter, values[static_cast<std::size_t>(parameter)], true});
    }
    return writes;
}

// Frames and states that stand for the effect's values, as the host's writes set them.
FaceControls shownFor(AEffect* effect) {
    FaceControls controls{};
    for (int parameter = 0; parameter < 9; ++parameter) {
        const float value = effect->getParameter(effect, parameter);
        const int step = static_cast<int>(value * 100.0f);
        controls[static_cast<std::size_t>(parameter)] =
            parameter == 4 || parameter == 5 ? static_cast<int>(value) : step * 127 / 100;
    }
    return controls;
}

} // namespace

class EditorScreen : public testing::Test {
protected:
    EditorScreen() { sharedXServer(); }

    // Waits for the writes of `events` movements and takes them.
    std::vector<ParameterWrite> writesOf(HostedEditor& editor, std::size_t events) {
        EXPECT_TRUE(editor.becomes([&] { return synth.writes.size() >= 9 * events; }));
        return std::exchange(synth.writes, {});
    }

    void set(VstInt32 parameter, float value) {
        synth.getAeffect()->setParameter(synth.getAeffect(), parameter, value);
    }

    RecordingSynth synth;
};

TEST_F(EditorScreen, FaceAtOpeningIsComposedOfThePictures) {
    HostedEditor editor(synth.getAeffect());
    EXPECT_EQ(editor.openAnswer, 1);
    ASSERT_TRUE(editor.shows(kSlapBack));
    EXPECT_EQ(shownControls(editor.settledScreen()), kSlapBack);
    EXPECT_TRUE(showsFace(editor.settledScreen(), kSlapBack));
}

TEST_F(EditorScreen, FacesTellNeighbouringFramesAndStatesApart) {
    for (std::size_t control = 0; control < kSlapBack.size(); ++control) {
        const int last = control == 4 || control == 5 ? 1 : 127;
        FaceControls shown = kSlapBack;
        for (shown[control] = 0; shown[control] < last; ++shown[control]) {
            FaceControls next = shown;
            ++next[control];
            EXPECT_FALSE(showsFace(expectedFace(shown), next)) << control << shown[control];
        }
    }
}

TEST_F(EditorScreen, EditorLiesAtTheUpperLeftOfTheHostsWindow) {
    HostedEditor editor(synth.getAeffect());
    ASSERT_TRUE(editor.becomes([&] {
        const auto children = editor.window.children();
        return children.size() == 1 && children[0].mapped;
    }));
    const HostWindow::Child child = editor.window.children()[0];
    EXPECT_EQ(child.x, 0);
    EXPECT_EQ(child.y, 0);
    EXPECT_EQ(child.width, 344);
    EXPECT_EQ(child.height, 400);
}

TEST_F(EditorScreen, DragOfAnyKnobWritesAllNineParameters) {
    for (const Centre& knob : kKnobs) {
        SCOPED_TRACE(knob.parameter);
        RecordingSynth fresh;
        HostedEditor editor(fresh.getAeffect());
        ASSERT_TRUE(editor.shows(kSlapBack));
        fresh.writes.clear();
        editor.mouse.moveTo(knob.x, knob.y);
        editor.mouse.press();
        editor.idle();
        EXPECT_TRUE(fresh.writes.empty());
        // From the base angle of 85 degrees, 54 points up: 31 degrees, which is step 71.
        editor.mouse.moveTo(knob.x, knob.y + 54);
        ASSERT_TRUE(editor.becomes([&] { return fresh.writes.size() >= 9; }));
        std::array<float, 9> sent = kSlapBackSent;
        sent[static_cast<std::size_t>(knob.parameter)] = 71 * 0.01f;
        EXPECT_EQ(fresh.writes, broadcast(sent));
        FaceControls shown = kSlapBack;
        shown[static_cast<std::size_t>(knob.parameter)] = 90;
        EXPECT_TRUE(editor.shows(shown));
        editor.mouse.release();
        editor.idle();
        editor.idle();
        EXPECT_EQ(fresh.writes.size(), 9u);
    }
}

TEST_F(EditorScreen, DragToTheTopSendsFullAndToTheBottomNothing) {
    HostedEditor editor(synth.getAeffect());
    const Centre& feedBack = kKnobs[2];
    editor.mouse.moveTo(feedBack.x, feedBack.y);
    editor.mouse.press();
    editor.mouse.moveTo(feedBack.x, feedBack.y + 170);
    std::array<float, 9> sent = kSlapBackSent;
    sent[1] = 1.0f;
    EXPECT_EQ(writesOf(editor, 1), broadcast(sent));
    FaceControls shown = kSlapBack;
    shown[1] = 125;
    EXPECT_TRUE(editor.shows(shown));
    editor.mouse.moveTo(feedBack.x, feedBack.y - 200);
    sent[1] = 0.0f;
    EXPECT_EQ(writesOf(editor, 1), broadcast(sent));
    shown[1] = 0;
    EXPECT_TRUE(editor.shows(shown));
    editor.mouse.release();
}

TEST_F(EditorScreen, DragContinuesWhereTheLastOneEnded) {
    HostedEditor editor(synth.getAeffect());
    const Centre& mix = kKnobs[1];
    editor.mouse.moveTo(mix.x, mix.y);
    editor.mouse.press();
    editor.mouse.moveTo(mix.x, mix.y - 15); // 100 degrees: step 45
    EXPECT_EQ(writesOf(editor, 1)[1].value, 45 * 0.01f);
    editor.mouse.release();
    editor.mouse.moveTo(mix.x, mix.y + 5);
    editor.mouse.press();
    // The angle of step 45, cut to 102 degrees, less 12: step 49.
    editor.mouse.moveTo(mix.x, mix.y + 17);
    EXPECT_EQ(writesOf(editor, 1)[1].value, 49 * 0.01f);
    editor.mouse.release();
}

TEST_F(EditorScreen, ClickBeforeADragMakesItStartFromTheValueShown) {
    set(1, 0.205f);
    HostedEditor editor(synth.getAeffect());
    synth.writes.clear();
    const Centre& feedBack = kKnobs[2];
    editor.mouse.moveTo(feedBack.x, feedBack.y);
    editor.mouse.press();
    editor.mouse.release();
    editor.mouse.press();
    // Step 20 stands at 170 degrees.
    editor.mouse.moveTo(feedBack.x, feedBack.y + 10);
    EXPECT_EQ(writesOf(editor, 1)[2].value, 23 * 0.01f);
    editor.mouse.release();
}

TEST_F(EditorScreen, DragWithoutAClickBeforeStartsFromTheOldBase) {
    set(1, 0.205f);
    HostedEditor editor(synth.getAeffect());
    synth.writes.clear();
    const Centre& feedBack = kKnobs[2];
    editor.mouse.moveTo(feedBack.x, feedBack.y);
    editor.mouse.press();
    editor.mouse.moveTo(feedBack.x, feedBack.y + 1); // 84 degrees
    EXPECT_EQ(writesOf(editor, 1)[2].value, 51 * 0.01f);
    editor.mouse.release();
}

TEST_F(EditorScreen, PressOfASwitchFlipsItAndWritesAllNine) {
    for (const Centre& toggle : kSwitches) {
        SCOPED_TRACE(toggle.parameter);
        RecordingSynth fresh;
        HostedEditor editor(fresh.getAeffect());
        ASSERT_TRUE(editor.shows(kSlapBack));
        fresh.writes.clear();
        editor.mouse.moveTo(toggle.x, toggle.y);
        for (const int state : {1, 0, 1}) {
            editor.mouse.press();
            ASSERT_TRUE(editor.becomes([&] { return fresh.writes.size() >= 9; }));
            std::array<float, 9> sent = kSlapBackSent;
            sent[static_cast<std::size_t>(toggle.parameter)] = static_cast<float>(state);
            EXPECT_EQ(fresh.writes, broadcast(sent));
            FaceControls shown = kSlapBack;
            shown[static_cast<std::size_t>(toggle.parameter)] = state;
            EXPECT_TRUE(editor.shows(shown)); // while the button is still down
            editor.mouse.release();
            editor.idle();
            editor.idle();
            EXPECT_EQ(fresh.writes.size(), 9u);
            fresh.writes.clear();
        }
    }
}

TEST_F(EditorScreen, FirstMovementSwitchesBothTypesOff) {
    set(4, 1.0f);
    set(5, 1.0f);
    HostedEditor editor(synth.getAeffect());
    ASSERT_TRUE(synth.lowPassType && synth.highPassType);
    synth.writes.clear();
    editor.mouse.moveTo(kKnobs[0].x, kKnobs[0].y);
    editor.mouse.press();
    editor.mouse.moveTo(kKnobs[0].x, kKnobs[0].y + 30);
    writesOf(editor, 1);
    editor.mouse.release();
    EXPECT_FALSE(synth.lowPassType);
    EXPECT_FALSE(synth.highPassType);
    EXPECT_FALSE(synth.programs[0].lowPassType);
    EXPECT_FALSE(synth.programs[0].highPassType);
}

TEST_F(EditorScreen, ValuesSentUpDoNotComeBack) {
    HostedEditor editor(synth.getAeffect());
    editor.mouse.moveTo(kKnobs[4].x, kKnobs[4].y);
    editor.mouse.press();
    editor.mouse.moveTo(kKnobs[4].x, kKnobs[4].y + 43); // 42 degrees: step 67
    EXPECT_EQ(writesOf(editor, 1)[4].value, 67 * 0.01f);
    editor.mouse.release();
    // 67 * 0.01f would have come back as step 66; other knobs stay where they opened.
    ASSERT_EQ(static_cast<int>(67 * 0.01f * 100.0f), 66);
    FaceControls shown = kSlapBack;
    shown[3] = 85;
    EXPECT_TRUE(editor.shows(shown));
    EXPECT_EQ(shownControls(editor.settledScreen()), shown);
}

TEST_F(EditorScreen, EachProgramShowsItsFramesAndSwitches) {
    HostedEditor editor(synth.getAeffect());
    AEffect* const effect = synth.getAeffect();
    for (int program = 25; program >= 0; --program) {
        SCOPED_TRACE(program);
        effect->dispatcher(effect, effSetProgram, 0, program, nullptr, 0.0f);
        const FaceControls expected = shownFor(effect);
        ASSERT_TRUE(editor.shows(expected));
        EXPECT_EQ(shownControls(editor.window.screen()), expected);
    }
}

TEST_F(EditorScreen, MovementAfterAProgramChangeKeepsItsTypes) {
    HostedEditor editor(synth.getAeffect());
    AEffect* const effect = synth.getAeffect();
    effect->dispatcher(effect, effSetProgram, 0, 9, nullptr, 0.0f);
    // The program's values in hundredths, cut; both types stand inside the loop.
    ASSERT_TRUE(editor.shows({16, 63, 29, 59, 1, 1, 63, 0, 63}));
    synth.writes.clear();
    const Centre& mix = kKnobs[1];
    editor.mouse.moveTo(mix.x, mix.y);
    editor.mouse.press();
    editor.mouse.moveTo(mix.x, mix.y + 54);
    EXPECT_EQ(writesOf(editor, 1), broadcast({13 * 0.01f, 50 * 0.01f, 23 * 0.01f, 47 * 0.01f, 1.0f,
                                              1.0f, 50 * 0.01f, 0.0f, 71 * 0.01f}));
    editor.mouse.release();
    EXPECT_TRUE(synth.lowPassType);
    EXPECT_TRUE(synth.highPassType);
}

TEST_F(EditorScreen, EveryStepShowsItsFrame) {
    HostedEditor editor(synth.getAeffect());
    for (int step = 0; step <= 100; ++step) {
        SCOPED_TRACE(step);
        FaceControls expected{};
        for (const Centre& knob : kKnobs) {
            const int own = (step + knob.parameter * 13) % 101;
            set(knob.parameter, (static_cast<float>(own) + 0.5f) / 100.0f);
            expected[static_cast<std::size_t>(knob.parameter)] = own * 127 / 100;
        }
        set(4, static_cast<float>(step % 2));
        set(5, static_cast<float>(step / 2 % 2));
        expected[4] = step % 2;
        expected[5] = step / 2 % 2;
        ASSERT_TRUE(editor.shows(expected));
    }
    set(0, 1.0f);
    EXPECT_TRUE(editor.becomes([&] { return shownControls(editor.window.screen())[0] == 127; }));
}

TEST_F(EditorScreen, SwitchAloneFollowsTheHostOnAnyThread) {
    HostedEditor editor(synth.getAeffect());
    FaceControls shown = kSlapBack;
    ASSERT_TRUE(editor.shows(shown));
    for (const int state : {1, 0}) {
        set(4, static_cast<float>(state));
        shown[4] = state;
        EXPECT_TRUE(editor.shows(shown));
        std::thread([&] { set(5, static_cast<float>(state)); }).join();
        shown[5] = state;
        EXPECT_TRUE(editor.shows(shown));
    }
}

TEST_F(EditorScreen, HoldKeepsAValueFromTheView) {
    HostedEditor editor(synth.getAeffect());
    ASSERT_TRUE(editor.shows(kSlapBack));
    synth.editorUpdateHold = true;
    set(8, 0.2f);
    synth.editorUpdateHold = false;
    set(1, 0.5f);
    FaceControls shown = kSlapBack;
    shown[1] = 63;
    EXPECT_TRUE(editor.shows(shown));
}

TEST_F(EditorScreen, AutomationFromAnotherThreadMovesTheKnobsWhileAudioRuns) {
    const auto seed = static_cast<std::mt19937::result_type>(randomSeed(3));
    SCOPED_TRACE(seed);
    HostedEditor editor(synth.getAeffect());
    AEffect* const effect = synth.getAeffect();
    std::atomic<bool> stopped{false};
    std::thread audio([&] {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> value(0.0f, 1.0f);
        std::vector<float> left(64, 0.1f), right(64, 0.1f);
        float* buffers[] = {left.data(), right.data()};
        for (int block = 0; block < 500 && !stopped; ++block) {
            for (int parameter = 1; parameter < 9; ++parameter) {
                effect->setParameter(effect, parameter, value(random));
            }
            effect->processReplacing(effect, buffers, buffers, 64);
        }
        for (int parameter = 0; parameter < 9; ++parameter) {
            effect->setParameter(effect, parameter,
                                 parameter == 4 || parameter == 5 ? 1.0f : 0.755f);
        }
        while (!stopped) {
            effect->processReplacing(effect, buffers, buffers, 64);
        }
    });
    const FaceControls expected{95, 95, 95, 95, 1, 1, 95, 95, 95};
    EXPECT_TRUE(editor.shows(expected));
    stopped = true;
    audio.join();
}

TEST_F(EditorScreen, DragIsHeardAtTheNextSample) {
    HostedEditor editor(synth.getAeffect());
    AEffect* const effect = synth.getAeffect();
    const auto echo = [&] {
        // An impulse, and the block in which its echo comes back.
        std::vector<float> left(8192, 0.0f), right(8192, 0.0f);
        left[0] = 1.0f;
        float* buffers[] = {left.data(), right.data()};
        effect->processReplacing(effect, buffers, buffers, 8192);
        float loudest = 0.0f;
        for (std::size_t i = 1; i < left.size(); ++i) {
            loudest = std::max({loudest, std::fabs(left[i]), std::fabs(right[i])});
        }
        return loudest;
    };
    EXPECT_GT(echo(), 0.1f);
    synth.writes.clear();
    const Centre& mix = kKnobs[1];
    editor.mouse.moveTo(mix.x, mix.y);
    editor.mouse.press();
    editor.mouse.moveTo(mix.x, mix.y - 180);
    writesOf(editor, 1);
    EXPECT_EQ(echo(), 0.0f);
    editor.mouse.moveTo(mix.x, mix.y + 180);
    writesOf(editor, 1);
    editor.mouse.release();
    EXPECT_GT(echo(), 0.1f);
}

TEST_F(EditorScreen, EditorComesBackWhenItIsUncovered) {
    HostedEditor editor(synth.getAeffect());
    ASSERT_TRUE(editor.shows(kSlapBack));
    editor.window.cover();
    editor.idle();
    EXPECT_EQ(editor.window.screen().at(100, 100), (Pixel{0, 255, 0, 255}));
    set(1, 0.755f);
    editor.idle();
    editor.window.uncover();
    FaceControls shown = kSlapBack;
    shown[1] = 95;
    EXPECT_TRUE(editor.shows(shown));
}

TEST_F(EditorScreen, TwoEditorsShowTheirOwnEffects) {
    RecordingSynth other;
    HostedEditor first(synth.getAeffect(), 100, 80);
    HostedEditor second(other.getAeffect(), 600, 80);
    ASSERT_TRUE(first.shows(kSlapBack));
    ASSERT_TRUE(second.shows(kSlapBack));
    synth.writes.clear();
    other.writes.clear();
    second.mouse.moveTo(kKnobs[0].x, kKnobs[0].y);
    second.mouse.press();
    second.mouse.moveTo(kKnobs[0].x, kKnobs[0].y + 54);
    // The idle call of either one serves both.
    EXPECT_TRUE(first.becomes([&] { return other.writes.size() >= 9; }));
    second.mouse.release();
    EXPECT_TRUE(synth.writes.empty());
    FaceControls moved = kSlapBack;
    moved[0] = 90;
    EXPECT_TRUE(second.shows(moved));
    EXPECT_TRUE(first.shows(kSlapBack));
    other.writes.clear();
    first.mouse.moveTo(kKnobs[2].x, kKnobs[2].y);
    first.mouse.press();
    first.mouse.moveTo(kKnobs[2].x, kKnobs[2].y + 54);
    EXPECT_TRUE(second.becomes([&] { return synth.writes.size() >= 9; }));
    first.mouse.release();
    EXPECT_TRUE(other.writes.empty());
    second.close();
    set(1, 0.5f);
    FaceControls shown = kSlapBack;
    shown[1] = 63;
    EXPECT_TRUE(first.shows(shown));
}

TEST_F(EditorScreen, IdleCallWithinIdleWorkDeliversNothing) {
    struct IdlingEditor : tveditor13 {
        using AEffGUIEditor::inIdleStuff;
        using tveditor13::tveditor13;
    };
    delete synth.uiEditor;
    auto* const own = new IdlingEditor(&synth); // makes itself the effect's
    own->setEffectRef(&synth);
    synth.uiEditor = own;
    HostedEditor editor(synth.getAeffect());
    ASSERT_TRUE(editor.shows(kSlapBack));
    editor.settledScreen();
    own->inIdleStuff = true;
    set(1, 0.505f);
    for (int call = 0; call < 5; ++call) {
        editor.idle();
    }
    EXPECT_EQ(shownControls(editor.window.screen()), kSlapBack);
    own->inIdleStuff = false;
    FaceControls shown = kSlapBack;
    shown[1] = 63;
    EXPECT_TRUE(editor.shows(shown));
}

TEST_F(EditorScreen, ReopenedEditorReadsTheStepsAnew) {
    {
        HostedEditor editor(synth.getAeffect());
        editor.mouse.moveTo(kKnobs[2].x, kKnobs[2].y);
        editor.mouse.press();
        editor.mouse.moveTo(kKnobs[2].x, kKnobs[2].y + 1); // step 51
        editor.becomes([&] { return synth.writes.size() >= 9; });
        editor.mouse.release();
        editor.idle();
    }
    HostedEditor editor(synth.getAeffect());
    // 51, 7, 37 and 65 hundredths; in double precision 51 and 65 read back as one step less.
    FaceControls shown{8, 63, 46, 81, 0, 0, 63, 0, 127};
    EXPECT_TRUE(editor.shows(shown));
    EXPECT_EQ(shownControls(editor.settledScreen()), shown);
}
