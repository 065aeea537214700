// The router: builds the controls, sends all their values to the effect when one of them moves, and
// shows the effect's values on them.
#pragma once

#import "editor/FlatKnobProtocol.h"

#import <AppKit/AppKit.h>

@class FlatKnob13;
@class TarnsCustomImageView13;
@class TarnsUiView13;

// Nothing that it makes is ever released. updateControllers:andValue: comes on whatever thread set
// the parameter, all else on the event loop's.
@interface KnobDelegate13 : NSObject <NSApplicationDelegate, FlatKnobProtocol> {
    TarnsUiView13* MainView; // retained
    FlatKnob13* timeKnob;    // the knobs are retained
    FlatKnob13* mixKnob;
    FlatKnob13* feedBackKnob;
    FlatKnob13* lowPassKnob;
    FlatKnob13* highPassKnob;
    FlatKnob13* panWidthKnob;
    FlatKnob13* panKnob;
    TarnsCustomImageView13* lowPassSwitch;
    TarnsCustomImageView13* highPassSwitch;
    NSImage* sliderBackground;
    NSImage* sliderKnob;
}

- (id)initWithView:(TarnsUiView13*)view;
- (void)createSubView;
- (void)createKnobs;
- (void)createSwitches;

// Shows a parameter on its control, without telling the effect. Unknown indices show nothing.
- (void)updateControllers:(int32_t)index andValue:(float)value;

// The numbers from `from` up to, not including, `to`. The list is the caller's.
- (NSMutableArray*)generateArrayFrom:(int32_t)from to:(int32_t)to;
// Adds the 128 frames of the knobs.
- (void)fillArray:(NSMutableArray*)array;

- (NSTextField*)createLabelWithFrame:(NSRect)frame; // the caller's
// A leading mark, which is not looked at, and RRGGBB. Black for text that is no number; text
// without a first character raises a range exception.
- (NSColor*)colorFromHexString:(NSString*)text;
- (void)createKnob;
- (void)creatSliders;

@end
