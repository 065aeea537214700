#import <AppKit/AppKit.h>

// AppKit declares it; without a Core Graphics there is nothing below the colour itself.
@implementation NSColor (CGColor)

- (CGColorRef)CGColor {
    return reinterpret_cast<CGColorRef>(self);
}

@end
