// tveditor13 in a host that runs AppKit itself and passes a view, or a window reference.
#import "tests/editor/AppKitHost.h"

#import "editor/TarnsUiView13.h"
#import "editor/tarnsCustomWindow10.h"
#include "editor/tveditor13.h"
#include "plugin/vst2/EffectOpcodes.h"
#include "tests/editor/RecordingSynth.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/Mouse.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include <objc/runtime.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <utility>

namespace {

int token; // its address is the window reference of the stand-in
std::vector<std::string> wrapperMessages;
bool answersReferences = false;
IMP inheritedWindowInit = nullptr;
int closedWindows = 0;
IMP inheritedMainScreen = nullptr;
bool mainScreenMissesAfterWrapper = false;
bool mainScreenIsMissing = false; // for one question, since AppKit has some of its own

id mainScreenUnlessMissing(id self, SEL selector) {
    if (std::exchange(mainScreenIsMissing, false)) {
        return nil;
    }
    return reinterpret_cast<id (*)(id, SEL)>(inheritedMainScreen)(self, selector);
}

} // namespace

// What a window reference turns into.
@interface WindowWrapper : NSWindow
@end

@implementation WindowWrapper
- (void)orderOut:(id)sender {
    wrapperMessages.push_back("orderOut");
    [super orderOut:sender];
}
- (void)close {
    wrapperMessages.push_back("close");
    [super close];
    mainScreenIsMissing = mainScreenMissesAfterWrapper;
}
@end

@interface NSWindow (StandIn)
- (id)standInWithWindowRef:(void*)reference;
@end

@implementation NSWindow (StandIn)
- (id)standInWithWindowRef:(void*)reference {
    if (answersReferences && reference == &token) {
        [self release];
        return [[WindowWrapper alloc] initWithContentRect:NSMakeRect(0, 0, 10, 10)
                                                styleMask:NSBorderlessWindowMask
                                                  backing:NSBackingStoreBuffered
                                                    defer:YES];
    }
    return reinterpret_cast<id (*)(id, SEL, void*)>(inheritedWindowInit)(
        self, @selector(initWithWindowRef:), reference);
}
@end

// Hears of a window's closing.
@interface WindowWatcher : NSObject {
@public
    const tveditor13* editor;
    std::vector<bool> openAtClose;
}
@end

@implementation WindowWatcher
- (void)noteClose:(NSNotification*)notification {
    openAtClose.push_back(editor->editorOpen);
}
@end

// How an editor asks for its floating window.
struct WindowRequest {
    NSRect content;
    NSUInteger styleMask;
    NSBackingStoreType backing;
    bool deferred;
    NSScreen* screen;
};

// Writes down those of its lifetime. One at a time.
class WindowRequests {
public:
    WindowRequests() {
        requests.clear();
        inherited = method_setImplementation(initialiser(), reinterpret_cast<IMP>(noteAndInit));
    }
    ~WindowRequests() { method_setImplementation(initialiser(), inherited); }
    WindowRequests(const WindowRequests&) = delete;
    WindowRequests& operator=(const WindowRequests&) = delete;

    const std::vector<WindowRequest>& made() const { return requests; }

private:
    using Initialiser = id (*)(id, SEL, NSRect, NSUInteger, NSBackingStoreType, BOOL, NSScreen*);

    static Method initialiser() {
        return class_getInstanceMethod([NSWindow class], @selector
                                       (initWithContentRect:styleMask:backing:defer:screen:));
    }
    static id noteAndInit(id self, SEL selector, NSRect content, NSUInteger styleMask,
                          NSBackingStoreType backing, BOOL deferred, NSScreen* screen) {
        if ([self isKindOfClass:[tarnsCustomWindow10 class]]) {
            requests.push_back({content, styleMask, backing, deferred != NO, screen});
        }
        return reinterpret_cast<Initialiser>(inherited)(self, selector, content, styleMask, backing,
                                                        deferred, screen);
    }

    static inline std::vector<WindowRequest> requests;
    static inline IMP inherited = nullptr;
};

// Is called as messages are written down, when it is set.
std::function<void()> atEachMessage;

// Writes down some messages to floating windows during its lifetime. One at a time.
class WindowMessages {
public:
    explicit WindowMessages(const std::vector<const char*>& selectors) {
        names.clear();
        for (const char* name : selectors) {
            inherited[name] =
                method_setImplementation(methodCalled(name), reinterpret_cast<IMP>(note));
        }
    }
    ~WindowMessages() {
        for (const auto& [name, implementation] : inherited) {
            method_setImplementation(methodCalled(name), implementation);
        }
        inherited.clear();
    }
    WindowMessages(const WindowMessages&) = delete;
    WindowMessages& operator=(const WindowMessages&) = delete;

    // Those from the first one called `name` on.
    std::vector<std::string> since(const char* name) const {
        return {std::find(names.begin(), names.end(), name), names.end()};
    }

private:
    static Method methodCalled(const std::string& name) {
        return class_getInstanceMethod([tarnsCustomWindow10 class], sel_registerName(name.c_str()));
    }
    static void note(id self, SEL selector, void* argument) {
        if ([self isKindOfClass:[tarnsCustomWindow10 class]]) {
            names.push_back(sel_getName(selector));
            if (atEachMessage) {
                atEachMessage();
            }
        }
        reinterpret_cast<void (*)(id, SEL, void*)>(inherited[sel_getName(selector)])(self, selector,
                                                                                     argument);
    }

    static inline std::map<std::string, IMP> inherited;
    static inline std::vector<std::string> names;
};

// True when `all` has `expected` in order, with whatever between.
bool containsInOrder(const std::vector<std::string>& all,
                     const std::vector<const char*>& expected) {
    auto place = all.begin();
    for (const char* name : expected) {
        place = std::find(place, all.end(), name);
        if (place == all.end()) {
            return false;
        }
        ++place;
    }
    return true;
}

// A window of told sizes, as a title bar makes them.
@interface SizedWindow : NSWindow {
@public
    std::vector<NSRect> frames;
    bool displays, animates, withoutContent;
}
@end

@implementation SizedWindow
- (id)contentView {
    return withoutContent ? nil : [super contentView];
}
- (void)setFrame:(NSRect)frame display:(BOOL)display animate:(BOOL)animate {
    frames.push_back(frame);
    displays = display;
    animates = animate;
    [super setFrame:frame display:display animate:NO];
}
@end

// Writes down which view its editor has whenever it is asked for a parameter.
class WatchedSynth : public VstXSynth {
public:
    WatchedSynth() : VstXSynth(nullptr) {}

    float getParameter(VstInt32 index) override {
        views.push_back(uiEditor->uiView);
        return VstXSynth::getParameter(index);
    }

    std::vector<TarnsUiView13*> views;
};

class EditorFrame : public AppKitHost {
protected:
    EditorFrame() : editor(*synth.uiEditor) {}

    VstIntPtr call(VstInt32 opcode, void* ptr = nullptr) {
        AEffect* const effect = synth.getAeffect();
        return effect->dispatcher(effect, opcode, 0, 0, ptr, 0.0f);
    }
    void expectSize(int bottom, int right) {
        ERect* rect = nullptr;
        EXPECT_EQ(call(effEditGetRect, &rect), 1);
        EXPECT_EQ(rect->top, 0);
        EXPECT_EQ(rect->left, 0);
        EXPECT_EQ(rect->bottom, bottom);
        EXPECT_EQ(rect->right, right);
    }

    RecordingSynth synth;
    tveditor13& editor;
};

class EditorOfView : public EditorFrame {
protected:
    EditorOfView() {
        window = [[SizedWindow alloc] initWithContentRect:NSMakeRect(200, 100, 600, 500)
                                                styleMask:NSBorderlessWindowMask
                                                  backing:NSBackingStoreBuffered
                                                    defer:NO];
        [window orderFrontRegardless];
        hostView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 600, 478)];
    }
    ~EditorOfView() override {
        call(effEditClose);
        [window orderOut:nil];
    }

    SizedWindow* window;
    NSView* hostView;
};

TEST_F(EditorOfView, IsAddedToTheHostsView) {
    [window setContentView:hostView];
    EXPECT_EQ(call(effEditOpen, hostView), 1);
    EXPECT_TRUE(editor.editorOpen);
    EXPECT_FALSE(editor.isOpen());
    EXPECT_EQ(editor.embedView, hostView);
    EXPECT_EQ(editor.detachedWindow, nil);
    EXPECT_EQ([editor.uiView superview], hostView);
    EXPECT_TRUE(NSEqualRects([editor.uiView frame], NSMakeRect(0, 0, 344, 400)));
    EXPECT_EQ([editor.uiView getEffect], &synth);
    expectSize(400, 344);
}

TEST_F(EditorOfView, ResizesTheHostsWindowToItselfAndWhatLiesAbove) {
    [window setContentView:hostView];
    [hostView setFrame:NSMakeRect(0, 0, 600, 478)];
    ASSERT_EQ([window frame].size.height, 500.0);
    ASSERT_EQ([[window contentView] frame].size.height, 478.0);
    call(effEditOpen, hostView);
    ASSERT_EQ(window->frames.size(), 1u);
    EXPECT_TRUE(NSEqualRects(window->frames[0], NSMakeRect(200, 100, 344, 422)));
    EXPECT_TRUE(window->displays);
    EXPECT_TRUE(window->animates);
}

TEST_F(EditorOfView, WindowWithoutContentKeepsItsWholeHeightAbove) {
    [[window contentView] addSubview:hostView];
    window->withoutContent = true;
    call(effEditOpen, hostView);
    window->withoutContent = false;
    ASSERT_EQ(window->frames.size(), 1u);
    EXPECT_EQ(window->frames[0].size.height, 900.0);
}

TEST_F(EditorOfView, ViewOutsideAnyWindowGetsItToo) {
    EXPECT_EQ(call(effEditOpen, hostView), 1);
    EXPECT_EQ([editor.uiView superview], hostView);
    EXPECT_TRUE(editor.editorOpen);
    expectSize(100, 100);
}

TEST_F(EditorOfView, TitledWindowTakesItsTitleBarIntoAccount) {
    NSWindow* const titled =
        [[NSWindow alloc] initWithContentRect:NSMakeRect(300, 100, 500, 300)
                                    styleMask:NSTitledWindowMask | NSClosableWindowMask
                                      backing:NSBackingStoreBuffered
                                        defer:NO];
    [titled orderFrontRegardless];
    const NSPoint origin = [titled frame].origin;
    const CGFloat titleBar = [titled frame].size.height - [[titled contentView] frame].size.height;
    EXPECT_GT(titleBar, 0.0);
    call(effEditOpen, [titled contentView]);
    // The change is animated.
    const NSRect expected = NSMakeRect(origin.x, origin.y, 344.0, 400.0 + titleBar);
    EXPECT_TRUE(
        idleUntil([] { runEvents(); }, [&] { return NSEqualRects([titled frame], expected); }))
        << [NSStringFromRect([titled frame]) UTF8String];
    call(effEditClose);
    [titled orderOut:nil];
}

TEST_F(EditorOfView, IsPaintedAndFollowsTheHost) {
    [window setContentView:hostView];
    call(effEditOpen, hostView);
    const NSRect frame = [window frame];
    const int left = static_cast<int>(frame.origin.x);
    const int top = XServer::kHeight - static_cast<int>(frame.origin.y) - 400;
    const auto idle = [&] {
        runEvents();
        call(effEditIdle);
    };
    FaceControls shown = kSlapBack;
    EXPECT_TRUE(idleUntil(idle, [&] { return showsFace(screenAt(left, top), shown); }));
    synth.getAeffect()->setParameter(synth.getAeffect(), 1, 0.755f);
    shown[1] = 95;
    EXPECT_TRUE(idleUntil(idle, [&] { return showsFace(screenAt(left, top), shown); }));
    std::thread([&] { synth.getAeffect()->setParameter(synth.getAeffect(), 8, 0.5f); }).join();
    shown[8] = 63;
    EXPECT_TRUE(idleUntil(idle, [&] { return showsFace(screenAt(left, top), shown); }));
}

TEST_F(EditorOfView, HostMayReleaseItsWindowBeforeClosing) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    [hostView removeFromSuperview];
    [window setContentView:hostView];
    call(effEditOpen, hostView);
    runEvents();
    call(effEditIdle);
    [hostView release];
    [window close]; // which releases it
    [pool release];
    window = nil;
    EXPECT_EQ([editor.uiView superview], nil);
    EXPECT_EQ([editor.uiView window], nil);
    synth.getAeffect()->setParameter(synth.getAeffect(), 1, 0.5f);
    runEvents();
    call(effEditIdle);
    EXPECT_EQ(call(effEditClose), 0);
    call(effEditIdle);
}

TEST_F(EditorOfView, StaysInPlaceWhenItIsClosed) {
    [window setContentView:hostView];
    call(effEditOpen, hostView);
    TarnsUiView13* const view = editor.uiView;
    EXPECT_EQ(call(effEditClose), 0);
    EXPECT_FALSE(editor.editorOpen);
    EXPECT_EQ(editor.uiView, view);
    EXPECT_EQ([view superview], hostView);
}

TEST_F(EditorOfView, SecondOpenBuildsASecondView) {
    [window setContentView:hostView];
    call(effEditOpen, hostView);
    TarnsUiView13* const first = editor.uiView;
    call(effEditOpen, hostView);
    EXPECT_NE(editor.uiView, first);
    EXPECT_EQ([first superview], hostView);
    EXPECT_EQ([editor.uiView superview], hostView);
    EXPECT_EQ([[hostView subviews] count], 2u);
}

TEST_F(EditorOfView, ViewIsTheEditorsWhenItIsComplete) {
    WatchedSynth watched;
    watched.uiEditor->open(nullptr);
    TarnsUiView13* const first = watched.uiEditor->uiView;
    EXPECT_EQ(watched.views, std::vector<TarnsUiView13*>(7, nil));
    watched.views.clear();
    watched.uiEditor->open(nullptr);
    EXPECT_NE(watched.uiEditor->uiView, first);
    EXPECT_EQ(watched.views, std::vector<TarnsUiView13*>(7, first));
}

TEST_F(EditorOfView, NoViewShowsNothingAndIsOpen) {
    EXPECT_EQ(call(effEditOpen, nullptr), 1);
    EXPECT_TRUE(editor.editorOpen);
    EXPECT_NE(editor.uiView, nil);
    EXPECT_EQ([editor.uiView superview], nil);
    EXPECT_EQ(editor.detachedWindow, nil);
    expectSize(100, 100);
}

TEST_F(EditorOfView, TakesTheMouseFromTheHostsOwnLoop) {
    [window setContentView:hostView];
    call(effEditOpen, hostView);
    synth.writes.clear();
    const NSRect frame = [window frame];
    const Mouse mouse(static_cast<int>(frame.origin.x),
                      XServer::kHeight - static_cast<int>(frame.origin.y));
    mouse.moveTo(178, 226);
    runEvents();
    mouse.press();
    EXPECT_TRUE(
        idleUntil([&] { runEvents(); }, [&] { return [window isKeyWindow] || [NSApp isActive]; }));
    mouse.moveTo(178, 226 + 54);
    EXPECT_TRUE(idleUntil([&] { runEvents(); }, [&] { return synth.writes.size() >= 9; }));
    mouse.release();
    runEvents();
    EXPECT_EQ(synth.getParameter(1), 71 * 0.01f);
}

TEST_F(EditorOfView, FollowsTheEffectWhileItIsOpen) {
    [window setContentView:hostView];
    synth.getAeffect()->setParameter(synth.getAeffect(), 1, 0.3f);
    call(effEditOpen, hostView);
    [editor.uiView setNeedsDisplay:NO];
    synth.getAeffect()->setParameter(synth.getAeffect(), 1, 0.5f);
    EXPECT_TRUE([editor.uiView needsDisplay]);
    call(effEditClose);
    [editor.uiView setNeedsDisplay:NO];
    synth.getAeffect()->setParameter(synth.getAeffect(), 1, 0.6f);
    EXPECT_FALSE([editor.uiView needsDisplay]);
    editor.setParameter(1, 0.7f); // told directly, it follows all the same
    EXPECT_TRUE([editor.uiView needsDisplay]);
}

TEST_F(EditorOfView, BeforeTheFirstOpenItTakesParametersWithoutAView) {
    EXPECT_EQ(editor.uiView, nil);
    editor.setParameter(1, 0.5f);
    EXPECT_EQ(editor.uiView, nil);
}

class FloatingEditor : public EditorFrame {
protected:
    FloatingEditor() {
        const Method inherited =
            class_getInstanceMethod([NSWindow class], @selector(initWithWindowRef:));
        const Method standIn =
            class_getInstanceMethod([NSWindow class], @selector(standInWithWindowRef:));
        // After the platform's own replacement, which is made at the first open.
        call(effEditOpen, nullptr);
        call(effEditClose);
        if (inheritedWindowInit == nullptr) {
            inheritedWindowInit =
                method_setImplementation(inherited, method_getImplementation(standIn));
        }
        answersReferences = true;
        wrapperMessages.clear();
    }
    ~FloatingEditor() override {
        call(effEditClose);
        answersReferences = false;
    }
};

TEST_F(FloatingEditor, ComesInAWindowOfItsOwn) {
    EXPECT_EQ(call(effEditOpen, &token), 1);
    ASSERT_GE(wrapperMessages.size(), 2u);
    EXPECT_EQ(wrapperMessages[0], "orderOut");
    EXPECT_EQ(wrapperMessages[1], "close");
    EXPECT_TRUE(editor.editorOpen);
    EXPECT_EQ(editor.embedView, &token);
    tarnsCustomWindow10* const window = editor.detachedWindow;
    ASSERT_TRUE([window isMemberOfClass:[tarnsCustomWindow10 class]]);
    EXPECT_EQ([window editor], &editor);
    EXPECT_EQ([window winPointerRef], &token);
    EXPECT_EQ([window styleMask], 7u);
    EXPECT_EQ([window level], NSFloatingWindowLevel);
    EXPECT_TRUE([[window backgroundColor] isEqual:[NSColor blackColor]]);
    EXPECT_FALSE([window isOpaque]);
    EXPECT_TRUE([window isAutodisplay]);
    EXPECT_EQ([window contentView], editor.uiView);
    EXPECT_TRUE([window isVisible]);
    EXPECT_EQ([window screen], [[NSScreen screens] objectAtIndex:0]);
    const NSRect content = [window contentRectForFrameRect:[window frame]];
    EXPECT_TRUE(NSEqualRects(content, NSMakeRect(320, 93, 344, 400)));
    expectSize(100, 100);
}

TEST_F(FloatingEditor, IsMadeDeferredOnTheFirstScreen) {
    const WindowRequests requests;
    call(effEditOpen, &token);
    ASSERT_EQ(requests.made().size(), 1u);
    const WindowRequest& request = requests.made()[0];
    EXPECT_TRUE(NSEqualRects(request.content, NSMakeRect(320, 93, 344, 400)));
    EXPECT_EQ(request.styleMask, 7u);
    EXPECT_EQ(static_cast<int>(request.backing), 2);
    EXPECT_TRUE(request.deferred);
    EXPECT_EQ(request.screen, [[NSScreen screens] objectAtIndex:0]);
}

TEST_F(FloatingEditor, WindowIsFurnishedAndThenShown) {
    const std::vector<const char*> order{
        "setEditor:",           "setWinPoinerRef:", "setLevel:", "setBackgroundColor:",
        "setOpaque:",           "setContentView:",  "display",   "setAutodisplay:",
        "makeKeyAndOrderFront:"};
    const WindowMessages messages(order);
    call(effEditOpen, &token);
    EXPECT_TRUE(containsInOrder(messages.since("setEditor:"), order))
        << testing::PrintToString(messages.since("setEditor:"));
}

TEST_F(FloatingEditor, WindowIsKnownWhenItIsShown) {
    const WindowMessages messages({"makeKeyAndOrderFront:"});
    tarnsCustomWindow10* knownWhenShown = nil;
    atEachMessage = [&] { knownWhenShown = editor.detachedWindow; };
    call(effEditOpen, &token);
    atEachMessage = nullptr;
    EXPECT_NE(knownWhenShown, nil);
    EXPECT_EQ(knownWhenShown, editor.detachedWindow);
}

TEST_F(FloatingEditor, GoesBelowTheCornerWhereThereIsNoMainScreen) {
    const WindowRequests requests;
    const Method mainScreen = class_getClassMethod([NSScreen class], @selector(mainScreen));
    inheritedMainScreen =
        method_setImplementation(mainScreen, reinterpret_cast<IMP>(mainScreenUnlessMissing));
    mainScreenMissesAfterWrapper = true;
    call(effEditOpen, &token);
    mainScreenMissesAfterWrapper = false;
    method_setImplementation(mainScreen, inheritedMainScreen);
    ASSERT_EQ(requests.made().size(), 1u);
    EXPECT_TRUE(NSEqualRects(requests.made()[0].content, NSMakeRect(-320, -307, 344, 400)));
    EXPECT_EQ(requests.made()[0].screen, [[NSScreen screens] objectAtIndex:0]);
}

TEST_F(FloatingEditor, IsClosedByTheHostAndNotReleased) {
    call(effEditOpen, &token);
    tarnsCustomWindow10* const window = editor.detachedWindow;
    const NSUInteger owners = [window retainCount];
    call(effEditClose);
    EXPECT_FALSE(editor.editorOpen);
    EXPECT_EQ(editor.detachedWindow, window);
    EXPECT_EQ([window retainCount], owners);
    EXPECT_FALSE([window isVisible]);
}

TEST_F(FloatingEditor, ClosedByTheUserHearsNothingMoreFromTheHost) {
    call(effEditOpen, &token);
    tarnsCustomWindow10* const window = editor.detachedWindow;
    [window performClose:nil];
    EXPECT_FALSE(editor.editorOpen);
    EXPECT_FALSE([window isVisible]);
    closedWindows = 0;
    const Method close = class_getInstanceMethod([tarnsCustomWindow10 class], @selector(close));
    const IMP own =
        method_setImplementation(close, reinterpret_cast<IMP>(+[](id, SEL) { ++closedWindows; }));
    call(effEditClose);
    EXPECT_EQ(closedWindows, 0);
    editor.editorOpen = true;
    call(effEditClose);
    EXPECT_EQ(closedWindows, 1);
    method_setImplementation(close, own);
}

TEST_F(FloatingEditor, IsMarkedClosedBeforeItsWindowCloses) {
    call(effEditOpen, &token);
    WindowWatcher* const watcher = [[[WindowWatcher alloc] init] autorelease];
    watcher->editor = &editor;
    [[NSNotificationCenter defaultCenter] addObserver:watcher
                                             selector:@selector(noteClose:)
                                                 name:NSWindowWillCloseNotification
                                               object:editor.detachedWindow];
    call(effEditClose);
    [[NSNotificationCenter defaultCenter] removeObserver:watcher];
    EXPECT_EQ(watcher->openAtClose, std::vector<bool>{false});
}

TEST_F(FloatingEditor, ClosesAtAClickOnItsCloseButton) {
    call(effEditOpen, &token);
    tarnsCustomWindow10* const window = editor.detachedWindow;
    runEvents();
    NSButton* const button = [window standardWindowButton:NSWindowCloseButton];
    const NSRect frame = [button convertRect:[button bounds] toView:nil];
    const NSPoint centre = [window convertBaseToScreen:NSMakePoint(NSMidX(frame), NSMidY(frame))];
    const Mouse mouse(0, XServer::kHeight);
    mouse.moveTo(static_cast<int>(centre.x), static_cast<int>(centre.y));
    runEvents();
    // The button follows the press in a loop of its own, which the release has to find.
    std::thread hand([&] { xdotool({"mousedown", "1", "sleep", "0.3", "mouseup", "1"}); });
    EXPECT_TRUE(idleUntil([] { runEvents(); }, [&] { return !editor.editorOpen; }));
    hand.join();
    EXPECT_FALSE([window isVisible]);
}

TEST_F(FloatingEditor, EachOpenMakesANewWindow) {
    call(effEditOpen, &token);
    tarnsCustomWindow10* const first = editor.detachedWindow;
    call(effEditClose);
    call(effEditOpen, &token);
    EXPECT_NE(editor.detachedWindow, first);
    EXPECT_TRUE([editor.detachedWindow isVisible]);
}

TEST_F(FloatingEditor, ViewAfterAWindowForgetsTheWindow) {
    call(effEditOpen, &token);
    call(effEditClose);
    NSView* const hostView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 10, 10)];
    call(effEditOpen, hostView);
    EXPECT_EQ(editor.detachedWindow, nil);
    EXPECT_EQ([editor.uiView superview], hostView);
}

TEST_F(FloatingEditor, SplashesGoToTheContentViewThatKnowsThem) {
    call(effEditOpen, &token);
    static std::vector<int> numbers;
    numbers.clear();
    const auto record =
        reinterpret_cast<IMP>(+[](id, SEL selector, int number) { numbers.push_back(number); });
    class_addMethod([TarnsUiView13 class], sel_registerName("addSplash:"), record, "v@:i");
    class_addMethod([TarnsUiView13 class], sel_registerName("removeSplash:"), record, "v@:i");
    editor.showSplash({41});
    editor.hideSplash({42});
    EXPECT_EQ(numbers, (std::vector<int>{41, 42}));
}
