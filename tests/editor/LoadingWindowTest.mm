// The loading window on a screen.
#include "editor/LoadingWindow.h"

#import "editor/lWindowView9.h"
#include "tests/editor/DrawnTexts.h"
#include "tests/editor/ViewTest.h"
#include "tests/editor/ViewWindow.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/XServer.h"

#include <gmock/gmock.h>

#include <CoreGraphics/CoreGraphics.h>
#import <QuartzCore/QuartzCore.h>

#include <cstdlib>

#include <objc/runtime.h>

using testing::Each;
using testing::ElementsAre;

namespace {

std::string textOf(NSString* text) {
    return [text UTF8String];
}

struct WindowRequest {
    NSRect content;
    NSUInteger style;
    NSBackingStoreType backing;
    BOOL deferred;
    NSScreen* screen;
};

using WindowInitialiser = id (*)(id, SEL, NSRect, NSUInteger, NSBackingStoreType, BOOL, NSScreen*);
using WindowOrder = void (*)(id, SEL, id);

// How windows are made and first shown as long as it lives.
class WindowRequests {
public:
    WindowRequests()
        : initialiser_(replaced(kInitialiser, reinterpret_cast<IMP>(noteInitialiser))),
          order_(replaced(@selector(makeKeyAndOrderFront:), reinterpret_cast<IMP>(noteOrder))) {
        current = this;
    }
    ~WindowRequests() {
        replaced(kInitialiser, initialiser_);
        replaced(@selector(makeKeyAndOrderFront:), order_);
        current = nullptr;
    }
    WindowRequests(const WindowRequests&) = delete;
    WindowRequests& operator=(const WindowRequests&) = delete;

    std::vector<WindowRequest> made;
    std::vector<id> madeKeyAndFront;

private:
    inline static const SEL kInitialiser = @selector(initWithContentRect:
                                                               styleMask:backing:defer:screen:);
    inline static WindowRequests* current = nullptr;

    static id noteInitialiser(id self, SEL selector, NSRect content, NSUInteger style,
                              NSBackingStoreType backing, BOOL deferred, NSScreen* screen) {
        current->made.push_back({content, style, backing, deferred, screen});
        return reinterpret_cast<WindowInitialiser>(current->initialiser_)(
            self, selector, content, style, backing, deferred, screen);
    }

    static void noteOrder(id self, SEL selector, id sender) {
        current->madeKeyAndFront.push_back(self);
        reinterpret_cast<WindowOrder>(current->order_)(self, selector, sender);
    }

    static IMP replaced(SEL selector, IMP implementation) {
        return method_setImplementation(class_getInstanceMethod([NSWindow class], selector),
                                        implementation);
    }

    const IMP initialiser_;
    const IMP order_;
};

NSScreen* noScreen(id self, SEL selector) {
    return nil;
}

NSArray* noScreens(id self, SEL selector) {
    return [NSArray array];
}

// As long as it lives, AppKit knows no screen.
class NoScreens {
public:
    NoScreens()
        : mainScreen_(replaced(@selector(mainScreen), reinterpret_cast<IMP>(noScreen))),
          screens_(replaced(@selector(screens), reinterpret_cast<IMP>(noScreens))) {}
    ~NoScreens() {
        replaced(@selector(mainScreen), mainScreen_);
        replaced(@selector(screens), screens_);
    }
    NoScreens(const NoScreens&) = delete;
    NoScreens& operator=(const NoScreens&) = delete;

private:
    static IMP replaced(SEL selector, IMP implementation) {
        return method_setImplementation(class_getClassMethod([NSScreen class], selector),
                                        implementation);
    }

    const IMP mainScreen_;
    const IMP screens_;
};

} // namespace

// Counts the passes of the event loop for one window alone.
@interface ModalPasses : NSObject {
@public
    NSWindow* const* window;
    int passes;
}
@end

@implementation ModalPasses

- (void)notePass:(NSTimer*)timer {
    passes += [NSApp modalWindow] == *window && *window != nil ? 1 : 0;
}

@end

// Notes what it is asked for.
@interface NotedLoadingView : lWindowView9 {
@public
    std::vector<std::string> noted;
}
@end

@implementation NotedLoadingView

- (void)setNeedsDisplay:(BOOL)needed {
    noted.push_back(needed ? "needs display" : "needs no display");
    [super setNeedsDisplay:needed];
}

- (void)drawRect:(NSRect)dirtyRect {
    noted.push_back("drawn");
    [super drawRect:dirtyRect];
}

@end

class LoadingView : public ViewTest {
protected:
    LoadingView()
        : image(plainImage([NSColor redColor], NSMakeSize(20, 20))),
          view([[lWindowView9 alloc] initWithImage:image andFrame:NSMakeRect(0, 0, 250, 121)]) {}
    ~LoadingView() override { [view release]; }

    NSImage* const image;
    lWindowView9* const view;
};

TEST_F(LoadingView, StartsAtNothingOf4380) {
    EXPECT_EQ([view TotalSamples], 4380u);
    EXPECT_EQ([view currentSamples], 0u);
    EXPECT_EQ(textOf([view SampleMessage]), "Loading Sample:");
    EXPECT_EQ(textOf([view SamplemessageBack]), "Loading Sample:");
    EXPECT_TRUE(NSEqualRects([view frame], NSMakeRect(0, 0, 250, 121)));
    EXPECT_NE([view layer], nil);
}

TEST_F(LoadingView, DoesNotOwnItsImage) {
    const NSUInteger owners = [image retainCount];
    lWindowView9* const other = [[lWindowView9 alloc] initWithImage:image andFrame:NSZeroRect];
    EXPECT_EQ([image retainCount], owners);
    [other release];
    EXPECT_EQ([image retainCount], owners);
}

TEST_F(LoadingView, ReplacesTheInitialTextAtTheFirstPainting) {
    DrawnTexts drawn;
    ViewWindow window(view, [view frame].size);
    EXPECT_THAT(drawn.texts(),
                ElementsAre("Loading Samples 0 of 4380", "Loading Samples 0 of 4380"));
    EXPECT_EQ(textOf([view SampleMessage]), "Loading Samples 0 of 4380");
    EXPECT_EQ(textOf([view SamplemessageBack]), "Loading Samples 0 of 4380");
}

TEST_F(LoadingView, ReplacesTextsThatAreSet) {
    [view setSampleMessage:@"one"];
    [view setSampleMessageBack:@"two"];
    EXPECT_EQ(textOf([view SampleMessage]), "one");
    EXPECT_EQ(textOf([view SamplemessageBack]), "two");
    DrawnTexts drawn;
    ViewWindow window(view, [view frame].size);
    EXPECT_THAT(drawn.texts(), Each("Loading Samples 0 of 4380"));
}

TEST_F(LoadingView, DrawsTheBlackLineBehindTheWhiteOne) {
    DrawnTexts drawn;
    ViewWindow window(view, [view frame].size);
    ASSERT_EQ(drawn.all.size(), 2u);
    EXPECT_TRUE(NSEqualPoints(drawn.all[0].place.origin, NSMakePoint(29, 8)));
    EXPECT_TRUE(NSEqualPoints(drawn.all[1].place.origin, NSMakePoint(30, 10)));
    EXPECT_TRUE(sameColour([drawn.all[0].attributes objectForKey:NSForegroundColorAttributeName],
                           [NSColor blackColor]));
    EXPECT_TRUE(sameColour([drawn.all[1].attributes objectForKey:NSForegroundColorAttributeName],
                           [NSColor whiteColor]));
    EXPECT_EQ([drawn.all[0].attributes count], 1u);
    EXPECT_EQ([drawn.all[1].attributes count], 1u);
}

TEST_F(LoadingView, ShowsANewTotalAtTheNextPainting) {
    ViewWindow window(view, [view frame].size);
    DrawnTexts drawn;
    [view setTotalSamples:90];
    EXPECT_EQ(drawn.all.size(), 0u);
    window.repaint();
    EXPECT_THAT(drawn.texts(), ElementsAre("Loading Samples 0 of 90", "Loading Samples 0 of 90"));
}

TEST_F(LoadingView, PrintsLargeCountsAsSignedNumbers) {
    ViewWindow window(view, [view frame].size);
    DrawnTexts drawn;
    [view setcurrentSamples:0xFFFFFFFF];
    [view setTotalSamples:0x80000000];
    EXPECT_EQ([view currentSamples], 0xFFFFFFFF);
    window.repaint();
    EXPECT_THAT(drawn.texts(), Each("Loading Samples -1 of -2147483648"));
}

TEST_F(LoadingView, DrawsItsImageAsLargeAsWhatIsRepaintedFromItsCorner) {
    ViewWindow window(view, NSMakeSize(260, 130));
    const ScreenPart whole = window.screen();
    const Pixel red{255, 0, 0, 255};
    EXPECT_EQ(pixelAt(whole, 0, 0), red);
    EXPECT_EQ(pixelAt(whole, 249, 120), red);
    EXPECT_EQ(pixelAt(whole, 250, 60), kWindowGrey);
    EXPECT_EQ(pixelAt(whole, 100, 121), kWindowGrey);
}

TEST_F(LoadingView, ReplacesWhatLiesBelowTheTransparentPartsOfItsImage) {
    NSImage* const half = transparentAtTheLeft([NSColor redColor], NSMakeSize(250, 121));
    lWindowView9* const clear = [[[lWindowView9 alloc] initWithImage:half
                                                            andFrame:[view frame]] autorelease];
    ViewWindow window(clear, [view frame].size);
    EXPECT_EQ(pixelAt(window.screen(), 50, 100), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(pixelAt(window.screen(), 200, 100), (Pixel{255, 0, 0, 255}));
}

TEST_F(LoadingView, ShowsItsTextWithoutAnImage) {
    lWindowView9* const bare = [[[lWindowView9 alloc] initWithImage:nil
                                                           andFrame:[view frame]] autorelease];
    DrawnTexts drawn;
    ViewWindow window(bare, [view frame].size);
    EXPECT_EQ(drawn.all.size(), 2u);
    EXPECT_EQ(pixelAt(window.screen(), 200, 100), kWindowGrey);
}

class LoadingWindowOnScreen : public ViewTest {
protected:
    LoadingWindowOnScreen() { loading.open(); }
    ~LoadingWindowOnScreen() override { loading.close(); }

    lWindowView9* view() const { return [loading.window contentView]; }

    LoadingWindow loading{};
};

TEST_F(LoadingWindowOnScreen, OpensInTheMiddleAboveAll) {
    EXPECT_TRUE([loading.window isVisible]);
    EXPECT_TRUE(NSEqualRects([loading.window frame], NSMakeRect(515, 340, 250, 121)));
    EXPECT_EQ([loading.window styleMask], 0u);
    EXPECT_EQ([loading.window level], CGShieldingWindowLevel());
    EXPECT_GT(CGShieldingWindowLevel(), CGWindowLevelForKey(kCGFloatingWindowLevelKey));
    EXPECT_FALSE([loading.window isOpaque]);
    EXPECT_TRUE([loading.window isAutodisplay]);
    EXPECT_TRUE(sameColour([loading.window backgroundColor], [NSColor clearColor]));
    EXPECT_TRUE([view() isMemberOfClass:[lWindowView9 class]]);
    EXPECT_TRUE(NSEqualRects([view() frame], NSMakeRect(0, 0, 250, 121)));
}

TEST_F(LoadingWindowOnScreen, FindsItsPictureInTheBundle) {
    EXPECT_NEAR([loading.backgroundImage size].width, 250.0, 0.1);
    EXPECT_NEAR([loading.backgroundImage size].height, 121.0, 0.1);
    EXPECT_EQ(variable<NSImage*>(view(), "BackgroundImage"), loading.backgroundImage);
}

TEST_F(LoadingWindowOnScreen, Counts4380In73StepsAndGoesOn) {
    for (unsigned step = 1; step <= 74; ++step) {
        DrawnTexts drawn;
        loading.advance();
        const std::string expected = "Loading Samples " + std::to_string(60 * step) + " of 4380";
        ASSERT_FALSE(drawn.all.empty());
        EXPECT_THAT(drawn.texts(), Each(expected));
        EXPECT_EQ([view() currentSamples], 60 * step);
    }
    EXPECT_EQ(textOf([view() SampleMessage]), "Loading Samples 4440 of 4380");
}

TEST_F(LoadingWindowOnScreen, AdvancesBy60WhateverTheTotalIs) {
    [view() setTotalSamples:7];
    loading.advance();
    EXPECT_EQ([view() currentSamples], 60u);
    EXPECT_EQ(textOf([view() SampleMessage]), "Loading Samples 60 of 7");
}

TEST_F(LoadingWindowOnScreen, ShowsEachAdvance) {
    ScreenPart before = screenOf(loading.window);
    const ScreenPart first = before;
    for (int step = 0; step < 3; ++step) {
        loading.advance();
        const ScreenPart now = screenOf(loading.window);
        EXPECT_GT(differenceOf(now, before).largest, 50);
        EXPECT_EQ(pixelAt(now, 200, 100), pixelAt(first, 200, 100));
        before = now;
    }
}

TEST_F(LoadingWindowOnScreen, AsksForADeferredWindowOnTheFirstScreen) {
    LoadingWindow other{};
    const WindowRequests requests;
    other.open();
    ASSERT_EQ(requests.made.size(), 1u);
    EXPECT_TRUE(NSEqualRects(requests.made[0].content, NSMakeRect(515, 340, 250, 121)));
    EXPECT_EQ(requests.made[0].style, 0u);
    EXPECT_EQ(requests.made[0].backing, NSBackingStoreBuffered);
    EXPECT_TRUE(requests.made[0].deferred);
    EXPECT_EQ(requests.made[0].screen, [[NSScreen screens] objectAtIndex:0]);
    EXPECT_THAT(requests.madeKeyAndFront, ElementsAre(other.window));
    other.close();
}

TEST_F(LoadingWindowOnScreen, GivesTheEventLoopAPassForItselfAloneAtEachCall) {
    LoadingWindow other{};
    ModalPasses* const passes = [[[ModalPasses alloc] init] autorelease];
    passes->window = &other.window;
    NSTimer* const timer = [NSTimer timerWithTimeInterval:0.0001
                                                   target:passes
                                                 selector:@selector(notePass:)
                                                 userInfo:nil
                                                  repeats:YES];
    [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSModalPanelRunLoopMode];
    other.open();
    EXPECT_GE(passes->passes, 1);
    passes->passes = 0;
    other.advance();
    EXPECT_GE(passes->passes, 1);
    passes->passes = 0;
    other.close();
    EXPECT_EQ(passes->passes, 0);
    [timer invalidate];
}

TEST_F(LoadingWindowOnScreen, MarksItsViewBeforeItPaints) {
    NotedLoadingView* const noted =
        [[[NotedLoadingView alloc] initWithImage:nil andFrame:[view() frame]] autorelease];
    [loading.window setContentView:noted];
    [loading.window display];
    noted->noted.clear();
    loading.advance();
    ASSERT_GE(noted->noted.size(), 2u);
    EXPECT_EQ(noted->noted[0], "needs display");
    EXPECT_EQ(noted->noted[1], "drawn");
}

TEST_F(LoadingWindowOnScreen, KeepsNoModalSessionBetweenCalls) {
    EXPECT_EQ([NSApp modalWindow], nil);
    loading.advance();
    EXPECT_EQ([NSApp modalWindow], nil);
}

TEST_F(LoadingWindowOnScreen, KeepsItsObjectsAfterClosing) {
    NSWindow* const window = [loading.window retain];
    const NSUInteger owners = [window retainCount];
    loading.close();
    EXPECT_FALSE([window isVisible]);
    EXPECT_EQ([window retainCount], owners);
    EXPECT_EQ(loading.window, window);
    EXPECT_EQ([view() currentSamples], 0u);
    [window release];
}

TEST_F(LoadingWindowOnScreen, OpensLeftAndBelowWhereAppKitKnowsNoScreen) {
    LoadingWindow screenless{};
    {
        const NoScreens noScreens;
        screenless.open();
    }
    ASSERT_NE(screenless.window, nil);
    EXPECT_TRUE(NSEqualPoints([screenless.window frame].origin, NSMakePoint(-125, -60)));
    screenless.advance();
    EXPECT_EQ([static_cast<lWindowView9*>([screenless.window contentView]) currentSamples], 60u);
    screenless.close();
}

TEST(LoadingWindowAlone, MakesAppKitReadyItself) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            sharedXServer();
            LoadingWindow loading;
            loading.open();
            loading.advance();
            const bool shown = [loading.window isVisible];
            loading.close();
            std::_Exit(shown ? 0 : 1);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST(LoadingWindowAlone, ShowsAndReportsNothingWithoutADisplay) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            unsetenv("DISPLAY");
            LoadingWindow loading;
            loading.open();
            loading.advance();
            loading.close();
            std::_Exit(loading.window == nil && loading.backgroundImage == nil ? 0 : 1);
        },
        testing::ExitedWithCode(0), "^$");
}
