#import "tests/editor/AppKitHost.h"

#import "editor/ControlPoint13.h"
#import "editor/FlatKnob13.h"

#import <QuartzCore/QuartzCore.h>

#include <objc/runtime.h>

namespace {

NSColor* onlyClearColour = nil;

} // namespace

class FlatKnob : public AppKitHost {
protected:
    FlatKnob() {
        images = [NSMutableArray array];
        for (int i = 0; i < 128; ++i) {
            [images
                addObject:[[[RecordingImage alloc] initWithSize:NSMakeSize(48, 48)] autorelease]];
        }
        owners = [images retainCount];
        parent = [[[RecordingView alloc] initWithFrame:NSMakeRect(0, 0, 344, 400)] autorelease];
        knob = [[[FlatKnob13 alloc] initWithFrame:NSMakeRect(60, 202, 48, 50)
                                       withInsets:2
                         withControlPointDiameter:3
                            withControlPointColor:[NSColor redColor]
                                    withKnobColor:[NSColor greenColor]
                              withBackgroundColor:[NSColor blueColor]
                                   pointerToArray:images] autorelease];
        [parent addSubview:knob];
        [[knob controlPoint] setData:images];
    }

    std::vector<ImageDrawing>& drawingsOf(NSUInteger frame) {
        return static_cast<RecordingImage*>([images objectAtIndex:frame])->drawings;
    }

    NSMutableArray* images;
    NSUInteger owners;
    RecordingView* parent;
    FlatKnob13* knob;
};

TEST_F(FlatKnob, CarriesAControlPointAsLargeAsItself) {
    ASSERT_EQ([[knob subviews] count], 1u);
    ControlPoint13* const point = [[knob subviews] objectAtIndex:0];
    EXPECT_EQ(point, [knob controlPoint]);
    EXPECT_TRUE(NSEqualRects([point frame], NSMakeRect(0, 0, 48, 50)));
    EXPECT_EQ([point insets], 2);
    EXPECT_EQ([point controlPointDiameter], 3);
    EXPECT_EQ([point value], 50);
    EXPECT_EQ([point currentAngle], 85);
    EXPECT_TRUE([[point controlPointColor] isEqual:[NSColor clearColor]]);
    EXPECT_EQ([images retainCount], owners + 1);
    EXPECT_EQ([knob control], 0);
}

TEST_F(FlatKnob, ShowsNoColourThatItIsGiven) {
    EXPECT_TRUE([[knob valueForKey:@"backgroundColor"] isEqual:[NSColor clearColor]]);
    EXPECT_TRUE([[knob valueForKey:@"knobColor"] isEqual:[NSColor greenColor]]);
    ASSERT_NE([knob layer], nil);
    EXPECT_EQ([[knob layer] cornerRadius], 15.0);
    EXPECT_EQ([[knob layer] backgroundColor],
              [static_cast<NSColor*>([knob valueForKey:@"backgroundColor"]) CGColor]);
}

TEST_F(FlatKnob, OwnsTheColoursThatItKeeps) {
    NSColor* const colour = [NSColor colorWithCalibratedRed:0.1 green:0.2 blue:0.3 alpha:1.0];
    onlyClearColour = [[NSColor clearColor] retain];
    const NSUInteger owners = [colour retainCount];
    const NSUInteger ownersOfClear = [onlyClearColour retainCount];
    const Method makeClear = class_getClassMethod([NSColor class], @selector(clearColor));
    const IMP own = method_setImplementation(
        makeClear, reinterpret_cast<IMP>(+[](id, SEL) { return onlyClearColour; }));
    [[FlatKnob13 alloc] initWithFrame:NSMakeRect(0, 0, 48, 48)
                           withInsets:2
             withControlPointDiameter:3
                withControlPointColor:colour
                        withKnobColor:colour
                  withBackgroundColor:colour
                       pointerToArray:images];
    method_setImplementation(makeClear, own);
    EXPECT_EQ([colour retainCount], owners + 1);
    // The knob, its layer and its control point.
    EXPECT_EQ([onlyClearColour retainCount], ownersOfClear + 3);
}

TEST_F(FlatKnob, DrawsTheFrameOfItsStep) {
    for (int step = 0; step <= 100; ++step) {
        [[knob controlPoint] setIntValue:step];
        const auto frame = static_cast<NSUInteger>(step * 127 / 100);
        drawingsOf(frame).clear();
        [knob drawRect:NSMakeRect(5, 6, 30, 20)];
        ASSERT_EQ(drawingsOf(frame).size(), 1u) << step;
        const ImageDrawing& drawing = drawingsOf(frame)[0];
        EXPECT_TRUE(NSEqualRects(drawing.target, NSMakeRect(0, 0, 30, 20)));
        EXPECT_TRUE(NSEqualRects(drawing.source, NSZeroRect));
        EXPECT_EQ(drawing.operation, NSCompositeCopy);
        EXPECT_EQ(drawing.fraction, 1.0);
    }
    for (const NSUInteger frame : {4,  9,  14, 18, 23, 28, 32, 37,  42,  47,  51,  56,  61, 65,
                                   70, 75, 79, 84, 89, 94, 98, 103, 108, 112, 117, 122, 126}) {
        EXPECT_TRUE(drawingsOf(frame).empty()) << frame;
    }
}

TEST_F(FlatKnob, ControlPointPaintsTheFrameOnceMore) {
    [[knob controlPoint] setIntValue:4];
    [[knob controlPoint] drawRect:NSMakeRect(0, 0, 48, 50)];
    EXPECT_EQ(drawingsOf(5).size(), 1u);
}

TEST_F(FlatKnob, EachPaintingAsksForTheNext) {
    [knob setNeedsDisplay:NO];
    parent->repaintRequests = 0;
    [knob drawRect:NSMakeRect(0, 0, 48, 50)];
    EXPECT_TRUE([knob needsDisplay]);
    EXPECT_EQ(parent->repaintRequests, 1);
}

TEST_F(FlatKnob, ValueFromAnySourceShowsAtTheNextPainting) {
    [[knob controlPoint] setValue:60];
    [knob drawRect:NSMakeRect(0, 0, 48, 50)];
    EXPECT_EQ(drawingsOf(76).size(), 1u);
}

TEST_F(FlatKnob, StepWithoutAFrameDrawsNothing) {
    for (const int step : {101, -1, 1000000, -1000000}) {
        [[knob controlPoint] setValue:step];
        [knob drawRect:NSMakeRect(0, 0, 48, 50)];
    }
    for (NSUInteger frame = 0; frame < 128; ++frame) {
        EXPECT_TRUE(drawingsOf(frame).empty());
    }
}

TEST_F(FlatKnob, AccessorsAreAsTheirFields) {
    [knob setControl:7];
    EXPECT_EQ([knob control], 7);
    ControlPoint13* const other = [[[ControlPoint13 alloc] init] autorelease];
    const NSUInteger before = [other retainCount];
    [knob setControlPoint:other];
    EXPECT_EQ([knob controlPoint], other);
    EXPECT_EQ([other retainCount], before);
}

TEST_F(FlatKnob, KnobWithoutFramesOrPointDrawsNothing) {
    FlatKnob13* const bare =
        [[[FlatKnob13 alloc] initWithFrame:NSMakeRect(10, 30, 100, 100)] autorelease];
    [bare drawRect:NSMakeRect(0, 0, 100, 100)];
    EXPECT_EQ([bare controlPoint], nil);
    EXPECT_EQ([[bare subviews] count], 0u);
}
