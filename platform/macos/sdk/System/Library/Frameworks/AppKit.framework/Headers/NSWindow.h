#pragma once

#import <AppKit/NSGraphics.h>
#import <AppKit/NSResponder.h>

@class NSColor;
@class NSScreen;
@class NSView;

FOUNDATION_EXPORT_CLASS
@interface NSWindow : NSResponder

- (id)initWithContentRect:(NSRect)contentRect
                styleMask:(NSUInteger)aStyle
                  backing:(NSBackingStoreType)bufferingType
                    defer:(BOOL)flag
                   screen:(NSScreen*)screen;
- (NSWindow*)initWithWindowRef:(void*)windowRef;

- (NSRect)frame;
- (NSInteger)windowNumber;
- (void)setFrame:(NSRect)frameRect display:(BOOL)displayFlag animate:(BOOL)animateFlag;
- (id)contentView;
- (void)setContentView:(NSView*)aView;

- (void)setBackgroundColor:(NSColor*)color;
- (void)setOpaque:(BOOL)isOpaque;
- (void)setLevel:(NSInteger)newLevel;
- (void)setAutodisplay:(BOOL)flag;
- (void)display;

- (void)makeKeyAndOrderFront:(id)sender;
- (void)orderOut:(id)sender;
- (void)setReleasedWhenClosed:(BOOL)flag;
- (void)close;

@end
