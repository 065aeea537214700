// What an editor paints, and when: judged by the screen alone.
#include "tests/support/LoadedPlugin.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace {

constexpr unsigned long kGreen = 0x00FF00;
constexpr Pixel kGreenPixel{0, 255, 0, 255};

struct Effect {
    explicit Effect(const LoadedPlugin& plugin) : record(plugin.entry()(plainHost)) {}
    ~Effect() { record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f); }
    Effect(const Effect&) = delete;
    Effect& operator=(const Effect&) = delete;

    void set(int parameter, float value) const { record->setParameter(record, parameter, value); }
    float get(int parameter) const { return record->getParameter(record, parameter); }

    AEffect* const record;
};

// In pixels from the upper left of the editor.
constexpr struct {
    int left, top, width, height;
} kTimeKnob{60, 150, 48, 48}, kFeedBackKnob{154, 150, 48, 48};

bool isGreen(const ScreenPart& screen, int column, int row) {
    return difference(screen.at(column, row), kGreenPixel) == 0;
}

} // namespace

class EditorPainting : public testing::Test {
protected:
    EditorPainting() { sharedXServer(); }

    // Green all over; whatever is painted afterwards shows.
    static void smear(HostedEditor& editor) {
        editor.settledScreen();
        editor.window.smearChild(0, 0, HostWindow::kWidth, HostWindow::kHeight, kGreen);
    }

    static int greenPixels(const ScreenPart& screen) {
        int count = 0;
        for (const Pixel& pixel : screen.pixels) {
            count += difference(pixel, kGreenPixel) == 0 ? 1 : 0;
        }
        return count;
    }

    const LoadedPlugin plugin{TVDELAY_PLUGIN_PATH};
};

TEST_F(EditorPainting, FaceIsThereBeforeTheFirstIdleCall) {
    for (int round = 0; round < 2; ++round) {
        const Effect effect(plugin);
        const HostWindow window(100, 80);
        effect.record->dispatcher(effect.record, effEditOpen, 0, 0, window.handle(), 0.0f);
        EXPECT_TRUE(showsFace(window.screen(), kSlapBack));
        effect.record->dispatcher(effect.record, effEditClose, 0, 0, nullptr, 0.0f);
    }
}

TEST_F(EditorPainting, PicturesAreRoundedToTheScreensPixelsAndNotCut) {
    const Effect effect(plugin);
    const HostedEditor editor(effect.record);
    const ScreenPart screen = editor.window.screen();
    const ScreenPart face = expectedFace(kSlapBack);
    ASSERT_TRUE(showsFace(screen, kSlapBack));
    double sum = 0;
    for (std::size_t i = 0; i < screen.pixels.size(); ++i) {
        const Pixel &is = screen.pixels[i], &wanted = face.pixels[i];
        sum += is.red - wanted.red + is.green - wanted.green + is.blue - wanted.blue;
    }
    // Cut, a channel would be darker by 0.4 of a step.
    EXPECT_NEAR(sum / (3.0 * static_cast<double>(screen.pixels.size())), 0.0, 0.1);
}

TEST_F(EditorPainting, IdleEditorPaintsNothing) {
    const Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    smear(editor);
    for (int call = 0; call < 50; ++call) {
        editor.idle();
    }
    EXPECT_EQ(greenPixels(editor.window.screen()), HostWindow::kWidth * HostWindow::kHeight);
}

TEST_F(EditorPainting, ValueThatIsShownAlreadyPaintsNothing) {
    const Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    smear(editor);
    for (int call = 0; call < 10; ++call) {
        effect.set(8, 1.0f);
        std::thread([&] { effect.set(6, 0.5f); }).join();
        editor.idle();
    }
    EXPECT_EQ(greenPixels(editor.window.screen()), HostWindow::kWidth * HostWindow::kHeight);
}

TEST_F(EditorPainting, ChangedKnobIsAllThatIsPainted) {
    const Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    smear(editor);
    effect.set(1, 0.505f);
    FaceControls expected = kSlapBack;
    expected[1] = 63;
    ASSERT_TRUE(editor.becomes([&] { return shownControls(editor.window.screen())[1] == 63; }));
    for (int call = 0; call < 10; ++call) {
        editor.idle();
    }
    const ScreenPart screen = editor.window.screen();
    const ScreenPart face = expectedFace(expected);
    for (int row = 0; row < screen.height; ++row) {
        for (int column = 0; column < screen.width; ++column) {
            const bool inside =
                column >= kFeedBackKnob.left && column < kFeedBackKnob.left + kFeedBackKnob.width &&
                row >= kFeedBackKnob.top && row < kFeedBackKnob.top + kFeedBackKnob.height;
            if (inside) {
                ASSERT_LE(difference(screen.at(column, row), face.at(column, row)), 4)
                    << column << " " << row;
            } else {
                ASSERT_TRUE(isGreen(screen, column, row)) << column << " " << row;
            }
        }
    }
}

TEST_F(EditorPainting, ChangedEditorIsTheOnlyOneOfEightThatPaints) {
    std::vector<std::unique_ptr<Effect>> effects;
    std::vector<std::unique_ptr<HostedEditor>> editors;
    for (int i = 0; i < 8; ++i) {
        // One on top of the other by a little: each shows its upper left.
        effects.push_back(std::make_unique<Effect>(plugin));
        editors.push_back(std::make_unique<HostedEditor>(effects.back()->record, 100 * i, 8 * i));
    }
    const auto idleAll = [&] {
        for (const auto& editor : editors) {
            editor->idle();
        }
    };
    for (int call = 0; call < 5; ++call) {
        idleAll();
    }
    for (const auto& editor : editors) {
        editor->window.smearChild(0, 0, HostWindow::kWidth, HostWindow::kHeight, kGreen);
    }
    for (int step = 0; step < 20; ++step) {
        effects[7]->set(0, static_cast<float>(step) / 20.0f + 0.005f);
        idleAll();
    }
    EXPECT_TRUE(idleUntil(idleAll, [&] {
        return !isGreen(editors[7]->window.screen(), kTimeKnob.left + 24, kTimeKnob.top + 24);
    }));
    for (std::size_t i = 0; i < 7; ++i) {
        const ScreenPart screen = editors[i]->window.screen();
        EXPECT_TRUE(isGreen(screen, 84, 174)) << i; // its time knob, which shows
        EXPECT_TRUE(isGreen(screen, 5, 5)) << i;
    }
}

TEST_F(EditorPainting, KnobFollowsADragToTheStepThatItLastReported) {
    const Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    // A click with a tremor: two points down from the base angle of 85 degrees is step 50, where
    // knobs start. Nothing is sent.
    editor.mouse.moveTo(178, 226);
    editor.mouse.press();
    editor.mouse.moveTo(178, 224);
    FaceControls expected = kSlapBack;
    expected[1] = 63;
    EXPECT_TRUE(editor.shows(expected));
    editor.mouse.release();
    EXPECT_TRUE(editor.shows(expected));
    EXPECT_EQ(effect.get(1), 0.215f);
    // The next movement of another knob sends what is shown.
    editor.mouse.moveTo(263, 226);
    editor.mouse.press();
    editor.mouse.moveTo(263, 280);
    EXPECT_TRUE(editor.becomes([&] { return effect.get(8) == 71 * 0.01f; }));
    editor.mouse.release();
    EXPECT_EQ(effect.get(1), 0.5f);
    expected[8] = 90;
    EXPECT_TRUE(editor.shows(expected));
}

TEST_F(EditorPainting, KnobThatComesBackToItsValueBetweenTwoPaintingsIsRight) {
    const Effect effect(plugin);
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    FaceControls away = kSlapBack;
    away[1] = 95;
    for (int round = 0; round < 5; ++round) {
        effect.set(1, 0.755f);
        ASSERT_TRUE(editor.shows(away));
        effect.set(1, 0.215f);
        effect.set(1, 0.755f);
        effect.set(1, 0.215f);
        ASSERT_TRUE(editor.shows(kSlapBack));
    }
}

TEST_F(EditorPainting, RandomGesturesLeaveNoKnobBehind) {
    const auto seed = static_cast<std::mt19937::result_type>(randomSeed(5));
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    constexpr struct {
        int parameter, x, y;
    } kKnobs[] = {{0, 84, 226},  {8, 263, 226}, {1, 178, 226}, {2, 141, 143},
                  {3, 216, 143}, {7, 99, 61},   {6, 246, 61}};
    const Effect effect(plugin);
    effect.set(4, 0.0f); // where its switch starts
    HostedEditor editor(effect.record);
    ASSERT_TRUE(editor.shows(kSlapBack));
    for (int round = 0; round < 25; ++round) {
        const auto& knob = kKnobs[random() % 7];
        const int reach = random() % 2 == 0 ? 4 : 60; // a tremor or a drag
        const auto somewhere = [&] { return static_cast<int>(random() % (2 * reach + 1)) - reach; };
        if (random() % 3 == 0) {
            effect.set(knob.parameter, static_cast<float>(random() % 100) / 100.0f + 0.005f);
        }
        editor.mouse.moveTo(knob.x, knob.y);
        editor.mouse.press();
        editor.mouse.moveTo(knob.x, knob.y + somewhere());
        editor.mouse.moveTo(knob.x, knob.y + somewhere());
        editor.mouse.release();
        int calls = 0;
        editor.becomes([&] { return ++calls > 5; }); // the release tells nobody that it has come
        const FaceControls shown = shownControls(editor.settledScreen());
        // A switch sends what every control stands for.
        const float before = effect.get(4);
        editor.mouse.moveTo(89, 140);
        editor.mouse.press();
        ASSERT_TRUE(editor.becomes([&] { return effect.get(4) != before; }));
        editor.mouse.release();
        for (const auto& control : kKnobs) {
            const float value = effect.get(control.parameter);
            const int frame = shown[static_cast<std::size_t>(control.parameter)];
            const int step = static_cast<int>(std::lround(value * 100.0f));
            // The top of a drag sends full as well.
            EXPECT_TRUE(frame == step * 127 / 100 || (step == 100 && frame == 125))
                << "round " << round << ", parameter " << control.parameter << ": " << value
                << " shows frame " << frame;
        }
    }
}
