// The slider of two pictures in a window.
#import "editor/FlatKnobProtocol.h"
#import "editor/TarnsCustomSlider13.h"
#import "editor/TarnsCustomSliderCell10.h"
#include "tests/editor/ViewTest.h"
#include "tests/editor/ViewWindow.h"
#include "tests/support/screen/ExpectedFace.h"

#include <gmock/gmock.h>

#include <cmath>
#include <vector>

struct SliderReport {
    int32_t index;
    id value;
    id object;
    int drawings; // of the track at that moment
};

// A picture that counts how often it is drawn.
@interface CountedPicture : NSImage {
@public
    int drawings;
}
@end

@implementation CountedPicture

- (void)drawInRect:(NSRect)target {
    ++drawings;
    [super drawInRect:target];
}

@end

@interface SliderReports : NSObject <FlatKnobProtocol> {
@public
    std::vector<SliderReport> reports;
    CountedPicture* track; // may be nil
}
@end

@implementation SliderReports

- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object {
    reports.push_back({index, value, object, track != nil ? track->drawings : 0});
}

@end

// Fills itself with a picture.
@interface PictureView : NSView {
@public
    NSImage* picture;
}
@end

@implementation PictureView

- (void)drawRect:(NSRect)dirtyRect {
    [picture drawInRect:[self bounds]
               fromRect:NSZeroRect
              operation:NSCompositeSourceOver
               fraction:1.0];
}

@end

namespace {

constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kBlue{0, 0, 255, 255};

TarnsCustomSlider13* newSlider(NSRect frame) {
    return [[TarnsCustomSlider13 alloc]
        initWithFrameandImage:frame
              backgroundImage:plainImage([NSColor redColor], NSMakeSize(30, 10))
                    knobImage:plainImage([NSColor blueColor], NSMakeSize(6, 6))];
}

// With the bundle's own pictures.
TarnsCustomSlider13* newOwnSlider(NSRect frame) {
    TarnsCustomSlider13* const slider = [[TarnsCustomSlider13 alloc] initWithFrame:frame];
    TarnsCustomSliderCell10* const cell = [[[TarnsCustomSliderCell10 alloc] init] autorelease];
    [cell setSliderCellWidth:static_cast<int32_t>(frame.size.width)];
    [cell setSliderCellHeight:static_cast<int32_t>(frame.size.height)];
    [slider setCell:cell];
    return slider;
}

// Red below, blue above.
NSImage* twoColoured(NSSize size) {
    NSImage* const image = plainImage([NSColor redColor], size);
    [image lockFocus];
    [[NSColor blueColor] set];
    NSRectFill(NSMakeRect(0, size.height / 2, size.width, size.height / 2));
    [image unlockFocus];
    return image;
}

NSString* fileOf(NSString* name) {
    return [[NSBundle bundleForClass:[TarnsCustomSlider13 class]] pathForImageResource:name];
}

ScreenPart shownAt(NSImage* picture, NSSize size) {
    PictureView* const view =
        [[[PictureView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)] autorelease];
    view->picture = picture;
    return ViewWindow(view, size).screen();
}

struct PixelBox {
    int left, bottom, right, top; // in points, right and top just outside
    int count;                    // of the pixels of the colour

    bool operator==(const PixelBox& other) const {
        return left == other.left && bottom == other.bottom && right == other.right &&
               top == other.top && count == other.count;
    }
};

PixelBox boxOf(const Pixel& colour, const ScreenPart& part) {
    PixelBox box{part.width, part.height, 0, 0, 0};
    for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x) {
            if (pixelAt(part, x, y) == colour) {
                box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x + 1),
                       std::max(box.top, y + 1), box.count + 1};
            }
        }
    }
    return box;
}

void PrintTo(const PixelBox& box, std::ostream* out) {
    *out << box.left << " " << box.bottom << " " << box.right << " " << box.top << " with "
         << box.count;
}

} // namespace

class BitmapSlider : public ViewTest {
protected:
    BitmapSlider()
        : slider([newSlider(NSMakeRect(10, 8, 150, 24)) autorelease]),
          delegate([[[SliderReports alloc] init] autorelease]) {
        [slider setDelegate:delegate];
        [slider setCaseValue:3];
    }

    TarnsCustomSlider13* const slider;
    SliderReports* const delegate;
};

TEST_F(BitmapSlider, StandsAtAHalfWhenNew) {
    EXPECT_EQ([slider floatValue], 0.5f);
    TarnsCustomSlider13* const fresh = [newSlider(NSMakeRect(0, 0, 150, 24)) autorelease];
    EXPECT_EQ([fresh delegate], nil);
    EXPECT_EQ([fresh caseValue], 0);
}

TEST_F(BitmapSlider, IsDrawnByItsCell) {
    EXPECT_TRUE([[slider cell] isMemberOfClass:[TarnsCustomSliderCell10 class]]);
    EXPECT_EQ([[slider cell] SliderCellWidth], 150);
    EXPECT_EQ([[slider cell] SliderCellHeight], 24);
}

TEST_F(BitmapSlider, CutsTheTrackToWholePoints) {
    TarnsCustomSlider13* const fractional =
        [newSlider(NSMakeRect(0.0, 0.0, 150.75, 24.5)) autorelease];
    EXPECT_EQ([[fractional cell] SliderCellWidth], 150);
    EXPECT_EQ([[fractional cell] SliderCellHeight], 24);
}

TEST_F(BitmapSlider, ReportsEachRepaintWithoutAnyChange) {
    ViewWindow window(slider, NSMakeSize(170, 40));
    delegate->reports.clear();
    for (std::size_t repaints = 1; repaints <= 3; ++repaints) {
        window.repaint();
        ASSERT_EQ(delegate->reports.size(), repaints);
        EXPECT_EQ(delegate->reports.back().index, 3);
        EXPECT_EQ(delegate->reports.back().value, nil);
        EXPECT_EQ(delegate->reports.back().object, nil);
    }
    EXPECT_EQ([slider floatValue], 0.5f);
}

TEST_F(BitmapSlider, ReportsARepaintOnceItIsDrawn) {
    CountedPicture* const track =
        [[[CountedPicture alloc] initWithSize:NSMakeSize(30, 10)] autorelease];
    delegate->track = track;
    TarnsCustomSlider13* const counted =
        [[[TarnsCustomSlider13 alloc] initWithFrameandImage:NSMakeRect(10, 8, 150, 24)
                                            backgroundImage:track
                                                  knobImage:nil] autorelease];
    [counted setDelegate:delegate];
    ViewWindow window(counted, NSMakeSize(170, 40));
    track->drawings = 0;
    delegate->reports.clear();
    window.repaint();
    ASSERT_EQ(delegate->reports.size(), 1u);
    EXPECT_EQ(delegate->reports[0].drawings, 1);
}

TEST_F(BitmapSlider, ReportsNothingBeforeItIsRepainted) {
    ViewWindow window(slider, NSMakeSize(170, 40));
    delegate->reports.clear();
    [slider setFloatValue:0.25f];
    EXPECT_EQ(delegate->reports.size(), 0u);
    window.repaint();
    EXPECT_EQ(delegate->reports.size(), 1u);
}

TEST_F(BitmapSlider, CaseValueChangesTheNextReportAlone) {
    ViewWindow window(slider, NSMakeSize(170, 40));
    const ScreenPart before = window.screen();
    delegate->reports.clear();
    [slider setCaseValue:-7];
    EXPECT_EQ([slider caseValue], -7);
    EXPECT_EQ([slider floatValue], 0.5f);
    EXPECT_EQ(delegate->reports.size(), 0u);
    window.repaint();
    ASSERT_EQ(delegate->reports.size(), 1u);
    EXPECT_EQ(delegate->reports[0].index, -7);
    EXPECT_EQ(differenceOf(window.screen(), before).largest, 0);
}

TEST_F(BitmapSlider, DrawsTheSameWithoutADelegate) {
    ViewWindow window(slider, NSMakeSize(170, 40));
    const ScreenPart before = window.screen();
    delegate->reports.clear();
    [slider setDelegate:nil];
    window.repaint();
    EXPECT_EQ(differenceOf(window.screen(), before).largest, 0);
    EXPECT_EQ(delegate->reports.size(), 0u);
}

TEST_F(BitmapSlider, FillsTheTrackFromTheViewsCorner) {
    ViewWindow window(slider, NSMakeSize(170, 40));
    const PixelBox knob = boxOf(kBlue, window.screen());
    EXPECT_EQ(boxOf(kRed, window.screen()), (PixelBox{10, 8, 160, 32, 150 * 24 - knob.count}));
}

TEST_F(BitmapSlider, FillsATrackOfItsOwnExtent) {
    [[slider cell] setSliderCellWidth:100];
    [[slider cell] setSliderCellHeight:12];
    ViewWindow window(slider, NSMakeSize(170, 40));
    const PixelBox track = boxOf(kRed, window.screen());
    EXPECT_EQ(track.right - track.left, 100);
    EXPECT_EQ(track.top - track.bottom, 12);
}

TEST_F(BitmapSlider, MovesTheKnobWithItsValue) {
    ViewWindow window(slider, NSMakeSize(170, 40));
    std::vector<int> places;
    for (const float value : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f}) {
        [slider setFloatValue:value];
        window.repaint();
        const PixelBox knob = boxOf(kBlue, window.screen());
        EXPECT_EQ(knob.count, (knob.right - knob.left) * (knob.top - knob.bottom));
        places.push_back(knob.left);
    }
    EXPECT_THAT(places, testing::Not(testing::Contains(170)));
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_GT(places.back() - places.front(), 100);
}

TEST_F(BitmapSlider, PutsTheKnobsPictureWhereTheKnobIsDrawn) {
    // Upside down or not, as AppKit has it: the picture's lower left corner at a point of the view.
    ViewWindow window(slider, NSMakeSize(170, 40));
    const NSRect place = NSMakeRect(40, 2, 11, 9);
    [slider lockFocus];
    [[slider cell] drawBarInside:NSZeroRect flipped:NO];
    [[slider cell] drawKnob:place];
    [slider unlockFocus];
    [[slider window] flushWindow];
    const NSPoint corner = [slider convertPoint:NSMakePoint(44, 7) toView:nil];
    const int x = static_cast<int>(corner.x);
    const int y = static_cast<int>(corner.y);
    EXPECT_EQ(boxOf(kBlue, window.screen()), (PixelBox{x, y, x + 6, y + 6, 36}));
}

TEST_F(BitmapSlider, CellDrawsTheKnobIntoItsViewWhereverTheFocusIs) {
    ViewWindow window(slider, NSMakeSize(170, 40));
    ASSERT_EQ([NSView focusView], nil);
    [[slider cell] drawKnob:NSMakeRect(40, 2, 11, 9)];
    EXPECT_EQ([NSView focusView], nil);
    [[slider window] flushWindow];
    const NSPoint corner = [slider convertPoint:NSMakePoint(44, 7) toView:nil];
    EXPECT_EQ(
        pixelAt(window.screen(), static_cast<int>(corner.x) + 1, static_cast<int>(corner.y) + 1),
        kBlue);
}

TEST_F(BitmapSlider, ShowsWhatLiesBelowTheTransparentPartsOfItsPictures) {
    TarnsCustomSlider13* const clear = [[[TarnsCustomSlider13 alloc]
        initWithFrameandImage:NSMakeRect(0, 0, 150, 21)
              backgroundImage:transparentAtTheLeft([NSColor redColor], NSMakeSize(150, 21))
                    knobImage:transparentAtTheLeft([NSColor blueColor], NSMakeSize(13, 13))]
        autorelease];
    ViewWindow window(clear, NSMakeSize(150, 21));
    const ScreenPart shown = window.screen();
    EXPECT_EQ(pixelAt(shown, 20, 10), kWindowGrey);
    EXPECT_EQ(pixelAt(shown, 130, 10), kRed);
    [clear setDoubleValue:1.0]; // the knob's left edge at 133
    window.repaint();
    EXPECT_EQ(pixelAt(window.screen(), 135, 10), kRed);
    EXPECT_EQ(pixelAt(window.screen(), 143, 10), kBlue);
}

TEST_F(BitmapSlider, CellKeepsThePicturesItIsGiven) {
    NSImage* const track = plainImage([NSColor redColor], NSMakeSize(30, 10));
    NSImage* const knob = plainImage([NSColor blueColor], NSMakeSize(6, 6));
    const NSUInteger owners = [track retainCount];
    const NSUInteger knobOwners = [knob retainCount];
    TarnsCustomSliderCell10* const cell =
        [[[TarnsCustomSliderCell10 alloc] initWithImage:track knobImage:knob] autorelease];
    EXPECT_EQ([track retainCount], owners + 1);
    EXPECT_EQ([knob retainCount], knobOwners + 1);
    EXPECT_EQ(variable<NSImage*>(cell, "backgroundImage"), track);
    EXPECT_EQ(variable<NSImage*>(cell, "knobImage"), knob);
    EXPECT_EQ([cell SliderCellWidth], 0);
    EXPECT_EQ([cell SliderCellHeight], 0);
}

TEST_F(BitmapSlider, CellLoadsTheBundlesOwnPictures) {
    TarnsCustomSliderCell10* const cell = [[[TarnsCustomSliderCell10 alloc] init] autorelease];
    const NSSize track = [variable<NSImage*>(cell, "backgroundImage") size];
    const NSSize knob = [variable<NSImage*>(cell, "knobImage") size];
    EXPECT_NEAR(track.width, 150.0, 0.1);
    EXPECT_NEAR(track.height, 21.0, 0.1);
    EXPECT_NEAR(knob.width, 13.0, 0.1);
    EXPECT_NEAR(knob.height, 13.0, 0.1);
}

TEST_F(BitmapSlider, DrawsItsPicturesUpright) {
    TarnsCustomSlider13* const both =
        [[[TarnsCustomSlider13 alloc] initWithFrameandImage:NSMakeRect(0, 0, 150, 20)
                                            backgroundImage:twoColoured(NSMakeSize(30, 10))
                                                  knobImage:nil] autorelease];
    ViewWindow trackWindow(both, NSMakeSize(150, 20));
    EXPECT_EQ(boxOf(kRed, trackWindow.screen()), (PixelBox{0, 0, 150, 10, 1500}));
    EXPECT_EQ(boxOf(kBlue, trackWindow.screen()), (PixelBox{0, 10, 150, 20, 1500}));

    TarnsCustomSlider13* const knobAlone = [[[TarnsCustomSlider13 alloc]
        initWithFrameandImage:NSMakeRect(0, 0, 150, 21)
              backgroundImage:nil
                    knobImage:twoColoured(NSMakeSize(13, 12))] autorelease];
    ViewWindow knobWindow(knobAlone, NSMakeSize(150, 21));
    const PixelBox lower = boxOf(kRed, knobWindow.screen());
    const PixelBox upper = boxOf(kBlue, knobWindow.screen());
    EXPECT_EQ(lower.count, 13 * 6);
    EXPECT_EQ(upper.count, 13 * 6);
    EXPECT_EQ(upper.bottom, lower.top);
}

TEST_F(BitmapSlider, PutsAKnobOfTheBundlesSizeIntoTheMiddleOfItsTrack) {
    TarnsCustomSlider13* const centred = [[[TarnsCustomSlider13 alloc]
        initWithFrameandImage:NSMakeRect(0, 0, 150, 21)
              backgroundImage:plainImage([NSColor redColor], NSMakeSize(150, 21))
                    knobImage:plainImage([NSColor blueColor], NSMakeSize(13, 13))] autorelease];
    ViewWindow window(centred, NSMakeSize(150, 21));
    const int lefts[] = {4, 68, 133};
    for (const int place : {0, 1, 2}) {
        [centred setDoubleValue:place / 2.0];
        window.repaint();
        const PixelBox knob = boxOf(kBlue, window.screen());
        EXPECT_EQ(knob.bottom, 4);
        EXPECT_EQ(knob.top, 17);
        EXPECT_EQ(knob.left, lefts[place]);
        EXPECT_EQ(knob.count, 13 * 13);
    }
}

TEST_F(BitmapSlider, IsDraggedByItsKnob) {
    TarnsCustomSlider13* const own = [newOwnSlider(NSMakeRect(0, 0, 150, 21)) autorelease];
    [own setDoubleValue:0.5];
    ViewWindow window(own, NSMakeSize(150, 21));
    EXPECT_TRUE(NSEqualRects([[own cell] knobRectFlipped:YES], NSMakeRect(64, 0, 21, 21)));
}

TEST_F(BitmapSlider, SharedPictureIsAsSharpAtEachSizeAsIfItHadNoOther) {
    for (NSString* const name : {@"bmp00131", @"bmp00130", @"loadback"}) {
        NSImage* const shared = [[[NSImage alloc] initByReferencingFile:fileOf(name)] autorelease];
        NSImage* const alone = [[[NSImage alloc] initWithContentsOfFile:fileOf(name)] autorelease];
        const NSSize single =
            NSMakeSize(std::round([alone size].width), std::round([alone size].height));
        const NSSize twice = NSMakeSize(2 * single.width, 2 * single.height);
        const ScreenPart first = shownAt(shared, single);
        EXPECT_EQ(differenceOf(shownAt(shared, twice), shownAt(alone, twice)).largest, 0);
        EXPECT_EQ(differenceOf(shownAt(shared, single), first).largest, 0);
    }
}
