// The editor's window inside a host's: what it makes of messages from AppKit itself.
#import "tests/editor/MouseEvent.h"
#include "tests/editor/RecordingSynth.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#import "editor/TarnsUiView13.h"
#include "editor/tveditor13.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>
#include <objc/runtime.h>

#include <memory>

namespace {

// The first of two screens, the one below the other.
NSRect frameOfALowerScreen(id, SEL) {
    return NSMakeRect(0, -200, XServer::kWidth, XServer::kHeight);
}

} // namespace

TEST(HostedWindowAtFirst, LiesAtTheUpperLeftWhereverTheFirstScreenLies) {
    sharedXServer();
    RecordingSynth synth;
    std::make_unique<HostedEditor>(synth.getAeffect()).reset(); // starts AppKit
    const Method frame = class_getInstanceMethod([NSScreen class], @selector(frame));
    const IMP own = method_setImplementation(frame, reinterpret_cast<IMP>(frameOfALowerScreen));
    HostedEditor editor(synth.getAeffect());
    method_setImplementation(frame, own);
    EXPECT_TRUE(editor.shows(kSlapBack));
    const HostWindow::Child child = editor.window.children().at(0);
    EXPECT_EQ(child.x, 0);
    EXPECT_EQ(child.y, 0);
}

class HostedWindow : public testing::Test {
protected:
    HostedWindow() {
        sharedXServer();
        hosted = std::make_unique<HostedEditor>(synth.getAeffect());
        pool = [[NSAutoreleasePool alloc] init];
        window = [static_cast<tveditor13*>(synth.uiEditor)->uiView window];
    }
    ~HostedWindow() override {
        [pool release];
        hosted.reset();
    }

    RecordingSynth synth;
    std::unique_ptr<HostedEditor> hosted;
    NSAutoreleasePool* pool;
    NSWindow* window;
};

TEST_F(HostedWindow, LeavesTheKeyboardToTheHostWhenAppKitIsActivated) {
    ASSERT_TRUE(hosted->shows(kSlapBack));
    hosted->window.takeKeyboard();
    const unsigned long focus = keyboardFocus();
    [NSApp activateIgnoringOtherApps:YES];
    [window makeKeyAndOrderFront:nil];
    hosted->idle();
    hosted->idle();
    EXPECT_EQ(keyboardFocus(), focus);
    EXPECT_FALSE([window isKeyWindow]);
    EXPECT_FALSE([window isMainWindow]);
}

TEST_F(HostedWindow, PaintsInIdleCallsAloneWhereTheHostRunsARunLoop) {
    ASSERT_TRUE(hosted->shows(kSlapBack));
    hosted->settledScreen();
    hosted->window.smearChild(0, 0, 10, 10, 0x00FF00);
    [[window contentView] setNeedsDisplay:YES];
    [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.1]];
    EXPECT_EQ(hosted->window.screen().at(5, 5), (Pixel{0, 255, 0, 255}));
    EXPECT_TRUE(hosted->shows(kSlapBack));
}

TEST_F(HostedWindow, DragAfterTheReleaseMovesNothing) {
    ASSERT_TRUE(hosted->shows(kSlapBack));
    [window sendEvent:mouseEvent(NSLeftMouseDown, window, 178, 226)];
    [window sendEvent:mouseEvent(NSLeftMouseUp, window, 178, 226)];
    synth.writes.clear();
    [window sendEvent:mouseEvent(NSLeftMouseDragged, window, 178, 290)];
    EXPECT_TRUE(synth.writes.empty());
    hosted->idle();
    EXPECT_TRUE(showsFace(hosted->settledScreen(), kSlapBack));
}
