#include "mac-check/EditorRun.h"

#include "mac-check/DrawnRectangles.h"
#include "plugin/vst2/EffectOpcodes.h"

#import <AppKit/AppKit.h>

// Declared by newer systems' headers alone.
@protocol ClippingView
- (void)setClipsToBounds:(BOOL)clips;
@end

namespace {

constexpr VstInt32 kFeedBack = 1;
constexpr CGFloat kFeedBackX = 178; // in the middle of its knob
constexpr CGFloat kFeedBackY = 212;

// A program without a bundle of its own may show windows only when it says so.
void showAsProgram() {
    [NSApplication sharedApplication];
    [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
    [NSApp finishLaunching];
    [NSApp activateIgnoringOtherApps:YES];
}

void handleEvents(double seconds) {
    NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    while (NSEvent* const event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                     untilDate:end
                                                        inMode:NSDefaultRunLoopMode
                                                       dequeue:YES]) {
        [NSApp sendEvent:event];
    }
}

void savePicture(NSView* view, const char* name, Report& report) {
    NSBitmapImageRep* const picture = [view bitmapImageRepForCachingDisplayInRect:[view bounds]];
    [view cacheDisplayInRect:[view bounds] toBitmapImageRep:picture];
    NSData* const file = [picture representationUsingType:NSPNGFileType
                                               properties:[NSDictionary dictionary]];
    NSString* const path = [NSString stringWithUTF8String:report.path(name)];
    report.line("Picture %s: %s", name,
                [file writeToFile:path atomically:NO] ? "saved" : "NOT SAVED");
}

NSEvent* mouse(NSEventType type, NSView* view, CGFloat y) {
    return [NSEvent mouseEventWithType:type
                              location:[view convertPoint:NSMakePoint(kFeedBackX, y) toView:nil]
                         modifierFlags:0
                             timestamp:0
                          windowNumber:[[view window] windowNumber]
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:1.0f];
}

// A click, then a drag by thirty points, which is eleven steps.
void dragFeedBack(AEffect* effect, NSView* content, Report& report) {
    const float before = effect->getParameter(effect, kFeedBack);
    NSView* const knob = [content hitTest:NSMakePoint(kFeedBackX, kFeedBackY)];
    report.line("Under the mouse: %s", knob == nil ? "nothing" : object_getClassName(knob));
    [knob mouseDown:mouse(NSLeftMouseDown, content, kFeedBackY)];
    [knob mouseUp:mouse(NSLeftMouseUp, content, kFeedBackY)];
    [knob mouseDown:mouse(NSLeftMouseDown, content, kFeedBackY)];
    [knob mouseDragged:mouse(NSLeftMouseDragged, content, kFeedBackY + 30)];
    [knob mouseUp:mouse(NSLeftMouseUp, content, kFeedBackY + 30)];
    report.line("Drag of FeedBack: from %.9g to %.9g", static_cast<double>(before),
                static_cast<double>(effect->getParameter(effect, kFeedBack)));
}

void unclip(NSView* view) {
    if ([view respondsToSelector:@selector(setClipsToBounds:)]) {
        [static_cast<NSView<ClippingView>*>(view) setClipsToBounds:NO];
    }
    NSArray* const subviews = [view subviews];
    for (NSUInteger i = 0; i < [subviews count]; ++i) {
        unclip([subviews objectAtIndex:i]);
    }
}

void reportShown(NSWindow* window, AEffect* effect, Report& report) {
    NSView* const content = [window contentView];
    const NSRect frame = [window frame];
    report.line("Views in the host's view: %lu",
                static_cast<unsigned long>([[content subviews] count]));
    report.line("Window: %g x %g", frame.size.width, frame.size.height);
    ERect* rect = nullptr;
    effect->dispatcher(effect, effEditGetRect, 0, 0, &rect, 0.0f);
    report.line("Told size: %d x %d", rect->right - rect->left, rect->bottom - rect->top);
}

} // namespace

void reportEditor(AEffect* effect, Report& report) {
    report.heading("Editor");
    showAsProgram();
    noteDrawnRectangles();
    NSWindow* const window = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 344, 400)
                                                         styleMask:1 // titled
                                                           backing:NSBackingStoreBuffered
                                                             defer:NO
                                                            screen:[NSScreen mainScreen]];
    [window setReleasedWhenClosed:NO];
    [window makeKeyAndOrderFront:nil];
    NSView* const content = [window contentView];
    report.line("Opened: %ld",
                static_cast<long>(effect->dispatcher(effect, effEditOpen, 0, 0, content, 0.0f)));
    reportShown(window, effect, report);
    handleEvents(1.0);
    reportDrawnRectangles(report);
    savePicture(content, "editor.png", report);
    reportDrawnRectangles(report);
    dragFeedBack(effect, content, report);
    handleEvents(0.5);
    savePicture(content, "editor-dragged.png", report);
    reportDrawnRectangles(report);

    report.line("With clipsToBounds NO:");
    unclip(content);
    [content setNeedsDisplay:YES];
    handleEvents(0.5);
    savePicture(content, "editor-unclipped.png", report);
    reportDrawnRectangles(report);
    effect->dispatcher(effect, effEditClose, 0, 0, nullptr, 0.0f);
    [window close];
    report.line("Closed");
}
