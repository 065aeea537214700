// The part of a knob that takes the mouse and holds the value: transparent and as large as the
// knob.
#pragma once

#import "editor/FlatKnobProtocol.h"

#import <AppKit/AppKit.h>

// A vertical drag turns it, one degree a point. The event loop's thread, but for setIntValue:,
// which any thread that sets a parameter may send. On Linux
// editor/hosting/linux/EditorViewPatches.mm changes some of it.
@interface ControlPoint13 : NSView {
    float _currentDraggedAngle; // degrees, the one shown
    int32_t _currentAngle;      // degrees, where the next drag starts; follows at mouse up alone
    int32_t _mouseDownPosition; // points, y
    int32_t _previousValue;     // the last step that a drag reported
    int32_t _value;             // step
    int32_t _insets;            // points from the rim
    int32_t _controlPointDiameter;
    NSColor* _controlPointColor; // retained
    NSArray* _data;              // the steps; its length is the knob's scale
    id<FlatKnobProtocol> _delegate;
}

// Position 0 starts at step 0, position 1 at step 50, any other at zeros throughout. The colour is
// always the clear one.
- (id)initWithFrame:(NSRect)frame
                  withInsets:(int32_t)insets
    withControlPointDiameter:(int32_t)diameter
       withControlPointColor:(NSColor*)color
                withPosition:(int32_t)position;

- (int32_t)ReturnValue;
- (int32_t)value;
- (void)setValue:(int32_t)value; // without angle and repaint
// Shows `step`, which is not held to the list, and tells no delegate. Needs `data`.
- (void)setIntValue:(int32_t)step;
- (void)updateWithYcoord:(NSEvent*)event;
// Where a handle of diameter `width` would be painted.
- (NSRect)makeRectWithWidth:(int32_t)width;

// The setters neither retain nor repaint.
@property(nonatomic, assign) float currentDraggedAngle;
@property(nonatomic, assign) int32_t currentAngle;
@property(nonatomic, assign) int32_t mouseDownPosition;
@property(nonatomic, assign) int32_t previousValue;
@property(nonatomic, assign) int32_t insets;
@property(nonatomic, assign) int32_t controlPointDiameter;
@property(nonatomic, assign) NSColor* controlPointColor;
@property(nonatomic, assign) NSArray* data;
@property(nonatomic, assign) id<FlatKnobProtocol> delegate;

@end
