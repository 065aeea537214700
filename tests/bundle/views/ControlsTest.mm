// Drags, presses and the host's writes, by the macOS bundle's own code.
#import "tests/bundle/views/MacViewTest.h"

#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/SlapBack.h"

#include "plugin/vst2/EffectOpcodes.h"

namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

class Controls : public MacViewTest {
protected:
    Controls() { openIn(344, 400); }

    id point(int order) { return [control(order) controlPoint]; }

    void dragBy(int order, CGFloat from, CGFloat distance) {
        press(point(order), NSLeftMouseDown, 24, from);
        press(point(order), NSLeftMouseDragged, 24, from + distance);
        press(point(order), NSLeftMouseUp, 24, from + distance);
    }

    void click(int order) {
        press(point(order), NSLeftMouseDown, 24, 10);
        press(point(order), NSLeftMouseUp, 24, 10);
    }
};

// The order in which the controls are sent, with what the first program's show.
std::vector<ParameterWrite> writesOfSlapBack() {
    std::vector<ParameterWrite> writes;
    for (const int parameter : {0, 8, 1, 2, 3, 7, 6, 4, 5}) {
        writes.push_back({parameter, kSlapBackSent[static_cast<std::size_t>(parameter)]});
    }
    return writes;
}

constexpr int kFeedBackOrder = 3;

} // namespace

TEST_F(Controls, ClickWritesNothing) {
    click(kFeedBackOrder);
    EXPECT_THAT(takeWrites(), IsEmpty());
}

TEST_F(Controls, DragWritesAllNineInOrder) {
    click(kFeedBackOrder);
    const int before = [point(kFeedBackOrder) ReturnValue];
    dragBy(kFeedBackOrder, 10, 30);
    const int after = [point(kFeedBackOrder) ReturnValue];
    EXPECT_EQ(after, before + 11);
    std::vector<ParameterWrite> expected = writesOfSlapBack();
    expected[2].value = static_cast<float>(after) * 0.01f;
    EXPECT_THAT(takeWrites(), ElementsAreArray(expected));
    for (const ParameterWrite& write : expected) {
        EXPECT_EQ(effect()->getParameter(effect(), write.index), write.value) << write.index;
    }
}

TEST_F(Controls, FirstDragStartsFromTheBaseAngle) {
    dragBy(kFeedBackOrder, 10, 3);
    EXPECT_EQ([point(kFeedBackOrder) ReturnValue], 52);
    EXPECT_EQ([point(kFeedBackOrder) currentAngle], 83);
}

TEST_F(Controls, DragEndsAtTheLastStepAndSendsOne) {
    click(kFeedBackOrder);
    dragBy(kFeedBackOrder, 10, 400);
    EXPECT_EQ([point(kFeedBackOrder) ReturnValue], 99);
    EXPECT_EQ([point(kFeedBackOrder) currentDraggedAngle], -45.0f);
    EXPECT_EQ(takeWrites()[2].value, 1.0f);
}

TEST_F(Controls, DraggedKnobIsDrawnAtItsStep) {
    click(kFeedBackOrder);
    dragBy(kFeedBackOrder, 10, 400);
    FaceControls controls = kSlapBack;
    controls[1] = 125;
    EXPECT_TRUE(showsFace(picture(), controls));
}

TEST_F(Controls, SwitchFlipsAtThePressAndWritesAllNine) {
    NSView* const lowPass = control(8);
    press(lowPass, NSLeftMouseDown, 5, 5);
    press(lowPass, NSLeftMouseUp, 5, 5);
    EXPECT_EQ([lowPass imageState], 1);
    std::vector<ParameterWrite> expected = writesOfSlapBack();
    expected[7].value = 1.0f;
    EXPECT_THAT(takeWrites(), ElementsAreArray(expected));
    FaceControls controls = kSlapBack;
    controls[4] = 1;
    EXPECT_TRUE(showsFace(picture(), controls));
    press(lowPass, NSLeftMouseDown, 5, 5);
    EXPECT_EQ([lowPass imageState], 0);
    EXPECT_THAT(takeWrites(), ElementsAreArray(writesOfSlapBack()));
}

TEST_F(Controls, HostsWritesReachEveryControl) {
    const std::vector<std::pair<int, int>> knobs = {{1, 0}, {2, 8}, {3, 1}, {4, 2},
                                                    {5, 3}, {6, 7}, {7, 6}};
    for (const auto& [order, parameter] : knobs) {
        effect()->setParameter(effect(), parameter, 0.25f);
        EXPECT_EQ([point(order) ReturnValue], 25) << parameter;
    }
    effect()->setParameter(effect(), 4, 1.0f);
    effect()->setParameter(effect(), 5, 1.0f);
    EXPECT_EQ([control(8) imageState], 1);
    EXPECT_EQ([control(9) imageState], 1);
    const FaceControls controls{31, 31, 31, 31, 1, 1, 31, 31, 31};
    EXPECT_TRUE(showsFace(picture(), controls));
    EXPECT_THAT(takeWrites(), testing::SizeIs(9)); // the host's own
}

TEST_F(Controls, HostsProgramReachesEveryControl) {
    constexpr VstInt32 kProgram = 5;
    effect()->dispatcher(effect(), effSetProgram, 0, kProgram, nullptr, 0.0f);
    const std::vector<std::pair<int, int>> knobs = {{1, 0}, {2, 8}, {3, 1}, {4, 2},
                                                    {5, 3}, {6, 7}, {7, 6}};
    for (const auto& [order, parameter] : knobs) {
        const float value = effect()->getParameter(effect(), parameter);
        EXPECT_EQ([point(order) ReturnValue], static_cast<int>(value * 100.0f)) << parameter;
    }
    for (const auto& [order, parameter] : {std::pair{8, 4}, std::pair{9, 5}}) {
        EXPECT_EQ([control(order) imageState],
                  static_cast<int>(effect()->getParameter(effect(), parameter)));
    }
}

TEST_F(Controls, HandleLiesOnItsCircle) {
    effect()->setParameter(effect(), 1, 0.0f); // 225 degrees
    const NSRect handle = [point(kFeedBackOrder) makeRectWithWidth:6];
    EXPECT_NEAR(handle.origin.x, 24 - 3 - 18 * 0.7071067811865476, 1e-9);
    EXPECT_NEAR(handle.origin.y, 24 - 3 - 18 * 0.7071067811865476, 1e-9);
    EXPECT_EQ(handle.size.width, 6);
    EXPECT_EQ(handle.size.height, 6);
}

TEST_F(Controls, FirstPressInAnInactiveWindowCounts) {
    EXPECT_EQ([point(kFeedBackOrder) acceptsFirstMouse:nil], 1);
    EXPECT_EQ([point(kFeedBackOrder) mouseDownCanMoveWindow], NO);
}
