#import "editor/TarnsCustomGroupButton13.h"

@implementation TarnsCustomGroupButton13

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

- (void)mouseDown:(NSEvent*)event {
    [_delegate updateGroupButtons:_buttonType];
    [self setNeedsDisplay:YES];
}

- (void)mouseUp:(NSEvent*)event {
}

- (void)drawRect:(NSRect)dirtyRect {
    NSImage* const image = _imageState != 0 ? state2Image : state1Image;
    [image drawInRect:NSMakeRect(0, 0, dirtyRect.size.width, dirtyRect.size.height)
             fromRect:NSZeroRect
            operation:NSCompositeSourceOver
             fraction:1.0];
}

@end
