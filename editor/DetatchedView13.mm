#import "editor/DetatchedView13.h"

@implementation DetatchedView13

@synthesize Owner = _Owner;

- (id)initWithImage2:(NSImage*)image withRect:(NSRect)rect {
    BackgroundImage = [image retain];
    return [super initWithFrame:rect];
}

- (void)awakeFromNib {
}

- (void)drawRect:(NSRect)dirtyRect {
    [BackgroundImage drawInRect:NSMakeRect(0, 0, dirtyRect.size.width, dirtyRect.size.height)
                       fromRect:NSZeroRect
                      operation:NSCompositeCopy
                       fraction:1.0];
}

@end
