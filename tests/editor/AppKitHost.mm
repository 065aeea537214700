#import "tests/editor/AppKitHost.h"

#import "editor/ControlPoint13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/hosting/EditorHosting.h"
#include "tests/support/screen/XServer.h"

AppKitHost::AppKitHost() {
    sharedXServer();
    pool_ = [[NSAutoreleasePool alloc] init];
    if (NSApp == nil) {
        [[NSUserDefaults standardUserDefaults]
            registerDefaults:[NSDictionary
                                 dictionaryWithObjectsAndKeys:@"YES", @"GSSuppressAppIcon", @"NO",
                                                              @"GSBackHandlesWindowDecorations",
                                                              nil]];
        [NSApplication sharedApplication];
    }
    prepareEditorViews();
}

AppKitHost::~AppKitHost() {
    [pool_ release];
}

void AppKitHost::runEvents() {
    while (NSEvent* const event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                     untilDate:[NSDate distantPast]
                                                        inMode:NSDefaultRunLoopMode
                                                       dequeue:YES]) {
        [NSApp sendEvent:event];
    }
}

NSWindow* shownWindow(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    NSWindow* const window = [[NSWindow alloc] initWithContentRect:NSMakeRect(x, y, width, height)
                                                         styleMask:NSBorderlessWindowMask
                                                           backing:NSBackingStoreBuffered
                                                             defer:NO];
    [window orderFrontRegardless];
    return [window autorelease];
}

@implementation RecordingDelegate

- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object {
    messages.push_back(
        {"knobUpdated", index, value, object, [point currentDraggedAngle], [button imageState]});
}

- (void)updateCenterOffsetAmountAndDisplay:(int32_t)buttonType {
    messages.push_back({"updateCenterOffset", buttonType, nil, nil, 0.0f, [button imageState]});
}

- (void)updateGroupButtons:(int32_t)buttonType {
    messages.push_back({"updateGroupButtons", buttonType, nil, nil, 0.0f, [button imageState]});
}

@end

@implementation RecordingImage

- (void)drawInRect:(NSRect)target
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction {
    drawings.push_back({target, source, operation, fraction});
}

@end

@implementation RecordingView

- (void)drawRect:(NSRect)rect {
    drawings.push_back(rect);
}

- (void)setNeedsDisplay:(BOOL)needed {
    repaintRequests += needed ? 1 : 0;
    [super setNeedsDisplay:needed];
}

- (void)mouseDown:(NSEvent*)event {
    ++mouseEvents;
}

- (void)mouseDragged:(NSEvent*)event {
    ++mouseEvents;
}

- (void)mouseUp:(NSEvent*)event {
    ++mouseEvents;
}

@end
