#pragma once

#import <AppKit/NSCell.h>

FOUNDATION_EXPORT_CLASS
@interface NSSliderCell : NSActionCell
- (void)drawBarInside:(NSRect)aRect flipped:(BOOL)flipped;
- (void)drawKnob:(NSRect)knobRect;
@end
