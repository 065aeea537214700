// Alerts in a window, and what is left of them without a screen.
#include "platform/linux/AlertWindow.h"

#import "editor/TarnsView10.h"
#include "editor/hosting/EditorHosting.h"
#include "tests/editor/ViewTest.h"
#include "tests/support/Process.h"
#include "tests/support/screen/HostWindow.h"
#include "tests/support/screen/Mouse.h"
#include "tests/support/screen/ScreenWindows.h"
#include "tests/support/screen/XServer.h"

#include <CoreFoundation/CFString.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

// After all others: Xlib spoils names that they use.
#include <X11/Xlib.h>

// Does something to the alert once it is up, and ends a press that nothing else would end.
@interface AlertUser : NSObject {
@public
    std::function<bool(NSWindow*)> ready;
    std::function<void(NSWindow*)> act;
    bool acted;
    NSDate* patience; // with a press that lasts
    bool rescued;
}
@end

@implementation AlertUser

- (void)lookAtAlert:(NSTimer*)timer {
    NSWindow* const alert = [NSApp modalWindow];
    if (!acted && [alert isVisible] && ready(alert)) {
        acted = true;
        act(alert);
    }
}

- (void)lookAtPress:(NSTimer*)timer {
    if (!rescued && [patience timeIntervalSinceNow] < 0.0) {
        rescued = true;
        NSWindow* const alert = [NSApp modalWindow];
        [NSApp postEvent:[NSEvent mouseEventWithType:NSLeftMouseUp
                                            location:NSMakePoint(-1, -1)
                                       modifierFlags:0
                                           timestamp:0
                                        windowNumber:[alert windowNumber]
                                             context:nil
                                         eventNumber:0
                                          clickCount:1
                                            pressure:0.0f]
                 atStart:YES];
    }
}

@end

namespace {

NSButton* buttonIn(NSView* view, NSString* title) {
    if ([view isKindOfClass:[NSButton class]] &&
        [[static_cast<NSButton*>(view) title] isEqual:title] && ![view isHidden]) {
        return static_cast<NSButton*>(view);
    }
    for (NSView* each in [view subviews]) {
        NSButton* const found = buttonIn(each, title);
        if (found != nil) {
            return found;
        }
    }
    return nil;
}

// The middle of a button, in points of the screen.
NSPoint placeOf(NSWindow* alert, NSString* title) {
    NSView* const button = buttonIn([alert contentView], title);
    const NSRect place = [button convertRect:[button bounds] toView:nil];
    return [alert convertBaseToScreen:NSMakePoint(NSMidX(place), NSMidY(place))];
}

// Goes there, and presses and lets go as fast as the screen takes it.
void clickAtOnce(NSPoint place, int right = 0, int up = 0) {
    const Mouse mouse(0, XServer::kHeight);
    const int x = static_cast<int>(place.x);
    const int y = static_cast<int>(place.y);
    mouse.dragAtOnce(x, y, x + right, y + up);
}

// Whether a window manager shows what is new. It never shows what comes while it starts.
bool windowsAreManaged() {
    if (!windowManagerRuns()) {
        return false;
    }
    const HostWindow probe(0, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::vector<ShownWindow> shown = shownWindows();
    return std::any_of(shown.begin(), shown.end(), [&](const ShownWindow& window) {
        return window.handle == reinterpret_cast<unsigned long>(probe.handle());
    });
}

} // namespace

class AlertWindow : public ViewTest {
protected:
    static constexpr CFOptionFlags kTimeOver = 1000;

    // Shows the alert for `timeout` seconds, 0 for ever, and does something to it once it is up.
    // Answers its response, or kTimeOver.
    CFOptionFlags answerTo(const std::function<void(NSWindow*)>& act,
                           CFTimeInterval timeout = 30.0) {
        CFOptionFlags response = 99;
        NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:timeout];
        use(act, [&] { response = show(timeout); });
        return timeout > 0.0 && [end timeIntervalSinceNow] < 0.0 ? kTimeOver : response;
    }

    // Does something to the alert that `alert` shows and waits for.
    void use(const std::function<void(NSWindow*)>& act, const std::function<void()>& alert) {
        AlertUser* const user = [[[AlertUser alloc] init] autorelease];
        user->ready = ready;
        user->act = act;
        user->patience = [NSDate dateWithTimeIntervalSinceNow:20.0];
        NSTimer* const alertTimer = timer(user, @selector(lookAtAlert:), NSModalPanelRunLoopMode);
        NSTimer* const pressTimer =
            timer(user, @selector(lookAtPress:), NSEventTrackingRunLoopMode);
        alert();
        [alertTimer invalidate];
        [pressTimer invalidate];
        EXPECT_TRUE(user->acted);
        EXPECT_FALSE(user->rescued) << "a press had no end";
        EXPECT_EQ([NSApp modalWindow], nil);
    }

    std::function<bool(NSWindow*)> ready = [](NSWindow*) { return true; };

    CFOptionFlags show(CFTimeInterval timeout) {
        CFOptionFlags response = 99;
        EXPECT_EQ(CFUserNotificationDisplayAlert(timeout, kCFUserNotificationPlainAlertLevel,
                                                 nullptr, nullptr, nullptr, CFSTR("Hello"),
                                                 CFSTR("couldn't load nib"), CFSTR("OK"),
                                                 CFSTR("Later"), CFSTR("Never"), &response),
                  0);
        return response;
    }

    void expectAnswersByKeys() {
        const auto press = [](const char* key) {
            return [key](NSWindow*) { xdotool({"key", key}); };
        };
        EXPECT_EQ(answerTo(press("Return")), CFOptionFlags(kCFUserNotificationDefaultResponse));
        EXPECT_EQ(answerTo(press("space")), CFOptionFlags(kCFUserNotificationDefaultResponse));
        EXPECT_EQ(answerTo(press("Escape")), CFOptionFlags(kCFUserNotificationCancelResponse));
    }

private:
    static NSTimer* timer(AlertUser* user, SEL look, NSString* mode) {
        NSTimer* const made = [NSTimer timerWithTimeInterval:0.05
                                                      target:user
                                                    selector:look
                                                    userInfo:nil
                                                     repeats:YES];
        [[NSRunLoop currentRunLoop] addTimer:made forMode:mode];
        return made;
    }
};

TEST_F(AlertWindow, AnswersWithTheButtonThatIsClicked) {
    const auto click = [](NSString* title) {
        return [title](NSWindow* alert) { clickAtOnce(placeOf(alert, title)); };
    };
    EXPECT_EQ(answerTo(click(@"OK")), CFOptionFlags(kCFUserNotificationDefaultResponse));
    EXPECT_EQ(answerTo(click(@"Later")), CFOptionFlags(kCFUserNotificationAlternateResponse));
    EXPECT_EQ(answerTo(click(@"Never"), 0.0), CFOptionFlags(kCFUserNotificationOtherResponse));
}

TEST_F(AlertWindow, TakesAClickAfterOneBesideTheButtons) {
    EXPECT_EQ(answerTo([](NSWindow* alert) {
                  const NSPoint button = placeOf(alert, @"OK");
                  clickAtOnce(NSMakePoint(button.x, button.y + 60));
                  clickAtOnce(button);
              }),
              CFOptionFlags(kCFUserNotificationDefaultResponse));
}

TEST_F(AlertWindow, TakesAPressThatIsReleasedBesideItsButtonForNoAnswer) {
    EXPECT_EQ(answerTo([](NSWindow* alert) { clickAtOnce(placeOf(alert, @"OK"), 0, 60); }, 2.0),
              kTimeOver);
}

TEST_F(AlertWindow, TakesItsTimeWithASlowPress) {
    const Mouse mouse(0, XServer::kHeight);
    EXPECT_EQ(answerTo([&](NSWindow* alert) {
                  const NSPoint place = placeOf(alert, @"Later");
                  mouse.moveTo(static_cast<int>(place.x), static_cast<int>(place.y));
                  xdotool({"mousedown", "1"});
                  std::system("(sleep 0.5; xdotool mouseup 1) &");
              }),
              CFOptionFlags(kCFUserNotificationAlternateResponse));
}

TEST_F(AlertWindow, IsAnsweredByKeys) {
    expectAnswersByKeys();
}

TEST_F(AlertWindow, IsAnsweredByKeysUnderAWindowManager) {
    Process::Options quiet;
    quiet.log = "/dev/null";
    const Process windowManager("openbox", {"--sm-disable"}, quiet);
    ASSERT_TRUE(idleUntil([] {}, windowsAreManaged));
    // It shows windows and hands out the keyboard in its own time, and may be the faster or not.
    ready = [](NSWindow* alert) {
        return keyboardFocus() == reinterpret_cast<unsigned long>([alert windowRef]);
    };
    for (int round = 0; round < 3; ++round) {
        expectAnswersByKeys();
    }
}

TEST_F(AlertWindow, IsCancelledWhenItsTimeIsOver) {
    EXPECT_EQ(show(0.2), CFOptionFlags(kCFUserNotificationCancelResponse));
    EXPECT_EQ([NSApp modalWindow], nil);
}

TEST_F(AlertWindow, LeavesTheHandlerOfXErrorsAsItWas) {
    finishEditorViews();
    const XErrorHandler handlerOfHost = [](Display*, XErrorEvent*) { return 0; };
    const XErrorHandler handlerBefore = XSetErrorHandler(handlerOfHost);
    show(0.1);
    EXPECT_EQ(XSetErrorHandler(handlerBefore), handlerOfHost);
}

TEST_F(AlertWindow, ShowsThatTheNibIsMissingAndThenAnswersNil) {
    TarnsView10* const factory = [[[TarnsView10 alloc] init] autorelease];
    NSView* view = factory != nil ? [[[NSView alloc] init] autorelease] : nil;
    use([](NSWindow* alert) { clickAtOnce(placeOf(alert, @"OK")); },
        [&] { view = [factory uiViewForAudioUnit:nullptr withSize:NSMakeSize(10, 10)]; });
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
