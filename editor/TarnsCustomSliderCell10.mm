#import "editor/TarnsCustomSliderCell10.h"

#import "editor/TarnsCustomSlider13.h"
#import "editor/TarnsUiView13.h"

#include "editor/SliderGeometry.h"

namespace {

NSImage* newImage(NSString* name, Class ofBundle) {
    NSString* const path = [[NSBundle bundleForClass:ofBundle] pathForImageResource:name];
    return [[NSImage alloc] initByReferencingFile:path];
}

} // namespace

@implementation TarnsCustomSliderCell10

@synthesize SliderCellWidth = _sliderCellWidth;
@synthesize SliderCellHeight = _sliderCellHeight;

- (id)init {
    self = [super init];
    backgroundImage = newImage(@"bmp00131", [TarnsUiView13 class]);
    knobImage = newImage(@"bmp00130", [TarnsCustomSlider13 class]);
    return self;
}

- (id)initWithImage:(NSImage*)background knobImage:(NSImage*)knob {
    self = [super init];
    backgroundImage = [background retain];
    knobImage = [knob retain];
    return self;
}

- (void)drawBarInside:(NSRect)rect flipped:(BOOL)flipped {
    [backgroundImage drawInRect:NSMakeRect(0, 0, [self SliderCellWidth], [self SliderCellHeight])];
}

- (void)drawKnob:(NSRect)knobRect {
    const SliderPoint corner =
        knobPictureCorner(knobRect.origin.x, knobRect.origin.y, knobRect.size.height);
    [[self controlView] lockFocus];
    [knobImage compositeToPoint:NSMakePoint(corner.x, corner.y) operation:NSCompositeSourceOver];
    [[self controlView] unlockFocus];
}

@end
