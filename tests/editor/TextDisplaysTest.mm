// The displays of levels and numbers in a window.
#import "editor/TarnsCustomDisplayView10.h"
#import "editor/TarnsUiView13.h"
#import "editor/sTextView13.h"
#include "tests/editor/DrawnTexts.h"
#include "tests/editor/ViewTest.h"
#include "tests/editor/ViewWindow.h"
#include "tests/support/screen/ExpectedFace.h"

#include <gmock/gmock.h>

#include <vector>

#include <dlfcn.h>

using testing::ElementsAre;

namespace {

struct Filling {
    NSRect place;
    NSCompositingOperation operation;
};

std::vector<Filling> fillings; // since the latest test began

const NSSize kWide = {620, 260};

// Pixels that are not the window's own, in a rectangle.
int inkIn(const ScreenPart& part, int left, int bottom, int width, int height) {
    int ink = 0;
    for (int y = bottom; y < bottom + height; ++y) {
        for (int x = left; x < left + width; ++x) {
            ink += pixelAt(part, x, y) == kWindowGrey ? 0 : 1;
        }
    }
    return ink;
}

id attribute(const DrawnText& drawn, NSString* name) {
    return [drawn.attributes objectForKey:name];
}

} // namespace

// AppKit's own, in front of it for the whole program.
void NSRectFillUsingOperation(NSRect place, NSCompositingOperation operation) {
    fillings.push_back({place, operation});
    static const auto inherited = reinterpret_cast<decltype(&NSRectFillUsingOperation)>(
        dlsym(RTLD_NEXT, "NSRectFillUsingOperation"));
    inherited(place, operation);
}

class LevelDisplay : public ViewTest {
protected:
    LevelDisplay()
        : owner([[[TarnsUiView13 alloc] initWithFrame:NSMakeRect(0, 0, 344, 400)
                                            andEffect:nullptr] autorelease]),
          view([[[sTextView13 alloc] initWithFrame:NSMakeRect(0, 0, 620, 260)] autorelease]) {
        [view setOwner:owner];
    }

    std::vector<std::string> textsFor(int32_t pan) {
        variable<int32_t>(owner, "_panningSliderVal") = pan;
        DrawnTexts drawn;
        ViewWindow window(view, kWide);
        [view removeFromSuperview];
        return drawn.texts();
    }

    TarnsUiView13* const owner;
    sTextView13* const view;
};

TEST_F(LevelDisplay, PrintsNothing100AndNothingAtTheValuesThatNobodySets) {
    EXPECT_EQ([view owner], owner);
    EXPECT_EQ([owner volumeSliderVal], 0);
    EXPECT_EQ([owner panningSliderVal], 0);
    EXPECT_THAT(textsFor(0), ElementsAre("0%", "100%", "0%"));
}

TEST_F(LevelDisplay, PrintsTheSameWithoutAnOwner) {
    [view setOwner:nil];
    EXPECT_THAT(textsFor(50), ElementsAre("0%", "100%", "0%"));
}

TEST_F(LevelDisplay, PrintsTheBalanceOfThePanValue) {
    EXPECT_THAT(textsFor(50), ElementsAre("0%", "0%", "0%"));
    EXPECT_THAT(textsFor(51), ElementsAre("0%", "0%", "2%"));
    EXPECT_THAT(textsFor(49), ElementsAre("0%", "2%", "0%"));
    EXPECT_THAT(textsFor(100), ElementsAre("0%", "0%", "100%"));
    EXPECT_THAT(textsFor(-1), ElementsAre("0%", "102%", "0%"));
}

TEST_F(LevelDisplay, PrintsTheVolume) {
    [owner setVolumeSliderVal:87];
    EXPECT_THAT(textsFor(50), ElementsAre("87%", "0%", "0%"));
    [owner setVolumeSliderVal:-3];
    EXPECT_THAT(textsFor(50), ElementsAre("-3%", "0%", "0%"));
}

TEST_F(LevelDisplay, DoesNotOwnItsOwner) {
    const NSUInteger owners = [owner retainCount];
    [view setOwner:nil];
    [view setOwner:owner];
    EXPECT_EQ([owner retainCount], owners);
}

TEST_F(LevelDisplay, DrawsAtItsThreePlacesInWarmWhite) {
    DrawnTexts drawn;
    ViewWindow window(view, kWide);
    ASSERT_EQ(drawn.all.size(), 3u);
    const CGFloat places[] = {120, 363, 494};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(drawn.all[i].place.origin.x, places[i]);
        EXPECT_EQ(drawn.all[i].place.origin.y, 234);
        NSColor* const colour = attribute(drawn.all[i], NSForegroundColorAttributeName);
        EXPECT_EQ([colour redComponent], 0.9490196108818054);
        EXPECT_EQ([colour greenComponent], 0.9411764740943909);
        EXPECT_EQ([colour blueComponent], 0.9296875);
        EXPECT_EQ([colour alphaComponent], 1.0);
        EXPECT_TRUE(sameColour(attribute(drawn.all[i], NSBackgroundColorAttributeName),
                               [NSColor clearColor]));
        EXPECT_EQ([drawn.all[i].attributes count], 2u);
        EXPECT_GT(inkIn(window.screen(), static_cast<int>(places[i]), 234, 40, 20), 10);
    }
}

TEST_F(LevelDisplay, LeavesWhatLiesBehindAsItWas) {
    ViewWindow window(view, kWide);
    EXPECT_EQ(inkIn(window.screen(), 0, 0, 620, 230), 0);
    EXPECT_EQ(inkIn(window.screen(), 0, 230, 118, 30), 0);
}

TEST_F(LevelDisplay, FillsWhatIsRepaintedWithNothingFirst) {
    ViewWindow window(view, kWide);
    fillings.clear();
    const NSRect part = NSMakeRect(100, 220, 300, 30);
    [view lockFocus];
    [view drawRect:part];
    [view unlockFocus];
    ASSERT_EQ(fillings.size(), 1u);
    EXPECT_TRUE(NSEqualRects(fillings[0].place, part));
    EXPECT_EQ(fillings[0].operation, NSCompositeSourceOver);
    EXPECT_EQ(inkIn(window.screen(), 0, 0, 620, 230), 0);
}

TEST_F(LevelDisplay, WithdrawsWhatRepaintIsPending) {
    ViewWindow window(view, kWide);
    [view setNeedsDisplay:YES];
    ASSERT_TRUE([view needsDisplay]);
    [view lockFocus];
    [view drawRect:[view bounds]];
    [view unlockFocus];
    EXPECT_FALSE([view needsDisplay]);
}

class NumberDisplay : public ViewTest {
protected:
    NumberDisplay()
        : view([[[TarnsCustomDisplayView10 alloc] initWithFrame:NSMakeRect(0, 0, 120, 30)
                                                       andValue:42] autorelease]) {}

    TarnsCustomDisplayView10* const view;
};

TEST_F(NumberDisplay, PrintsItsNumber) {
    EXPECT_EQ([view SValue], 42);
    DrawnTexts drawn;
    ViewWindow window(view, NSMakeSize(120, 30));
    EXPECT_THAT(drawn.texts(), ElementsAre("42"));
}

TEST_F(NumberDisplay, PrintsNegativeNumbersWithAMinus) {
    TarnsCustomDisplayView10* const negative =
        [[[TarnsCustomDisplayView10 alloc] initWithFrame:NSMakeRect(0, 0, 120, 30)
                                                andValue:-2147483647 - 1] autorelease];
    DrawnTexts drawn;
    ViewWindow window(negative, NSMakeSize(120, 30));
    [negative setSValue:-1];
    window.repaint();
    EXPECT_THAT(drawn.texts(), ElementsAre("-2147483648", "-1"));
}

TEST_F(NumberDisplay, ShowsANewNumberAtTheNextRepaintOnly) {
    ViewWindow window(view, NSMakeSize(120, 30));
    const ScreenPart before = window.screen();
    [view setSValue:-1234];
    EXPECT_EQ([view SValue], -1234);
    EXPECT_FALSE([view needsDisplay]);
    [[view window] displayIfNeeded];
    EXPECT_EQ(differenceOf(window.screen(), before).largest, 0);
    window.repaint();
    EXPECT_GT(differenceOf(window.screen(), before).largest, 100);
}

TEST_F(NumberDisplay, PrintsCentredInWhite) {
    DrawnTexts drawn;
    ViewWindow window(view, NSMakeSize(120, 30));
    ASSERT_EQ(drawn.all.size(), 1u);
    EXPECT_TRUE(
        sameColour(attribute(drawn.all[0], NSForegroundColorAttributeName), [NSColor whiteColor]));
    NSParagraphStyle* const style = attribute(drawn.all[0], NSParagraphStyleAttributeName);
    EXPECT_EQ(static_cast<int>([style alignment]), 2);
    EXPECT_EQ([drawn.all[0].attributes count], 2u);
    EXPECT_EQ([[NSParagraphStyle defaultParagraphStyle] alignment], NSNaturalTextAlignment);
    const ScreenPart screen = window.screen();
    EXPECT_EQ(inkIn(screen, 0, 0, 40, 30), 0);
    EXPECT_EQ(inkIn(screen, 80, 0, 40, 30), 0);
    EXPECT_GT(inkIn(screen, 40, 0, 40, 30), 10);
}

TEST_F(NumberDisplay, CentresInThePartThatIsRepainted) {
    ViewWindow window(view, NSMakeSize(120, 30));
    DrawnTexts drawn;
    const NSRect part = NSMakeRect(60, 4, 50, 22);
    [view displayRect:part];
    ASSERT_EQ(drawn.all.size(), 1u);
    EXPECT_TRUE(NSEqualRects(drawn.all[0].place, part));
    EXPECT_GT(inkIn(window.screen(), 75, 4, 20, 22), 10);
}

TEST_F(NumberDisplay, KeepsOneSetOfAttributes) {
    NSDictionary* const attributes = variable<NSDictionary*>(view, "_displayDictionary");
    EXPECT_TRUE([attributes isKindOfClass:[NSMutableDictionary class]]);
    ViewWindow window(view, NSMakeSize(120, 30));
    window.repaint();
    EXPECT_EQ(variable<NSDictionary*>(view, "_displayDictionary"), attributes);
}
