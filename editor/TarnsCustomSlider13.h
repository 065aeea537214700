// A slider of two pictures.
#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

// It tells its delegate of each of its repaints, and of nothing else: a delegate has to take
// repeats. The event loop's thread.
@interface TarnsCustomSlider13 : NSSlider {
    id _delegate; // answers FlatKnobProtocol
    int32_t _caseValue;
}

// Stands at 0.5. The track is as large as the frame, cut to whole points.
- (id)initWithFrameandImage:(NSRect)frame
            backgroundImage:(NSImage*)backgroundImage
                  knobImage:(NSImage*)knobImage;

@property(nonatomic, assign) id delegate;       // not retained
@property(nonatomic, assign) int32_t caseValue; // the index that is reported

@end
