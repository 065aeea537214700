#import <QuartzCore/QuartzCore.h>

namespace {

void replaceColour(CGColorRef& kept, CGColorRef colour) {
    [reinterpret_cast<NSColor*>(colour) retain];
    [reinterpret_cast<NSColor*>(kept) release];
    kept = colour;
}

} // namespace

@implementation CALayer

@synthesize cornerRadius = _cornerRadius;
@synthesize borderWidth = _borderWidth;

- (void)dealloc {
    replaceColour(_backgroundColor, nullptr);
    replaceColour(_borderColor, nullptr);
    [super dealloc];
}

- (CGColorRef)backgroundColor {
    return _backgroundColor;
}

- (void)setBackgroundColor:(CGColorRef)colour {
    replaceColour(_backgroundColor, colour);
}

- (CGColorRef)borderColor {
    return _borderColor;
}

- (void)setBorderColor:(CGColorRef)colour {
    replaceColour(_borderColor, colour);
}

@end
