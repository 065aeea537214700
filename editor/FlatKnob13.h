// The visible part of a knob: one frame of a filmstrip, by the step of its control point.
#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

@class ControlPoint13;

// On Linux editor/hosting/linux/EditorViewPatches.mm changes some of it.
@interface FlatKnob13 : NSView {
    int32_t _insets;
    NSColor* _backgroundColor; // retained
    NSColor* _knobColor;       // retained
    NSImage* _BackgroundImage;
    NSMutableArray* _animationImages; // retained, shared by all knobs of an editor
    int32_t _control;
    ControlPoint13* _controlPoint;
}

// `images` holds 128 frames. The background and the control point are always clear, whatever the
// colours.
- (id)initWithFrame:(NSRect)frame
                  withInsets:(int32_t)insets
    withControlPointDiameter:(int32_t)diameter
       withControlPointColor:(NSColor*)controlPointColor
               withKnobColor:(NSColor*)knobColor
         withBackgroundColor:(NSColor*)backgroundColor
              pointerToArray:(NSMutableArray*)images;

@property(nonatomic, assign) int32_t control;
@property(nonatomic, assign) ControlPoint13* controlPoint;

@end
