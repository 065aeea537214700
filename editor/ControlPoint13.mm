#import "editor/ControlPoint13.h"

#include "editor/KnobLaws.h"
#include "plugin/Truncation.h"

@implementation ControlPoint13

@synthesize currentDraggedAngle = _currentDraggedAngle;
@synthesize currentAngle = _currentAngle;
@synthesize mouseDownPosition = _mouseDownPosition;
@synthesize previousValue = _previousValue;
@synthesize insets = _insets;
@synthesize controlPointDiameter = _controlPointDiameter;
@synthesize controlPointColor = _controlPointColor;
@synthesize data = _data;
@synthesize delegate = _delegate;

- (id)initWithFrame:(NSRect)frame
                  withInsets:(int32_t)insets
    withControlPointDiameter:(int32_t)diameter
       withControlPointColor:(NSColor*)color
                withPosition:(int32_t)position {
    self = [super initWithFrame:frame];
    if (self == nil) {
        return nil;
    }
    _insets = insets;
    _controlPointDiameter = diameter;
    _controlPointColor = [[NSColor clearColor] retain];
    if (position == 0) {
        _currentAngle = 225;
        _currentDraggedAngle = 225.0f;
    } else if (position == 1) {
        // Not the angle of step 50: the first drag starts three degrees on.
        _currentAngle = 85;
        _currentDraggedAngle = 85.0f;
        _previousValue = 50;
        _value = 50;
    }
    return self;
}

- (int32_t)ReturnValue {
    return _value;
}

- (int32_t)value {
    return _value;
}

- (void)setValue:(int32_t)value {
    _value = value;
}

- (void)setIntValue:(int32_t)step {
    _value = step;
    _currentDraggedAngle = angleOfStep(step, [_data count]);
    [self setNeedsDisplay:YES];
}

- (int32_t)heightOfEvent:(NSEvent*)event {
    return truncateToInt32([self convertPoint:[event locationInWindow] fromView:nil].y);
}

- (void)mouseDown:(NSEvent*)event {
    _mouseDownPosition = [self heightOfEvent:event];
}

- (void)mouseDragged:(NSEvent*)event {
    [self updateWithYcoord:event];
}

- (void)mouseUp:(NSEvent*)event {
    _currentAngle = truncateToInt32(_currentDraggedAngle);
}

- (void)updateWithYcoord:(NSEvent*)event {
    const int32_t y = [self heightOfEvent:event];
    _currentDraggedAngle = draggedAngle(_currentAngle, _mouseDownPosition, y);
    _value = stepAtAngle(_currentDraggedAngle, [_data count]);
    if (_value == _previousValue) {
        return;
    }
    _previousValue = _value;
    [_delegate knobUpdatedWithIndex:_value
                          withValue:[_data objectAtIndex:static_cast<NSUInteger>(_value)]
                         withObject:[self superview]];
    _currentDraggedAngle = angleOfStep(_value, [_data count]);
    [self setNeedsDisplay:YES];
}

- (NSRect)makeRectWithWidth:(int32_t)width {
    const NSSize size = [self bounds].size;
    const HandleSquare handle =
        handleAtAngle(_currentDraggedAngle, width, _insets, size.width, size.height);
    return NSMakeRect(handle.x, handle.y, handle.side, handle.side);
}

- (void)drawRect:(NSRect)dirtyRect {
    [[self superview] drawRect:dirtyRect];
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

- (BOOL)mouseDownCanMoveWindow {
    return NO;
}

@end
