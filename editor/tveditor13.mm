#import "editor/tveditor13.h"

#include "editor/EditorGeometry.h"
#import "editor/TarnsUiView13.h"
#include "editor/hosting/EditorHosting.h"
#import "editor/tarnsCustomWindow10.h"
#include "effect/VstXSynth.h"

#include <CoreGraphics/CoreGraphics.h>

@protocol SplashView
- (void)addSplash:(VstInt32)number;
- (void)removeSplash:(VstInt32)number;
@end

tveditor13::~tveditor13() {
    editorClosed(this);
}

bool tveditor13::open(void* ptr) {
    detachedWindow = nil;
    embedView = ptr;
    rect = {0, 0, 100, 100};
    if (prepareEditorViews()) {
        @autoreleasepool {
            TarnsUiView13* const view =
                [[TarnsUiView13 alloc] initWithFrame:NSMakeRect(0, 0, kEditorWidth, kEditorHeight)
                                           andEffect:effectPtr];
            [view awakeFromNib];
            uiView = view; // other threads find it complete
            void* const host = hostObjectFor(ptr);
            NSWindow* const hostWindow = [[NSWindow alloc] initWithWindowRef:host];
            if (hostWindow != nil) {
                [hostWindow orderOut:nil];
                [hostWindow close];
                openFloatingWindow();
            } else if (host != nullptr) {
                openInside(host);
            }
            editorShown(this, uiView);
        }
    }
    editorOpen = true;
    return true;
}

void tveditor13::openFloatingWindow() {
    constexpr NSUInteger kTitledClosableMiniaturizable = 7;
    NSScreen* const mainScreen = [NSScreen mainScreen];
    const NSSize screen = mainScreen != nil ? [mainScreen frame].size : NSZeroSize;
    const WindowOrigin origin = floatingOrigin(screen.width, screen.height);
    tarnsCustomWindow10* const window = [[tarnsCustomWindow10 alloc]
        initWithContentRect:NSMakeRect(origin.x, origin.y, kEditorWidth, kEditorHeight)
                  styleMask:kTitledClosableMiniaturizable
                    backing:NSBackingStoreBuffered
                      defer:YES
                     screen:[[NSScreen screens] objectAtIndex:0]];
    [window setReleasedWhenClosed:NO]; // `detachedWindow` keeps its value
    [window setEditor:this];
    [window setWinPoinerRef:embedView];
    [window setLevel:CGWindowLevelForKey(kCGFloatingWindowLevelKey)];
    [window setBackgroundColor:[NSColor blackColor]];
    [window setOpaque:NO];
    [window setContentView:uiView];
    [window display];
    [window setAutodisplay:YES];
    detachedWindow = window;
    [window makeKeyAndOrderFront:nil];
}

void tveditor13::openInside(void* host) {
    auto* const hostView = static_cast<NSView*>(host);
    NSWindow* const window = [hostView window];
    if (window != nil) {
        const NSRect frame = [window frame];
        NSView* const content = [window contentView];
        const CGFloat contentHeight = content != nil ? [content frame].size.height : 0.0;
        const CGFloat height = hostWindowHeight(frame.size.height, contentHeight);
        rect = {0, 0, kEditorHeight, kEditorWidth};
        [window setFrame:NSMakeRect(frame.origin.x, frame.origin.y, kEditorWidth, height)
                 display:YES
                 animate:YES];
    }
    [hostView addSubview:uiView];
}

void tveditor13::close() {
    // An editor that was never opened sends no message: the first one of a process changes it.
    if (editorOpen && detachedWindow != nil) {
        @autoreleasepool {
            [detachedWindow close];
        }
    }
    editorOpen = false;
    editorClosed(this);
}

void tveditor13::setParameter(VstInt32 index, float value) {
    if (uiView != nil) {
        [uiView updateView:index andValue:value];
    }
}

void tveditor13::showSplash(const SplashRecord& splash) {
    [static_cast<NSView<SplashView>*>([detachedWindow contentView]) addSplash:splash.number];
}

void tveditor13::hideSplash(const SplashRecord& splash) {
    [static_cast<NSView<SplashView>*>([detachedWindow contentView]) removeSplash:splash.number];
}
