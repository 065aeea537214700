#pragma once

#import <AppKit/NSGraphics.h>
#import <AppKit/NSResponder.h>

@class CALayer;
@class NSBitmapImageRep;
@class NSWindow;

FOUNDATION_EXPORT_CLASS
@interface NSView : NSResponder

- (id)initWithFrame:(NSRect)frameRect;

- (NSWindow*)window;
- (NSView*)superview;
- (NSArray*)subviews;
- (void)addSubview:(NSView*)aView;
- (void)addSubview:(NSView*)aView
        positioned:(NSWindowOrderingMode)place
        relativeTo:(NSView*)otherView;

- (NSRect)frame;
- (NSRect)bounds;
- (NSPoint)convertPoint:(NSPoint)aPoint fromView:(NSView*)aView;
- (NSPoint)convertPoint:(NSPoint)aPoint toView:(NSView*)aView;
- (NSView*)hitTest:(NSPoint)aPoint;

- (void)setNeedsDisplay:(BOOL)flag;
- (void)drawRect:(NSRect)dirtyRect;
- (void)lockFocus;
- (void)unlockFocus;

- (NSBitmapImageRep*)bitmapImageRepForCachingDisplayInRect:(NSRect)rect;
- (void)cacheDisplayInRect:(NSRect)rect toBitmapImageRep:(NSBitmapImageRep*)bitmapImageRep;

- (void)setWantsLayer:(BOOL)flag;
- (CALayer*)layer;

- (BOOL)acceptsFirstMouse:(NSEvent*)theEvent;
- (BOOL)mouseDownCanMoveWindow;

@end
