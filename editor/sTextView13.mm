#import "editor/sTextView13.h"

#import "editor/TarnsUiView13.h"

#include "editor/BalanceFigures.h"
#include "editor/DisplayText.h"
#include "editor/hosting/EditorHosting.h"

namespace {

void drawPercent(int32_t percent, CGFloat x, NSDictionary* attributes) {
    constexpr CGFloat kBaseline = 234.0;
    [[NSString stringWithUTF8String:percentText(percent).c_str()]
           drawAtPoint:NSMakePoint(x, kBaseline)
        withAttributes:attributes];
}

} // namespace

@implementation sTextView13

@synthesize owner = _owner;

- (id)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self != nil) {
        tColor = [[NSColor colorWithCalibratedRed:0.9490196108818054
                                            green:0.9411764740943909
                                             blue:0.9296875
                                            alpha:1.0] retain];
        keepDrawingWithinBounds(self);
    }
    return self;
}

- (void)awakeFromNib {
}

- (void)drawRect:(NSRect)dirtyRect {
    [[NSColor clearColor] set];
    NSRectFillUsingOperation(dirtyRect, NSCompositeSourceOver);
    NSMutableDictionary* const attributes = [[NSMutableDictionary alloc] init];
    [attributes setValue:tColor forKey:NSForegroundColorAttributeName];
    [attributes setValue:[NSColor clearColor] forKey:NSBackgroundColorAttributeName];
    const int32_t volume = [_owner volumeSliderVal];
    const BalanceFigures balance = balanceFigures([_owner panningSliderVal]);
    drawPercent(volume, 120, attributes);
    drawPercent(balance.left, 363, attributes);
    drawPercent(balance.right, 494, attributes);
    [attributes release];
    [self setNeedsDisplay:NO];
}

@end
