#import "tests/editor/AppKitHost.h"
#import "tests/editor/MouseEvent.h"

#import "editor/ControlPoint13.h"
#include "tests/support/RandomSeed.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

namespace {

// The step of a whole angle among 100, by fractions.
int stepOfAngle(int angle) {
    return 99 * (225 - angle) / 270;
}

int angleAfter(int base, int travel) {
    return std::clamp(base - travel, -45, 225);
}

float gridAngle(int step) {
    return static_cast<float>(step * (-270.0 / 99.0) + 225.0);
}

} // namespace

class ControlPoint : public AppKitHost {
protected:
    ControlPoint() : window(shownWindow(100, 100, 200, 200)) {
        knob = [[[RecordingView alloc] initWithFrame:NSMakeRect(30, 40, 48, 48)] autorelease];
        [[window contentView] addSubview:knob];
        delegate = [[[RecordingDelegate alloc] init] autorelease];
        steps = [NSMutableArray array];
        for (int i = 0; i < 100; ++i) {
            [steps addObject:[NSNumber numberWithInt:i * 10]];
        }
        point = pointAt(1);
    }
    ~ControlPoint() override { [window orderOut:nil]; }

    ControlPoint13* pointAt(int32_t position) {
        ControlPoint13* const made = [[[ControlPoint13 alloc] initWithFrame:NSMakeRect(0, 0, 48, 48)
                                                                 withInsets:2
                                                   withControlPointDiameter:3
                                                      withControlPointColor:[NSColor redColor]
                                                               withPosition:position] autorelease];
        [made setData:steps];
        [made setDelegate:static_cast<id>(delegate)];
        [knob addSubview:made];
        delegate->point = made;
        return made;
    }

    // Heights are those of the control point.
    void press(CGFloat y) { [point mouseDown:mouseEvent(NSLeftMouseDown, window, 50, 40 + y)]; }
    void drag(CGFloat y) {
        [point mouseDragged:mouseEvent(NSLeftMouseDragged, window, 50, 40 + y)];
    }
    void release() { [point mouseUp:mouseEvent(NSLeftMouseUp, window, 50, 40)]; }

    std::vector<DelegateMessage>& messages() { return delegate->messages; }

    NSWindow* window;
    RecordingView* knob;
    RecordingDelegate* delegate;
    NSMutableArray* steps;
    ControlPoint13* point;
};

TEST_F(ControlPoint, StartsByItsPosition) {
    struct Row {
        int position, angle;
        float draggedAngle;
        int previous, value;
    };
    for (const Row& row : {Row{0, 225, 225.0f, 0, 0}, Row{1, 85, 85.0f, 50, 50},
                           Row{2, 0, 0.0f, 0, 0}, Row{-1, 0, 0.0f, 0, 0}}) {
        SCOPED_TRACE(row.position);
        ControlPoint13* const made = pointAt(row.position);
        EXPECT_EQ([made currentAngle], row.angle);
        EXPECT_EQ([made currentDraggedAngle], row.draggedAngle);
        EXPECT_EQ([made previousValue], row.previous);
        EXPECT_EQ([made value], row.value);
        EXPECT_EQ([made ReturnValue], row.value);
        EXPECT_EQ([made insets], 2);
        EXPECT_EQ([made controlPointDiameter], 3);
        EXPECT_EQ([made mouseDownPosition], 0);
        EXPECT_TRUE([[made controlPointColor] isEqual:[NSColor clearColor]]);
    }
}

TEST_F(ControlPoint, SetIntValueTurnsTheShownAngleAlone) {
    for (int step = 0; step <= 100; ++step) {
        [point setIntValue:step];
        EXPECT_EQ([point value], step);
        EXPECT_EQ([point currentDraggedAngle], gridAngle(step));
        EXPECT_EQ([point currentAngle], 85);
        EXPECT_EQ([point previousValue], 50);
    }
    EXPECT_NEAR([point currentDraggedAngle], -47.73, 0.005);
    EXPECT_TRUE(messages().empty());
    [point setIntValue:-3];
    EXPECT_EQ([point value], -3);
    EXPECT_GT([point currentDraggedAngle], 225.0f);
}

TEST_F(ControlPoint, SetIntValueAsksForARepaint) {
    [window display];
    [point setNeedsDisplay:NO];
    [point setIntValue:7];
    EXPECT_TRUE([point needsDisplay]);
}

TEST_F(ControlPoint, SetValueStoresTheStepAlone) {
    [window display];
    [point setValue:12];
    EXPECT_EQ([point value], 12);
    EXPECT_EQ([point ReturnValue], 12);
    EXPECT_EQ([point currentDraggedAngle], 85.0f);
    EXPECT_FALSE([point needsDisplay]);
}

TEST_F(ControlPoint, PressKeepsItsHeightCutAndChangesNothingElse) {
    press(23.9);
    EXPECT_EQ([point mouseDownPosition], 23);
    press(-5.9);
    EXPECT_EQ([point mouseDownPosition], -5);
    EXPECT_EQ([point value], 50);
    EXPECT_EQ([point currentDraggedAngle], 85.0f);
    EXPECT_EQ([point currentAngle], 85);
    EXPECT_TRUE(messages().empty());
}

TEST_F(ControlPoint, MouseGoesNoFurther) {
    press(24);
    drag(24 + 54);
    release();
    EXPECT_EQ(knob->mouseEvents, 0);
}

TEST_F(ControlPoint, DragReportsTheStepItsNumberAndTheKnob) {
    press(24);
    [point setNeedsDisplay:NO];
    drag(24 + 54);
    ASSERT_EQ(messages().size(), 1u);
    EXPECT_EQ(messages()[0].index, 71);
    EXPECT_EQ(messages()[0].value, [steps objectAtIndex:71]);
    EXPECT_EQ(messages()[0].object, knob);
    EXPECT_EQ(messages()[0].angle, 31.0f); // it snaps only afterwards
    EXPECT_EQ([point currentDraggedAngle], gridAngle(71));
    EXPECT_EQ([point value], 71);
    EXPECT_EQ([point previousValue], 71);
    EXPECT_EQ([point currentAngle], 85);
    EXPECT_TRUE([point needsDisplay]);
}

TEST_F(ControlPoint, DragsFromAllAnglesFollowTheTable) {
    for (int base = -45; base <= 225; base += 3) {
        for (int travel = -290; travel <= 290; travel += 7) {
            NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
            [point setCurrentAngle:base];
            [point setPreviousValue:-1];
            messages().clear();
            press(24);
            drag(24 + travel);
            const int step = stepOfAngle(angleAfter(base, travel));
            ASSERT_EQ([point value], step) << base << " and " << travel;
            ASSERT_EQ(messages().size(), 1u);
            ASSERT_EQ(messages()[0].index, step);
            ASSERT_EQ([point currentDraggedAngle], gridAngle(step));
            [pool release];
        }
    }
}

TEST_F(ControlPoint, DragWithinAStepIsSilentAndKeepsTheRawAngle) {
    press(24);
    drag(24 + 1); // 84 degrees: step 51
    ASSERT_EQ(messages().size(), 1u);
    [point setNeedsDisplay:NO];
    drag(24); // 85 degrees: step 51 too
    EXPECT_FALSE([point needsDisplay]);
    EXPECT_EQ(messages().size(), 1u);
    EXPECT_EQ([point currentDraggedAngle], 85.0f);
    release();
    EXPECT_EQ([point currentAngle], 85);
}

TEST_F(ControlPoint, ReleaseKeepsTheSnappedAngleCut) {
    press(24);
    drag(24 + 54);
    release();
    EXPECT_EQ([point currentAngle], 31); // of 31.36
    press(10);
    drag(10 + 76); // to -45
    EXPECT_EQ([point value], 99);
    release();
    EXPECT_EQ([point currentAngle], -45);
    EXPECT_EQ([point currentDraggedAngle], -45.0f);
}

TEST_F(ControlPoint, ReleaseTellsNoOneAndMayComeTwice) {
    [point setIntValue:20];
    release();
    EXPECT_EQ([point currentAngle], 170);
    release();
    EXPECT_EQ([point currentAngle], 170);
    [point setIntValue:100];
    release();
    EXPECT_EQ([point currentAngle], -47);
    EXPECT_TRUE(messages().empty());
}

TEST_F(ControlPoint, FirstStepOfFiftyIsNotSent) {
    [point setIntValue:20];
    press(24);
    drag(24 - 2); // 87 degrees
    EXPECT_EQ([point value], 50);
    EXPECT_EQ([point previousValue], 50);
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ([point currentDraggedAngle], 87.0f);
}

TEST_F(ControlPoint, PressAndDragAfterASetStartsFromTheOldBase) {
    [point setIntValue:20];
    press(24);
    drag(25);
    ASSERT_EQ(messages().size(), 1u);
    EXPECT_EQ(messages()[0].index, 51);
}

TEST_F(ControlPoint, ClickRepairsTheBase) {
    [point setIntValue:20];
    press(24);
    release();
    press(24);
    drag(24 + 3); // 167 degrees
    ASSERT_EQ(messages().size(), 1u);
    EXPECT_EQ(messages()[0].index, 21);
}

TEST_F(ControlPoint, DragBeyondAnEndComesBackOnlyWithinTheSpan) {
    press(0);
    drag(130); // -45 exactly
    EXPECT_EQ([point value], 99);
    drag(400);
    EXPECT_EQ([point value], 99);
    drag(130);
    EXPECT_EQ([point value], 99);
    EXPECT_EQ(messages().size(), 1u);
    drag(129);
    EXPECT_EQ([point value], 98);
    drag(-140); // 225 exactly
    EXPECT_EQ([point value], 0);
    drag(-4000);
    EXPECT_EQ([point value], 0);
    drag(-138);
    EXPECT_EQ([point value], 0);
    drag(-137);
    EXPECT_EQ([point value], 1);
}

TEST_F(ControlPoint, DragWithoutADelegateGoesOnSilently) {
    [point setDelegate:nil];
    press(24);
    drag(24 + 54);
    EXPECT_EQ([point value], 71);
    EXPECT_EQ([point currentDraggedAngle], gridAngle(71));
}

TEST_F(ControlPoint, LengthOfTheListIsTheScale) {
    [point setData:[NSArray arrayWithObjects:@"low", @"middle", @"high", nil]];
    [point setIntValue:1];
    EXPECT_EQ([point currentDraggedAngle], 90.0f);
    [point setIntValue:2];
    EXPECT_EQ([point currentDraggedAngle], -45.0f);
    press(0);
    drag(130);
    ASSERT_EQ(messages().size(), 1u);
    EXPECT_TRUE([messages()[0].value isEqual:@"high"]);
}

TEST_F(ControlPoint, RandomDragsAgreeWithAModel) {
    const auto seed = static_cast<std::mt19937::result_type>(randomSeed(11));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> height(-400, 400);
    std::uniform_int_distribution<int> action(0, 9);
    int base = 85, down = 0, previous = 50, value = 50;
    float shown = 85.0f;
    std::size_t reports = 0;
    for (int i = 0; i < 5000; ++i) {
        NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
        const int y = height(random);
        switch (action(random)) {
        case 0:
            press(y);
            down = y;
            break;
        case 1:
            release();
            base = static_cast<int>(shown);
            break;
        case 2:
            value = std::abs(y) % 101;
            [point setIntValue:value];
            shown = gridAngle(value);
            break;
        default:
            drag(y);
            shown = static_cast<float>(angleAfter(base, y - down));
            value = stepOfAngle(static_cast<int>(shown));
            if (value != previous) {
                previous = value;
                shown = gridAngle(value);
                ++reports;
            }
            break;
        }
        ASSERT_EQ([point value], value) << i;
        ASSERT_EQ([point currentDraggedAngle], shown) << i;
        ASSERT_EQ([point currentAngle], base) << i;
        ASSERT_EQ([point previousValue], previous) << i;
        ASSERT_EQ(messages().size(), reports) << i;
        [pool release];
    }
}

TEST_F(ControlPoint, HandleLiesOnItsCircle) {
    [point setCurrentDraggedAngle:0.0f];
    const NSRect right = [point makeRectWithWidth:3];
    EXPECT_DOUBLE_EQ(right.origin.x, 18.0 - 1.0 + 24.0);
    EXPECT_DOUBLE_EQ(right.origin.y, 0.0 - 1.0 + 24.0);
    EXPECT_DOUBLE_EQ(right.size.width, 3.0);
    EXPECT_DOUBLE_EQ(right.size.height, 3.0);
    [point setCurrentDraggedAngle:225.0f];
    const NSRect lowerLeft = [point makeRectWithWidth:8];
    EXPECT_DOUBLE_EQ(lowerLeft.origin.x,
                     std::cos(225.0 * 0.017453292519943295) * 18.0 - 4.0 + 24.0);
    EXPECT_DOUBLE_EQ(lowerLeft.origin.y,
                     std::sin(225.0 * 0.017453292519943295) * 18.0 - 4.0 + 24.0);
}

TEST_F(ControlPoint, PaintingIsHandedToTheKnob) {
    knob->drawings.clear();
    [point drawRect:NSMakeRect(1, 2, 3, 4)];
    ASSERT_EQ(knob->drawings.size(), 1u);
    EXPECT_TRUE(NSEqualRects(knob->drawings[0], NSMakeRect(1, 2, 3, 4)));
}

TEST_F(ControlPoint, TakesTheFirstClickAndMovesNoWindow) {
    EXPECT_TRUE([point acceptsFirstMouse:nil]);
    EXPECT_FALSE([point mouseDownCanMoveWindow]);
}

TEST_F(ControlPoint, SettersNeitherRetainNorRepaint) {
    [window display];
    NSObject* const object = [[[NSObject alloc] init] autorelease];
    const NSUInteger owners = [object retainCount];
    [point setData:static_cast<NSArray*>(object)];
    [point setDelegate:static_cast<id>(object)];
    [point setControlPointColor:static_cast<NSColor*>(object)];
    EXPECT_EQ([object retainCount], owners);
    EXPECT_EQ(static_cast<id>([point data]), object);
    EXPECT_EQ(static_cast<id>([point delegate]), object);
    EXPECT_EQ(static_cast<id>([point controlPointColor]), object);
    [point setCurrentDraggedAngle:12.5f];
    [point setCurrentAngle:-7];
    [point setMouseDownPosition:3];
    [point setPreviousValue:4];
    [point setInsets:5];
    [point setControlPointDiameter:6];
    EXPECT_EQ([point currentDraggedAngle], 12.5f);
    EXPECT_EQ([point currentAngle], -7);
    EXPECT_EQ([point mouseDownPosition], 3);
    EXPECT_EQ([point previousValue], 4);
    EXPECT_EQ([point insets], 5);
    EXPECT_EQ([point controlPointDiameter], 6);
    EXPECT_FALSE([point needsDisplay]);
}
