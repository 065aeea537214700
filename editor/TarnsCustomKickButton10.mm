#import "editor/TarnsCustomKickButton10.h"

#include "editor/hosting/EditorHosting.h"

@implementation TarnsCustomKickButton10

- (id)initWithFrameAndImages:(NSRect)frame
                    imageOne:(NSImage*)imageOne
                    imageTwo:(NSImage*)imageTwo
               andButtonType:(int32_t)buttonType {
    self = [super initWithFrameAndImages:frame imageOne:imageOne imageTwo:imageTwo];
    _buttonType = buttonType;
    keepDrawingWithinBounds(self);
    return self;
}

- (void)setNewDelegate:(id)delegate {
    _delegate = delegate;
}

- (void)mouseDown:(NSEvent*)event {
    [super mouseDown:event];
    _imageState = 1;
    [_delegate updateCenterOffsetAmountAndDisplay:_buttonType];
    [self setNeedsDisplay:YES];
}

- (void)mouseUp:(NSEvent*)event {
    // The toggle's press once more: the delegate hears of the release as well.
    [super mouseDown:event];
    _imageState = 0;
    [self setNeedsDisplay:YES];
}

@end
