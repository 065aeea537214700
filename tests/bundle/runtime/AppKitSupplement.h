// What macOS's AppKit has and GNUstep lacks, as far as the bundle's views use it, and what a test
// sets about it. Each writes into the journal what it is told.
#pragma once

#import <AppKit/AppKit.h>

// A view's layer. Nothing of it is seen.
@interface CALayer : NSObject
- (void)setBackgroundColor:(id)colour;
- (void)setCornerRadius:(CGFloat)radius;
- (void)setBorderWidth:(CGFloat)width;
- (void)setBorderColor:(id)colour;
@end

@interface NSView (AppKitSupplement)
- (void)setWantsLayer:(BOOL)wanted;
- (CALayer*)layer;
- (void)setClipsToBounds:(BOOL)clips;
- (BOOL)clipsToBounds; // NO unless set
@end

@interface NSApplication (AppKitSupplement)
- (BOOL)setActivationPolicy:(NSInteger)policy; // YES
@end

@interface NSColor (AppKitSupplement)
- (id)CGColor; // itself
@end

@interface NSBundle (AppKitSupplement)
- (BOOL)loadNibNamed:(NSString*)name owner:(id)owner topLevelObjects:(NSArray**)topLevelObjects;
@end

// A string as it lies in a Mach-O file.
@interface MachOString : NSString {
    NSUInteger _flags;
    const char* _bytes;
    NSInteger _length;
}
@end

namespace supplement {

// What the nib's owner gets as its outlet; no nib is there when nil, as from the start.
extern id nibView;

// Whether a pointer that initWithWindowRef: gets stands for a window.
extern bool windowReferences;

// Whether views answer clipsToBounds, as those of macOS 10.9 and later do. True from the start.
extern bool viewsClip;

// Whether mapped views that don't clip are handed the rectangle of their window's whole content to
// draw, as those of hosts that were built for macOS 14 are. False from the start.
extern bool handsWideRectangles;

// Takes over methods that GNUstep has, and has otherwise than macOS: the bundle of these classes,
// and windows by reference. `isMapped` tells the mapped classes. Once in a process.
void start(NSBundle* bundle, bool (*isMapped)(Class));

// Puts the handing of rectangles before a mapped class's own drawing. Once for each class.
void handRectanglesTo(Class mapped);

} // namespace supplement
