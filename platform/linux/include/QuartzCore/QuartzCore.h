// Layers of views, as far as the plug-in uses them.
#pragma once

#import <AppKit/AppKit.h>

// What a view was told of its layer. Views draw into their window, so nothing of it is seen.
@interface CALayer : NSObject {
    CGColorRef _backgroundColor;
    CGColorRef _borderColor;
    CGFloat _cornerRadius;
    CGFloat _borderWidth;
}

@property(nonatomic, assign) CGColorRef backgroundColor; // retained
@property(nonatomic, assign) CGColorRef borderColor;     // retained
@property(nonatomic, assign) CGFloat cornerRadius;       // points
@property(nonatomic, assign) CGFloat borderWidth;        // points

@end

// The user-interface thread.
@interface NSView (Layers)
// A view that wants a layer has one until it wants none.
- (void)setWantsLayer:(BOOL)wanted;
- (CALayer*)layer;
@end
