// The classes that no editor makes, by the macOS bundle's own code.
#import "tests/bundle/views/MacViewTest.h"

#import "tests/bundle/runtime/AppKitSupplement.h"

@interface MacDelegate : NSObject {
@public
    std::vector<std::string> messages;
}
- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object;
- (void)updateCenterOffsetAmountAndDisplay:(int32_t)type;
- (void)updateGroupButtons:(int32_t)type;
@end

@implementation MacDelegate

- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object {
    messages.push_back("updated " + std::to_string(index));
}

- (void)updateCenterOffsetAmountAndDisplay:(int32_t)type {
    messages.push_back("centre " + std::to_string(type));
}

- (void)updateGroupButtons:(int32_t)type {
    messages.push_back("group " + std::to_string(type));
}

@end

@interface MacUnitView : NSView {
@public
    void* audioUnit;
}
- (void)setAU:(void*)unit;
@end

@implementation MacUnitView

- (void)setAU:(void*)unit {
    audioUnit = unit;
}

@end

namespace {

using testing::Contains;
using testing::ElementsAre;

class OtherClasses : public MacViewTest {
protected:
    OtherClasses() {
        openIn(344, 400);
        delegate_ = [[MacDelegate alloc] init];
    }

    std::vector<std::string>& messages() { return delegate_->messages; }
    id delegate() const { return delegate_; }

    // What a part of the screen shows that is not the face behind it.
    void show(NSView* view) {
        [root() addSubview:view];
        [window() display];
    }

    id router() {
        const Ivar variable = class_getInstanceVariable(object_getClass(root()), "KnobView");
        return object_getIvar(root(), variable);
    }

private:
    MacDelegate* delegate_;
};

} // namespace

TEST_F(OtherClasses, KickButtonIsLitWhileHeld) {
    NSView* const kick =
        [allocated("TarnsCustomKickButton10") initWithFrameAndImages:NSMakeRect(10, 20, 30, 40)
                                                            imageOne:imageOf("switchoff")
                                                            imageTwo:imageOf("switchon")
                                                       andButtonType:7];
    [kick setNewDelegate:delegate()];
    show(kick);
    EXPECT_EQ(describe([kick frame]), "(10 20 30 40)");
    [kick mouseDown:nil];
    EXPECT_EQ([kick imageState], 1);
    [kick mouseUp:nil];
    EXPECT_EQ([kick imageState], 0);
    EXPECT_THAT(messages(), ElementsAre("updated 0", "centre 7", "updated 0"));
    EXPECT_THAT(journalOf("image (0 0 30 40)"),
                Contains("image (0 0 30 40) from (0 0 0 0) operation 2 fraction 1"));
}

TEST_F(OtherClasses, GroupButtonIsLitFromOutside) {
    NSView* const group =
        [allocated("TarnsCustomGroupButton13") initWithFrameAndImages:NSMakeRect(10, 20, 30, 40)
                                                             imageOne:imageOf("switchoff")
                                                             imageTwo:imageOf("switchon")
                                                        andButtonType:9];
    [group setNewDelegate:delegate()];
    show(group);
    [group mouseDown:nil];
    [group mouseUp:nil];
    EXPECT_EQ([group imageState], 0);
    EXPECT_EQ([group acceptsFirstMouse:nil], 1);
    EXPECT_THAT(messages(), ElementsAre("group 9"));
    EXPECT_THAT(journalOf("image (0 0 30 40)"),
                Contains("image (0 0 30 40) from (0 0 0 0) operation 2 fraction 1"));
}

TEST_F(OtherClasses, SliderStandsInTheMiddleAndReportsWhenDrawn) {
    NSSlider* const slider =
        [allocated("TarnsCustomSlider13") initWithFrameandImage:NSMakeRect(20, 20, 300.7, 42.9)
                                                backgroundImage:imageOf("bmp00131")
                                                      knobImage:imageOf("bmp00130")];
    EXPECT_EQ([slider floatValue], 0.5f);
    EXPECT_STREQ(object_getClassName([slider cell]), "TarnsCustomSliderCell10");
    EXPECT_EQ([[slider cell] SliderCellWidth], 300);
    EXPECT_EQ([[slider cell] SliderCellHeight], 42);
    [(id)slider setDelegate:delegate()];
    [slider setCaseValue:12];
    show(slider);
    EXPECT_THAT(messages(), Contains("updated 12"));
    EXPECT_THAT(journalOf("image to point"), Contains(testing::EndsWith("operation 2")));
}

TEST_F(OtherClasses, SliderCellFindsItsPictures) {
    EXPECT_NE([allocated("TarnsCustomSliderCell10") init], nil);
}

TEST_F(OtherClasses, DisplayWritesItsNumberInTheMiddle) {
    NSView* const display =
        [allocated("TarnsCustomDisplayView10") initWithFrame:NSMakeRect(20, 300, 60, 20)
                                                    andValue:-42];
    EXPECT_THAT(journalOf("paragraph"), ElementsAre("paragraph alignment 2"));
    const ScreenPart before = picture();
    show(display);
    const ScreenPart after = picture();
    int changed = 0;
    double sum = 0;
    for (int row = 80; row < 100; ++row) {
        for (int column = 20; column < 80; ++column) {
            if (difference(before.at(column, row), after.at(column, row)) > 8) {
                ++changed;
                sum += column + 0.5;
            }
        }
    }
    EXPECT_GT(changed, 10);
    EXPECT_NEAR(sum / changed, 50, 3);
}

TEST_F(OtherClasses, TextViewFillsWithNothingAndWritesThreeFigures) {
    NSView* const text = [allocated("sTextView13") initWithFrame:NSMakeRect(0, 0, 344, 400)];
    [text setOwner:root()];
    const ScreenPart before = picture();
    show(text);
    EXPECT_THAT(journalOf("fill"), Contains("fill (0 0 344 400) operation 2"));
    const ScreenPart after = picture();
    int changed = 0;
    for (int row = 150; row < 170; ++row) {
        for (int column = 120; column < 150; ++column) {
            changed += difference(before.at(column, row), after.at(column, row)) > 8 ? 1 : 0;
        }
    }
    EXPECT_GT(changed, 10); // 0%
}

TEST_F(OtherClasses, LoadingViewWritesItsCount) {
    NSView* const loading = [allocated("lWindowView9") initWithImage:imageOf("loadback")
                                                            andFrame:NSMakeRect(40, 40, 250, 121)];
    EXPECT_THAT(journalOf("lWindowView9"),
                ElementsAre("lWindowView9 wants layer 1", "lWindowView9 clips 1"));
    [loading setcurrentSamples:60];
    EXPECT_EQ([loading currentSamples], 60u);
    forgetJournal();
    show(loading);
    EXPECT_THAT(journalOf("image"),
                Contains("image (0 0 250 121) from (0 0 0 0) operation 1 fraction 1"));
    const Ivar message = class_getInstanceVariable(object_getClass(loading), "_SampleMessage");
    EXPECT_STREQ([object_getIvar(loading, message) UTF8String], "Loading Samples 60 of 4380");
}

TEST_F(OtherClasses, LoadingWindowOpensAdvancesAndCloses) {
    struct {
        NSWindow* window = nil;
        NSImage* image = nil;
    } loading;
    const BundleImage& image = MacViews::shared().image();
    const auto call = [&](const char* name) {
        reinterpret_cast<void (*)(void*)>(image.local(name))(&loading);
    };
    call("__ZN13LoadingWindow4openEv");
    ASSERT_NE(loading.window, nil);
    EXPECT_NE(loading.image, nil);
    EXPECT_THAT(journalOf("bundle"), ElementsAre("bundle com.tarnvalemusic.TvDelay"));
    EXPECT_THAT(journalOf("window NSWindow"),
                Contains("window NSWindow (515 340 250 121) style 0 backing 2 defer 1 screen "
                         "first"));
    EXPECT_EQ([loading.window level], 1000);
    EXPECT_FALSE([loading.window isOpaque]);
    call("__ZN13LoadingWindow7advanceEv");
    EXPECT_EQ([[loading.window contentView] currentSamples], 60u);
    call("__ZN13LoadingWindow5closeEv");
    EXPECT_THAT(journalOf("released"), Contains("released when closed 0"));
    EXPECT_FALSE([loading.window isVisible]);
}

TEST_F(OtherClasses, FactoryWithoutItsNibSaysSo) {
    const id factory = [allocated("TarnsView10") init];
    EXPECT_EQ([factory interfaceVersion], 0u);
    EXPECT_STREQ([[factory description] UTF8String], "Tarnvale's Lumen 73");
    EXPECT_EQ([factory uiViewForAudioUnit:nullptr withSize:NSMakeSize(1, 1)], nil);
    EXPECT_THAT(journalOf("nib"), ElementsAre("nib tarnsCocoaView11 top level objects not wanted"));
    EXPECT_THAT(journalOf("alert"),
                ElementsAre("alert timeout 20 flags 3 icon 0 sound 0 localization 0 header Hello "
                            "message couldn't load nib buttons OK, nothing, nothing"));
}

TEST_F(OtherClasses, FactoryWithItsNibGivesTheView) {
    MacUnitView* const view = [[MacUnitView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
    supplement::nibView = view;
    const id factory = [allocated("TarnsView10") init];
    int unit = 0;
    EXPECT_EQ([factory uiViewForAudioUnit:&unit withSize:NSMakeSize(1, 1)], view);
    supplement::nibView = nil;
    EXPECT_EQ(view->audioUnit, &unit);
    EXPECT_THAT(journalOf("alert"), testing::IsEmpty());
}

TEST_F(OtherClasses, RouterReadsColours) {
    NSColor* const colour = [router() colorFromHexString:@"#FF8040"];
    EXPECT_NEAR([colour redComponent], 1.0, 1e-6);
    EXPECT_NEAR([colour greenComponent], 128 / 255.0, 1e-6);
    EXPECT_NEAR([colour blueComponent], 64 / 255.0, 1e-6);
    EXPECT_NEAR([colour alphaComponent], 1.0, 1e-6);
}

TEST_F(OtherClasses, RouterMakesALabel) {
    forgetJournal();
    NSTextField* const label = [router() createLabelWithFrame:NSMakeRect(1, 2, 100, 17)];
    EXPECT_STREQ([[label stringValue] UTF8String], "Value: -");
    EXPECT_EQ(static_cast<int>([label alignment]), 2);
    EXPECT_FALSE([label isBezeled]);
    EXPECT_FALSE([label drawsBackground]);
    EXPECT_FALSE([label isEditable]);
    EXPECT_FALSE([label isSelectable]);
    EXPECT_THAT(journalOf("layer"), ElementsAre("layer border width 0", "layer border 0 0 0 1"));
}
