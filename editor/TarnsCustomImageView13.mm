#import "editor/TarnsCustomImageView13.h"

#import "editor/FlatKnobProtocol.h"

#include <objc/runtime.h>

namespace {

// Into the view's own storage, which is there on all systems and declared by the older ones alone.
void storeFrame(NSView* view, NSRect frame) {
    const Ivar storage = class_getInstanceVariable([NSView class], "_frame");
    if (storage != nullptr) {
        *reinterpret_cast<NSRect*>(reinterpret_cast<char*>(view) + ivar_getOffset(storage)) = frame;
    }
}

} // namespace

@implementation TarnsCustomImageView13

@synthesize delegate = _delegate;
@synthesize imageState = _imageState;

- (id)initWithFrameAndImages:(NSRect)frame imageOne:(NSImage*)imageOne imageTwo:(NSImage*)imageTwo {
    storeFrame(self, frame);
    self = [super initWithFrame:frame];
    state1Image = [imageOne retain];
    state2Image = [imageTwo retain];
    _imageState = 0;
    return self;
}

- (void)drawRect:(NSRect)dirtyRect {
    NSImage* const image = _imageState != 0 ? state2Image : state1Image;
    [image drawInRect:NSMakeRect(0, 0, dirtyRect.size.width, dirtyRect.size.height)
             fromRect:NSZeroRect
            operation:NSCompositeSourceOver
             fraction:1.0];
}

- (void)mouseDown:(NSEvent*)event {
    [super mouseDown:event];
    _imageState = _imageState == 0 ? 1 : 0;
    [[self delegate] knobUpdatedWithIndex:0 withValue:nil withObject:nil];
    [self setNeedsDisplay:YES];
}

@end
