// Alerts in a window, and what is left of them without a screen.
#include "platform/linux/AlertWindow.h"

#import "editor/TarnsView10.h"
#include "tests/editor/ViewTest.h"

#include <CoreFoundation/CFString.h>

#include <cstdlib>
#include <functional>

// Presses a button of the alert that is up.
@interface AlertButton : NSObject {
@public
    NSString* title;
    bool pressed;
}
@end

@implementation AlertButton

- (NSButton*)buttonIn:(NSView*)view {
    if ([view isKindOfClass:[NSButton class]] &&
        [[static_cast<NSButton*>(view) title] isEqual:title] && ![view isHidden]) {
        return static_cast<NSButton*>(view);
    }
    for (NSView* each in [view subviews]) {
        NSButton* const found = [self buttonIn:each];
        if (found != nil) {
            return found;
        }
    }
    return nil;
}

- (void)press:(NSTimer*)timer {
    NSWindow* const alert = [NSApp modalWindow];
    NSButton* const button = [self buttonIn:[alert contentView]];
    if (!pressed && button != nil && [alert isVisible]) {
        pressed = true;
        [button performClick:nil];
    }
}

@end

class AlertWindow : public ViewTest {
protected:
    // Presses the button of that title once an alert shows it.
    bool pressed(NSString* title, const std::function<void()>& alert) {
        AlertButton* const presser = [[[AlertButton alloc] init] autorelease];
        presser->title = title;
        NSTimer* const timer = [NSTimer timerWithTimeInterval:0.05
                                                       target:presser
                                                     selector:@selector(press:)
                                                     userInfo:nil
                                                      repeats:YES];
        [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSModalPanelRunLoopMode];
        alert();
        [timer invalidate];
        return presser->pressed;
    }

    CFOptionFlags show(CFTimeInterval timeout) {
        CFOptionFlags response = 99;
        EXPECT_EQ(CFUserNotificationDisplayAlert(timeout, kCFUserNotificationPlainAlertLevel,
                                                 nullptr, nullptr, nullptr, CFSTR("Hello"),
                                                 CFSTR("couldn't load nib"), CFSTR("OK"),
                                                 CFSTR("Later"), CFSTR("Never"), &response),
                  0);
        return response;
    }
};

TEST_F(AlertWindow, AnswersWithTheButtonThatIsPressed) {
    CFOptionFlags response = 99;
    EXPECT_TRUE(pressed(@"OK", [&] { response = show(60.0); }));
    EXPECT_EQ(response, CFOptionFlags(kCFUserNotificationDefaultResponse));
    EXPECT_TRUE(pressed(@"Later", [&] { response = show(60.0); }));
    EXPECT_EQ(response, CFOptionFlags(kCFUserNotificationAlternateResponse));
    EXPECT_TRUE(pressed(@"Never", [&] { response = show(0.0); }));
    EXPECT_EQ(response, CFOptionFlags(kCFUserNotificationOtherResponse));
}

TEST_F(AlertWindow, IsCancelledWhenItsTimeIsOver) {
    EXPECT_EQ(show(0.2), CFOptionFlags(kCFUserNotificationCancelResponse));
    EXPECT_EQ([NSApp modalWindow], nil);
}

TEST_F(AlertWindow, ShowsThatTheNibIsMissingAndThenAnswersNil) {
    TarnsView10* const factory = [[[TarnsView10 alloc] init] autorelease];
    NSView* view = factory != nil ? [[[NSView alloc] init] autorelease] : nil;
    EXPECT_TRUE(pressed(
        @"OK", [&] { view = [factory uiViewForAudioUnit:nullptr withSize:NSMakeSize(10, 10)]; }));
    EXPECT_EQ(view, nil);
    EXPECT_EQ(variable<id>(factory, "tarnsUiView13"), nil);
}

TEST(AlertWithoutAScreen, IsALineOnStandardErrorAndCancelled) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            unsetenv("DISPLAY");
            CFOptionFlags response = 99;
            CFUserNotificationDisplayAlert(
                20.0, kCFUserNotificationPlainAlertLevel, nullptr, nullptr, nullptr, CFSTR("Hello"),
                CFSTR("couldn't load nib"), CFSTR("OK"), nullptr, nullptr, &response);
            std::_Exit(static_cast<int>(response));
        },
        testing::ExitedWithCode(kCFUserNotificationCancelResponse), "^Hello: couldn't load nib\n$");
}
