// A latching button of two images.
#pragma once

#import <AppKit/AppKit.h>

// The event loop's thread. On Linux editor/hosting/linux/EditorViewPatches.mm changes some of it.
@interface TarnsCustomImageView13 : NSImageView {
    id _delegate;         // answers FlatKnobProtocol
    NSImage* state1Image; // retained, shown in state 0
    NSImage* state2Image; // retained, shown in any other state
    signed char _imageState;
}

- (id)initWithFrameAndImages:(NSRect)frame imageOne:(NSImage*)imageOne imageTwo:(NSImage*)imageTwo;

@property(nonatomic, assign) id delegate;
@property(nonatomic, assign) signed char imageState; // setting it repaints nothing

@end
