// The root view and its router, away from any window.
#import "tests/editor/AppKitHost.h"
#import "tests/editor/MouseEvent.h"

#import "editor/ControlPoint13.h"
#import "editor/DetatchedView13.h"
#import "editor/FlatKnob13.h"
#import "editor/KnobDelegate13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/TarnsUiView13.h"
#include "editor/tveditor13.h"
#include "tests/editor/RecordingSynth.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"

#import <QuartzCore/QuartzCore.h>

#include <algorithm>
#include <set>

namespace {

struct Row {
    NSString* field;
    double x, y, width, height;
    int parameter;
};

const Row kControls[] = {
    {@"timeKnob", 60, 202, 48, 48, 0},       {@"mixKnob", 239, 202, 48, 48, 8},
    {@"feedBackKnob", 154, 202, 48, 48, 1},  {@"lowPassKnob", 117, 119, 48, 48, 2},
    {@"highPassKnob", 192, 119, 48, 48, 3},  {@"panWidthKnob", 75, 37, 48, 48, 7},
    {@"panKnob", 222, 37, 48, 48, 6},        {@"lowPassSwitch", 82, 132, 15, 16, 4},
    {@"highPassSwitch", 253, 132, 15, 16, 5}};

bool isSwitch(const Row& row) {
    return row.parameter == 4 || row.parameter == 5;
}

// Writes down which parameters it is asked for.
class AskedSynth : public VstXSynth {
public:
    AskedSynth() : VstXSynth(nullptr) {}

    float getParameter(VstInt32 index) override {
        asked.push_back(index);
        return VstXSynth::getParameter(index);
    }

    std::vector<int> asked;
};

// What a movement of a control sends while an editor shows these steps and states.
std::vector<ParameterWrite> broadcastOf(const std::vector<int>& shown) {
    std::vector<ParameterWrite> writes;
    for (const Row& row : kControls) {
        const int value = shown[static_cast<std::size_t>(row.parameter)];
        const int step = value == 99 ? 100 : value;
        writes.push_back(
            {row.parameter,
             isSwitch(row) ? static_cast<float>(value) : static_cast<float>(step) * 0.01f, true});
    }
    return writes;
}

} // namespace

class Router : public AppKitHost {
protected:
    TarnsUiView13* viewOf(AudioEffect* effect) {
        TarnsUiView13* const view = [[TarnsUiView13 alloc] initWithFrame:NSMakeRect(0, 0, 344, 400)
                                                               andEffect:effect];
        [view awakeFromNib];
        return view;
    }
    KnobDelegate13* routerOf(TarnsUiView13* view) { return [view valueForKey:@"KnobView"]; }

    // Steps of the knobs and states of the switches, by parameter.
    std::vector<int> shownBy(TarnsUiView13* view) {
        std::vector<int> values(9);
        for (const Row& row : kControls) {
            id const control = [routerOf(view) valueForKey:row.field];
            values[static_cast<std::size_t>(row.parameter)] =
                isSwitch(row) ? [static_cast<TarnsCustomImageView13*>(control) imageState]
                              : [[static_cast<FlatKnob13*>(control) controlPoint] ReturnValue];
        }
        return values;
    }

    RecordingSynth synth;
};

TEST_F(Router, ViewsLieFromBackToFrontAsInTheTable) {
    TarnsUiView13* const view = viewOf(&synth);
    NSArray* const subviews = [view subviews];
    ASSERT_EQ([subviews count], 10u);
    EXPECT_TRUE([[subviews objectAtIndex:0] isMemberOfClass:[DetatchedView13 class]]);
    EXPECT_TRUE(NSEqualRects([[subviews objectAtIndex:0] frame], NSMakeRect(0, 0, 344, 400)));
    const Class kinds[] = {[FlatKnob13 class], [TarnsCustomImageView13 class]};
    NSUInteger place = 1;
    for (const Row& row : kControls) {
        NSView* const control = [subviews objectAtIndex:place++];
        EXPECT_EQ(control, [routerOf(view) valueForKey:row.field]);
        EXPECT_TRUE([control isMemberOfClass:kinds[isSwitch(row) ? 1 : 0]]);
        EXPECT_TRUE(NSEqualRects([control frame], NSMakeRect(row.x, row.y, row.width, row.height)))
            << row.parameter;
    }
    EXPECT_FALSE([view isFlipped]);
    EXPECT_EQ([view getEffect], &synth);
    EXPECT_EQ([view subDetachedView], nil);
    EXPECT_EQ([view volumeSliderText], nil);
}

TEST_F(Router, BackgroundGoesBehindWhatIsThere) {
    TarnsUiView13* const view = viewOf(nullptr);
    NSView* const first = [[view subviews] objectAtIndex:0];
    [routerOf(view) createSubView];
    ASSERT_EQ([[view subviews] count], 11u);
    EXPECT_TRUE([[[view subviews] objectAtIndex:0] isMemberOfClass:[DetatchedView13 class]]);
    EXPECT_EQ([[view subviews] objectAtIndex:1], first);
}

TEST_F(Router, KnobsShareFramesAndHaveListsOfTheirOwn) {
    KnobDelegate13* const router = routerOf(viewOf(&synth));
    NSMutableArray* const images =
        [[router valueForKey:@"timeKnob"] valueForKey:@"animationImages"];
    EXPECT_EQ([images count], 128u);
    std::set<NSArray*> lists;
    for (const Row& row : kControls) {
        if (isSwitch(row)) {
            continue;
        }
        FlatKnob13* const knob = [router valueForKey:row.field];
        ControlPoint13* const point = [knob controlPoint];
        EXPECT_EQ([knob valueForKey:@"animationImages"], images);
        EXPECT_EQ([knob control], 0);
        EXPECT_EQ([point insets], 2);
        EXPECT_EQ([point controlPointDiameter], 3);
        EXPECT_EQ(static_cast<id>([point delegate]), router);
        ASSERT_EQ([[point data] count], 100u);
        for (NSUInteger i = 0; i < 100; ++i) {
            ASSERT_EQ([[[point data] objectAtIndex:i] intValue], static_cast<int>(i));
        }
        lists.insert([point data]);
    }
    EXPECT_EQ(lists.size(), 7u);
}

TEST_F(Router, SwitchesShareTheirImagesAndStartOff) {
    synth.setParameter(4, 1.0f);
    synth.setParameter(5, 1.0f);
    KnobDelegate13* const router = routerOf(viewOf(&synth));
    TarnsCustomImageView13* const low = [router valueForKey:@"lowPassSwitch"];
    TarnsCustomImageView13* const high = [router valueForKey:@"highPassSwitch"];
    EXPECT_EQ([low valueForKey:@"state1Image"], [high valueForKey:@"state1Image"]);
    EXPECT_EQ([low valueForKey:@"state2Image"], [high valueForKey:@"state2Image"]);
    EXPECT_NE([low valueForKey:@"state1Image"], [low valueForKey:@"state2Image"]);
    EXPECT_EQ([low imageState], 0);
    EXPECT_EQ([high imageState], 0);
    EXPECT_EQ([low delegate], router);
    EXPECT_EQ([high delegate], router);
}

TEST_F(Router, FramesAreListedByTheirNumbers) {
    KnobDelegate13* const router = routerOf(viewOf(nullptr));
    NSMutableArray* const images = [NSMutableArray array];
    [router fillArray:images];
    ASSERT_EQ([images count], 128u);
    NSBundle* const bundle = [NSBundle bundleForClass:[TarnsUiView13 class]];
    for (int i = 0; i < 128; ++i) {
        NSString* const path = [bundle pathForResource:[NSString stringWithFormat:@"fxknob%d", i]
                                                ofType:@"png"];
        ASSERT_NE(path, nil);
        EXPECT_EQ([images objectAtIndex:static_cast<NSUInteger>(i)],
                  [[[NSImage alloc] initByReferencingFile:path] autorelease]);
    }
}

TEST_F(Router, PicturesAreLookedUpByTheirNames) {
    TarnsUiView13* const view = viewOf(nullptr);
    NSBundle* const bundle = [NSBundle bundleForClass:[TarnsUiView13 class]];
    const auto picture = [bundle](NSString* name) {
        NSString* const path = [bundle pathForImageResource:name];
        EXPECT_NE(path, nil);
        return static_cast<id>([[[NSImage alloc] initByReferencingFile:path] autorelease]);
    };
    EXPECT_EQ([view valueForKey:@"BackgroundImage"], picture(@"bmp00131"));
    EXPECT_EQ([[[view subviews] objectAtIndex:0] valueForKey:@"BackgroundImage"],
              picture(@"delaybackground"));
    id const toggle = [routerOf(view) valueForKey:@"lowPassSwitch"];
    EXPECT_EQ([toggle valueForKey:@"state1Image"], picture(@"switchoff"));
    EXPECT_EQ([toggle valueForKey:@"state2Image"], picture(@"switchon"));
}

TEST_F(Router, KnobsStartFromTheEffectInDoublePrecision) {
    const float values[] = {0.01f, 0.295f, 0.5f, 0.07f, 0.0f, 0.0f, 0.58f, 1.0f, 1.2f};
    for (int i = 0; i < 9; ++i) {
        synth.setParameter(i, values[i]);
    }
    // 0.01f and 0.58f lie below their hundredths.
    TarnsUiView13* const view = viewOf(&synth);
    EXPECT_EQ(shownBy(view), (std::vector<int>{0, 29, 50, 7, 0, 0, 57, 100, 120}));
    FlatKnob13* const feedBack = [routerOf(view) valueForKey:@"feedBackKnob"];
    EXPECT_EQ([[feedBack controlPoint] currentDraggedAngle],
              static_cast<float>(29 * (-270.0 / 99.0) + 225.0));
    EXPECT_EQ([[feedBack controlPoint] currentAngle], 85);
}

TEST_F(Router, EffectIsAskedForItsKnobsAloneInTheirOrder) {
    AskedSynth asked;
    viewOf(&asked);
    EXPECT_EQ(asked.asked, (std::vector<int>{0, 8, 1, 2, 3, 7, 6}));
}

TEST_F(Router, ViewAndKnobsAreRetained) {
    TarnsUiView13* const view = [[TarnsUiView13 alloc] initWithFrame:NSMakeRect(0, 0, 344, 400)
                                                           andEffect:nullptr];
    const NSUInteger owners = [view retainCount];
    KnobDelegate13* const router = [[KnobDelegate13 alloc] initWithView:view];
    EXPECT_EQ([view retainCount], owners + 1);
    // Both are made here and owned by their superview; the knobs' fields own them as well.
    const NSUInteger ownersOfSwitch = [[router valueForKey:@"lowPassSwitch"] retainCount];
    for (const Row& row : kControls) {
        EXPECT_GE([[router valueForKey:row.field] retainCount],
                  ownersOfSwitch + (isSwitch(row) ? 0 : 1))
            << row.parameter;
    }
}

TEST_F(Router, KnobsWithoutAnEffectStartAtZero) {
    TarnsUiView13* const view = viewOf(nullptr);
    EXPECT_EQ(shownBy(view), std::vector<int>(9, 0));
    [routerOf(view) knobUpdatedWithIndex:0 withValue:nil withObject:nil];
    EXPECT_TRUE(synth.writes.empty());
}

TEST_F(Router, AnyMovementSendsAllNineInOrder) {
    TarnsUiView13* const view = viewOf(&synth);
    const int steps[] = {3, 99, 100, 98, 0, 0, 1, 29, 0};
    for (const Row& row : kControls) {
        id const control = [routerOf(view) valueForKey:row.field];
        if (isSwitch(row)) {
            [control setImageState:row.parameter == 5 ? 1 : 0];
        } else {
            [[control controlPoint] setIntValue:steps[row.parameter]];
        }
    }
    synth.writes.clear();
    [routerOf(view) knobUpdatedWithIndex:77 withValue:@"ignored" withObject:view];
    const std::vector<ParameterWrite> expected{
        {0, 3 * 0.01f, true}, {8, 0.0f, true},       {1, 1.0f, true},
        {2, 1.0f, true},      {3, 98 * 0.01f, true}, {7, 29 * 0.01f, true},
        {6, 0.01f, true},     {4, 0.0f, true},       {5, 1.0f, true}};
    EXPECT_EQ(synth.writes, expected);
    EXPECT_FALSE(synth.editorUpdateHold);
    EXPECT_FALSE(synth.lowPassType); // the switch has the last word after the high-pass knob
}

TEST_F(Router, ValuesOfTheHostAreCutToStepsAtTheNextMovement) {
    TarnsUiView13* const view = viewOf(&synth);
    const float values[] = {0.295f, 0.99f, 0.995f, 1.0f, 1.0f, 0.5f, 0.987f, 0.0f, 0.019f};
    for (int parameter = 0; parameter < 9; ++parameter) {
        [view updateView:parameter andValue:values[parameter]];
    }
    synth.writes.clear();
    [routerOf(view) knobUpdatedWithIndex:0 withValue:nil withObject:nil];
    const std::vector<ParameterWrite> expected{
        {0, 29 * 0.01f, true}, {8, 0.01f, true}, {1, 1.0f, true},
        {2, 1.0f, true},       {3, 1.0f, true},  {7, 0.0f, true},
        {6, 98 * 0.01f, true}, {4, 1.0f, true},  {5, 0.0f, true}};
    EXPECT_EQ(synth.writes, expected);
}

TEST_F(Router, AnyMovementClearsTheEchoes) {
    TarnsUiView13* const view = viewOf(&synth);
    synth.delayBufferLeft[100] = 0.5f;
    synth.delayPosition = 77;
    [[routerOf(view) valueForKey:@"lowPassSwitch"]
        mouseDown:mouseEvent(NSLeftMouseDown, nil, 0, 0)];
    EXPECT_EQ(synth.delayBufferLeft[100], 0.0f);
    EXPECT_EQ(synth.delayPosition, 0);
}

TEST_F(Router, EachMovementRetainsTheViewOnceMore) {
    TarnsUiView13* const view = viewOf(&synth);
    const NSUInteger owners = [view retainCount];
    [routerOf(view) knobUpdatedWithIndex:0 withValue:nil withObject:nil];
    [routerOf(view) knobUpdatedWithIndex:0 withValue:nil withObject:nil];
    EXPECT_EQ([view retainCount], owners + 2);
}

TEST_F(Router, OneParameterIsWrittenUnderHold) {
    TarnsUiView13* const view = viewOf(&synth);
    synth.writes.clear();
    for (int parameter = 0; parameter < 9; ++parameter) {
        [view setNeedsDisplay:NO];
        [view updateParameters:parameter withValue:0.25f];
        EXPECT_EQ(synth.writes.back(), (ParameterWrite{parameter, 0.25f, true}));
        EXPECT_FALSE(synth.editorUpdateHold);
        EXPECT_TRUE([view needsDisplay]);
    }
}

TEST_F(Router, UnknownParameterIsDroppedButEndsAHoldAndRepaints) {
    TarnsUiView13* const view = viewOf(&synth);
    synth.writes.clear();
    for (const int parameter : {-1, 9, 1000, INT32_MIN}) {
        synth.editorUpdateHold = true;
        [view setNeedsDisplay:NO];
        [view updateParameters:parameter withValue:0.5f];
        EXPECT_TRUE(synth.writes.empty());
        EXPECT_FALSE(synth.editorUpdateHold);
        EXPECT_TRUE([view needsDisplay]);
    }
    [view setEffect:nullptr];
    [view setNeedsDisplay:NO];
    [view updateParameters:0 withValue:0.5f];
    EXPECT_TRUE([view needsDisplay]);
}

TEST_F(Router, EachIndexMovesItsOwnControlDownward) {
    for (const Row& row : kControls) {
        TarnsUiView13* const view = viewOf(nullptr);
        [view updateView:row.parameter andValue:1.0f];
        std::vector<int> expected(9, 0);
        expected[static_cast<std::size_t>(row.parameter)] = isSwitch(row) ? 1 : 100;
        EXPECT_EQ(shownBy(view), expected);
    }
}

TEST_F(Router, UnknownIndexMovesNothingDownward) {
    TarnsUiView13* const view = viewOf(nullptr);
    for (const int index : {-1, 9, INT32_MAX, INT32_MIN}) {
        [routerOf(view) updateControllers:index andValue:1.0f];
    }
    EXPECT_EQ(shownBy(view), std::vector<int>(9, 0));
}

TEST_F(Router, DownwardKnobsCutInSinglePrecisionAndSwitchesAtOne) {
    TarnsUiView13* const view = viewOf(nullptr);
    KnobDelegate13* const router = routerOf(view);
    [router updateControllers:0 andValue:0.01f];
    [router updateControllers:1 andValue:0.295f];
    [router updateControllers:2 andValue:0.58f];
    [router updateControllers:3 andValue:0.999f];
    [router updateControllers:4 andValue:0.999f];
    [router updateControllers:5 andValue:257.0f];
    [router updateControllers:6 andValue:-0.5f];
    EXPECT_EQ(shownBy(view), (std::vector<int>{1, 29, 58, 99, 0, 1, -50, 0, 0}));
}

TEST_F(Router, DownwardUpdatesTellTheEffectNothing) {
    TarnsUiView13* const view = viewOf(&synth);
    synth.writes.clear();
    for (int index = 0; index < 9; ++index) {
        [view updateView:index andValue:0.75f];
    }
    EXPECT_TRUE(synth.writes.empty());
}

TEST_F(Router, DownwardUpdateRepaintsTheRootView) {
    TarnsUiView13* const view = viewOf(nullptr);
    [view setNeedsDisplay:NO];
    [view updateView:42 andValue:0.0f];
    EXPECT_TRUE([view needsDisplay]);
}

TEST_F(Router, MovementsAndHostWritesInAnyOrderAgreeWithAModel) {
    const std::uint64_t seed = randomSeed(5);
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    AEffect* const effect = synth.getAeffect();
    synth.uiEditor->open(nullptr);
    TarnsUiView13* const view = synth.uiEditor->uiView;
    std::vector<int> shown = shownBy(view);
    std::vector<int> bases(9, 85), reported(9, 50);
    std::vector<float> angles(9);
    const auto show = [&](std::size_t parameter, float value) {
        const bool toggles = parameter == 4 || parameter == 5;
        shown[parameter] = static_cast<int>(toggles ? value : value * 100.0f);
        angles[parameter] = static_cast<float>(shown[parameter] * (-270.0 / 99.0) + 225.0);
    };
    for (int action = 0; action < 3000; ++action) {
        NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
        synth.writes.clear();
        const Row& row = dice.pick(kControls);
        const auto parameter = static_cast<std::size_t>(row.parameter);
        id const control = [routerOf(view) valueForKey:row.field];
        std::vector<ParameterWrite> expected;
        if (dice.oneIn(3)) {
            const float value = dice.within(0.0f, 1.0f);
            effect->setParameter(effect, row.parameter, value);
            expected.push_back({row.parameter, value, false});
            show(parameter, value);
        } else if (dice.oneIn(8)) {
            synth.setProgram(static_cast<VstInt32>(dice.between(0, 25)));
            expected = synth.writes;
            ASSERT_EQ(expected.size(), 9u);
            for (const ParameterWrite& write : expected) {
                show(static_cast<std::size_t>(write.index), write.value);
            }
        } else if (isSwitch(row)) {
            [control mouseDown:mouseEvent(NSLeftMouseDown, nil, 0, 0)];
            shown[parameter] = shown[parameter] == 0 ? 1 : 0;
            expected = broadcastOf(shown);
        } else {
            ControlPoint13* const point = [control controlPoint];
            const int travel = static_cast<int>(dice.between(-300, 300));
            [point mouseDown:mouseEvent(NSLeftMouseDown, nil, 0, 400)];
            [point mouseDragged:mouseEvent(NSLeftMouseDragged, nil, 0, 400 + travel)];
            const int angle = std::clamp(bases[parameter] - travel, -45, 225);
            angles[parameter] = static_cast<float>(angle);
            shown[parameter] = 99 * (225 - angle) / 270;
            if (shown[parameter] != reported[parameter]) {
                reported[parameter] = shown[parameter];
                angles[parameter] = static_cast<float>(shown[parameter] * (-270.0 / 99.0) + 225.0);
                expected = broadcastOf(shown);
            }
            if (dice.oneIn(2)) {
                [point mouseUp:mouseEvent(NSLeftMouseUp, nil, 0, 0)];
                bases[parameter] = static_cast<int>(angles[parameter]);
            }
        }
        ASSERT_EQ(synth.writes, expected) << action;
        ASSERT_EQ(shownBy(view), shown) << action;
        [pool release];
    }
    synth.uiEditor->close();
}

TEST_F(Router, NumbersRunUpToTheirEnd) {
    KnobDelegate13* const router = routerOf(viewOf(nullptr));
    NSMutableArray* const numbers = [router generateArrayFrom:-2 to:3];
    ASSERT_EQ([numbers count], 5u);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ([[numbers objectAtIndex:static_cast<NSUInteger>(i)] intValue], i - 2);
    }
    EXPECT_EQ([[router generateArrayFrom:3 to:3] count], 0u);
    EXPECT_EQ([[router generateArrayFrom:4 to:3] count], 0u);
    EXPECT_TRUE([[router generateArrayFrom:0 to:0] isKindOfClass:[NSMutableArray class]]);
}

TEST_F(Router, ColoursAreReadBehindALeadingMark) {
    KnobDelegate13* const router = routerOf(viewOf(nullptr));
    struct Case {
        NSString* text;
        double red, green, blue;
    };
    for (const Case& each :
         {Case{@"#FF8000", 255, 128, 0}, Case{@"#123456", 0x12, 0x34, 0x56},
          Case{@"x0000ff", 0, 0, 255}, Case{@"#zz", 0, 0, 0}, Case{@"#", 0, 0, 0},
          Case{@"FF8000", 0x0F, 0x80, 0x00}, Case{@"#1FF8000", 255, 128, 0}}) {
        NSColor* const colour = [router colorFromHexString:each.text];
        EXPECT_NEAR([colour redComponent], each.red / 255, 1e-6);
        EXPECT_NEAR([colour greenComponent], each.green / 255, 1e-6);
        EXPECT_NEAR([colour blueComponent], each.blue / 255, 1e-6);
        EXPECT_EQ([colour alphaComponent], 1.0);
    }
}

TEST_F(Router, LabelIsPlainText) {
    NSTextField* const label =
        [routerOf(viewOf(nullptr)) createLabelWithFrame:NSMakeRect(10, 10, 100, 17)];
    EXPECT_TRUE(NSEqualRects([label frame], NSMakeRect(10, 10, 100, 17)));
    EXPECT_TRUE([[label stringValue] isEqualToString:@"Value: -"]);
    EXPECT_FALSE([label isBezeled]);
    EXPECT_FALSE([label drawsBackground]);
    EXPECT_FALSE([label isEditable]);
    EXPECT_FALSE([label isSelectable]);
    EXPECT_EQ(static_cast<int>([label alignment]), 2);
    ASSERT_NE([label layer], nil);
    EXPECT_EQ([[label layer] borderWidth], 0.0);
    EXPECT_TRUE(
        [reinterpret_cast<NSColor*>([[label layer] borderColor]) isEqual:[NSColor blackColor]]);
}

TEST_F(Router, SingleKnobIsAddedWithALabelAndNoPoint) {
    TarnsUiView13* const view = viewOf(nullptr);
    [routerOf(view) createKnob];
    ASSERT_EQ([[view subviews] count], 12u);
    FlatKnob13* const knob = [[view subviews] objectAtIndex:10];
    EXPECT_TRUE([knob isMemberOfClass:[FlatKnob13 class]]);
    EXPECT_TRUE(NSEqualRects([knob frame], NSMakeRect(10, 30, 100, 100)));
    EXPECT_EQ([knob controlPoint], nil);
    NSTextField* const label = [[view subviews] objectAtIndex:11];
    EXPECT_TRUE(NSEqualRects([label frame], NSMakeRect(10, 10, 100, 17)));
}

TEST_F(Router, EmptyOperationsDoNothing) {
    TarnsUiView13* const view = viewOf(&synth);
    const std::vector<int> shown = shownBy(view);
    synth.writes.clear();
    [routerOf(view) creatSliders];
    [routerOf(view) applicationDidFinishLaunching:nil];
    EXPECT_EQ([[view subviews] count], 10u);
    EXPECT_EQ(shownBy(view), shown);
    EXPECT_TRUE(synth.writes.empty());
}

TEST_F(Router, BackgroundIsDrawnIntoTheDirtyRectanglesSize) {
    RecordingImage* const image = [[RecordingImage alloc] initWithSize:NSMakeSize(344, 400)];
    const NSUInteger owners = [image retainCount];
    DetatchedView13* const background =
        [[DetatchedView13 alloc] initWithImage2:image withRect:NSMakeRect(1, 2, 344, 400)];
    EXPECT_EQ([image retainCount], owners + 1);
    EXPECT_TRUE(NSEqualRects([background frame], NSMakeRect(1, 2, 344, 400)));
    [background awakeFromNib];
    [background drawRect:NSMakeRect(20, 30, 40, 50)];
    ASSERT_EQ(image->drawings.size(), 1u);
    EXPECT_TRUE(NSEqualRects(image->drawings[0].target, NSMakeRect(0, 0, 40, 50)));
    EXPECT_TRUE(NSEqualRects(image->drawings[0].source, NSZeroRect));
    EXPECT_EQ(image->drawings[0].operation, NSCompositeCopy);
    EXPECT_EQ(image->drawings[0].fraction, 1.0);
}

TEST_F(Router, OwnerOfTheBackgroundIsSetUnderItsOwnSpelling) {
    DetatchedView13* const background =
        [[DetatchedView13 alloc] initWithImage2:nil withRect:NSMakeRect(0, 0, 1, 1)];
    TarnsUiView13* const view = viewOf(nullptr);
    EXPECT_EQ([background Owner], nil);
    const NSUInteger owners = [view retainCount];
    [background setOwnder:view];
    EXPECT_EQ([background Owner], view);
    EXPECT_EQ([view retainCount], owners);
}

TEST_F(Router, RootViewsAccessorsAreAsTheirFields) {
    TarnsUiView13* const view = viewOf(nullptr);
    [view setVolumeSliderVal:12];
    EXPECT_EQ([view volumeSliderVal], 12);
    EXPECT_EQ([view panningSliderVal], 0);
    EXPECT_FALSE([view respondsToSelector:@selector(setPanningSliderVal:)]);
    NSView* const background = [[view subviews] objectAtIndex:0];
    [view setSubDetachedView:static_cast<DetatchedView13*>(background)];
    EXPECT_EQ([view subDetachedView], background);
    [view setVolumeSliderText:static_cast<id>(background)];
    EXPECT_EQ(static_cast<id>([view volumeSliderText]), background);
    [view setEffect:&synth];
    EXPECT_EQ([view getEffect], &synth);
}
