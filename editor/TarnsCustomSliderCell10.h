// The cell that draws a slider's track and knob from two pictures.
#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

// The event loop's thread. On Linux editor/hosting/linux/EditorViewPatches.mm changes some of it.
@interface TarnsCustomSliderCell10 : NSSliderCell {
    NSImage* backgroundImage; // retained
    NSImage* knobImage;       // retained
    int32_t _sliderCellWidth;
    int32_t _sliderCellHeight;
}

// With the bundle's own pictures. By either way the track has no extent until it is set.
- (id)init;
- (id)initWithImage:(NSImage*)background knobImage:(NSImage*)knob;

// The track's, in points.
@property(nonatomic, assign) int32_t SliderCellWidth;
@property(nonatomic, assign) int32_t SliderCellHeight;

@end
