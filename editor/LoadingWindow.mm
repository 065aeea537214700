#include "editor/LoadingWindow.h"

#include "editor/BundleIdentifier.h"
#include "editor/LoadingCount.h"
#import "editor/hosting/EditorHosting.h"
#import "editor/lWindowView9.h"

#import <AppKit/AppKit.h>

#include <CoreGraphics/CoreGraphics.h>

namespace {

// The time in which windows of AppKit's are used. False where none can be.
class WindowUse {
public:
    WindowUse() : begun_(prepareEditorViews()) {}
    ~WindowUse() {
        if (begun_) {
            finishEditorViews();
        }
    }
    WindowUse(const WindowUse&) = delete;
    WindowUse& operator=(const WindowUse&) = delete;

    explicit operator bool() const { return begun_; }

private:
    const bool begun_;
};

NSScreen* firstScreen() {
    NSArray* const screens = [NSScreen screens];
    return [screens count] != 0 ? [screens objectAtIndex:0] : nil;
}

void runEventLoopOnceFor(NSWindow* window) {
    const NSModalSession session = [NSApp beginModalSessionForWindow:window];
    [NSApp runModalSession:session];
    [NSApp endModalSession:session];
}

} // namespace

void LoadingWindow::open() {
    window = nil;
    backgroundImage = nil;
    const WindowUse use;
    if (!use) {
        return;
    }
    @autoreleasepool {
        constexpr NSUInteger kBorderless = 0;
        NSScreen* const mainScreen = [NSScreen mainScreen];
        const NSSize screen = mainScreen != nil ? [mainScreen frame].size : NSZeroSize;
        NSBundle* const bundle =
            [NSBundle bundleWithIdentifier:[NSString stringWithUTF8String:kBundleIdentifier]];
        NSImage* const image = [[NSImage alloc]
            initByReferencingFile:[bundle pathForResource:@"loadback" ofType:@"png"]];
        const WindowOrigin origin = loadingOrigin(screen.width, screen.height);
        NSWindow* const opened = [[NSWindow alloc]
            initWithContentRect:NSMakeRect(origin.x, origin.y, kLoadingWindowWidth,
                                           kLoadingWindowHeight)
                      styleMask:kBorderless
                        backing:NSBackingStoreBuffered
                          defer:YES
                         screen:firstScreen()];
        backgroundImage = image;
        [opened setLevel:CGShieldingWindowLevel()];
        [opened setBackgroundColor:[NSColor clearColor]];
        [opened setOpaque:NO];
        lWindowView9* const view = [[lWindowView9 alloc]
            initWithImage:image
                 andFrame:NSMakeRect(0, 0, kLoadingWindowWidth, kLoadingWindowHeight)];
        [opened setContentView:view];
        [view release];
        [opened display];
        [opened setAutodisplay:YES];
        window = opened;
        [window makeKeyAndOrderFront:nil];
        runEventLoopOnceFor(window);
    }
}

void LoadingWindow::advance() {
    const WindowUse use;
    if (!use || window == nil) {
        return;
    }
    @autoreleasepool {
        lWindowView9* const view = [window contentView];
        [view setcurrentSamples:advancedCount([view currentSamples])];
        [view setNeedsDisplay:YES];
        [window display];
        runEventLoopOnceFor(window);
    }
}

void LoadingWindow::close() {
    const WindowUse use;
    if (!use || window == nil) {
        return;
    }
    @autoreleasepool {
        [window setReleasedWhenClosed:NO];
        [window close];
    }
}
