#import "editor/TarnsCustomSlider13.h"

#import "editor/FlatKnobProtocol.h"
#import "editor/TarnsCustomSliderCell10.h"

#include "editor/SliderGeometry.h"
#include "editor/hosting/EditorHosting.h"

@implementation TarnsCustomSlider13

@synthesize delegate = _delegate;
@synthesize caseValue = _caseValue;

- (id)initWithFrameandImage:(NSRect)frame
            backgroundImage:(NSImage*)backgroundImage
                  knobImage:(NSImage*)knobImage {
    self = [super initWithFrame:frame];
    TarnsCustomSliderCell10* const cell =
        [[TarnsCustomSliderCell10 alloc] initWithImage:backgroundImage knobImage:knobImage];
    [cell setSliderCellHeight:trackExtent(frame.size.height)];
    [cell setSliderCellWidth:trackExtent(frame.size.width)];
    [self setCell:cell];
    [cell release];
    [self setFloatValue:0.5f];
    keepDrawingWithinBounds(self);
    return self;
}

- (void)awakeFromNib {
}

- (void)drawRect:(NSRect)dirtyRect {
    [super drawRect:dirtyRect];
    [[self delegate] knobUpdatedWithIndex:[self caseValue] withValue:nil withObject:nil];
}

@end
