// A host that runs AppKit itself, for tests of views.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#import <AppKit/AppKit.h>

// Starts AppKit on the shared X server before any editor could, and keeps a pool for each test.
class AppKitHost : public testing::Test {
protected:
    AppKitHost();
    ~AppKitHost() override;

    // Lets AppKit handle what waits.
    static void runEvents();

private:
    NSAutoreleasePool* pool_;
};

// A borderless window on the screen, with a lower left corner in points.
NSWindow* shownWindow(CGFloat x, CGFloat y, CGFloat width, CGFloat height);

// What a delegate of controls hears.
struct DelegateMessage {
    const char* selector;
    int index;
    id value;
    id object;
    float angle; // of `point` at that moment
    int state;   // of `button` at that moment
};

@class ControlPoint13;
@class TarnsCustomImageView13;

@interface RecordingDelegate : NSObject {
@public
    std::vector<DelegateMessage> messages;
    ControlPoint13* point;          // may be nil
    TarnsCustomImageView13* button; // may be nil
}
- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object;
- (void)updateCenterOffsetAmountAndDisplay:(int32_t)buttonType;
- (void)updateGroupButtons:(int32_t)buttonType;
@end

// An image that writes down how it is drawn, and draws nothing.
struct ImageDrawing {
    NSRect target;
    NSRect source;
    NSCompositingOperation operation;
    CGFloat fraction;
};

@interface RecordingImage : NSImage {
@public
    std::vector<ImageDrawing> drawings;
}
@end

// A view that counts what it is asked for.
@interface RecordingView : NSView {
@public
    std::vector<NSRect> drawings;
    int repaintRequests;
    int mouseEvents; // that a subview didn't keep to itself
}
@end
