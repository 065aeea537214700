#import "editor/FlatKnob13.h"

#import "editor/ControlPoint13.h"
#include "editor/KnobLaws.h"

#import <QuartzCore/QuartzCore.h>

@implementation FlatKnob13

@synthesize control = _control;
@synthesize controlPoint = _controlPoint;

- (id)initWithFrame:(NSRect)frame
                  withInsets:(int32_t)insets
    withControlPointDiameter:(int32_t)diameter
       withControlPointColor:(NSColor*)controlPointColor
               withKnobColor:(NSColor*)knobColor
         withBackgroundColor:(NSColor*)backgroundColor
              pointerToArray:(NSMutableArray*)images {
    _animationImages = [images retain];
    self = [super initWithFrame:frame];
    if (self == nil) {
        return nil;
    }
    _backgroundColor = [[NSColor clearColor] retain];
    _knobColor = [knobColor retain];
    _insets = insets;

    [self setWantsLayer:YES];
    [[self layer] setBackgroundColor:[_backgroundColor CGColor]];
    [[self layer] setCornerRadius:15.0];

    const NSSize size = [self frame].size;
    [self setControlPoint:[[ControlPoint13 alloc]
                                         initWithFrame:NSMakeRect(0, 0, size.width, size.height)
                                            withInsets:_insets
                              withControlPointDiameter:diameter
                                 withControlPointColor:[NSColor clearColor]
                                          withPosition:1]];
    [self addSubview:_controlPoint];
    return self;
}

- (void)drawRect:(NSRect)dirtyRect {
    const int64_t frame = frameOfStep([_controlPoint ReturnValue]);
    NSImage* const image =
        [_animationImages objectAtIndexedSubscript:static_cast<NSUInteger>(frame)];
    [image drawInRect:NSMakeRect(0, 0, dirtyRect.size.width, dirtyRect.size.height)
             fromRect:NSZeroRect
            operation:NSCompositeCopy
             fraction:1.0];
    // Each painting asks for the next: so the knob follows its value without a timer.
    [self setNeedsDisplay:YES];
    [[self superview] setNeedsDisplay:YES];
}

@end
