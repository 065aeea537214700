#import "editor/TarnsCustomDisplayView10.h"

#include "editor/DisplayText.h"
#include "editor/hosting/EditorHosting.h"

@implementation TarnsCustomDisplayView10

@synthesize SValue = _sValue;

- (id)initWithFrame:(NSRect)frame andValue:(int32_t)value {
    self = [super initWithFrame:frame];
    if (self != nil) {
        NSMutableDictionary* const attributes = [[NSMutableDictionary alloc] init];
        _displayDictionary = attributes;
        [attributes setValue:[NSColor whiteColor] forKey:NSForegroundColorAttributeName];
        NSMutableParagraphStyle* const style =
            [[NSParagraphStyle defaultParagraphStyle] mutableCopy];
        [style setAlignment:NSCenterTextAlignment];
        [attributes setValue:style forKey:NSParagraphStyleAttributeName];
        [style release];
        _sValue = value;
        keepDrawingWithinBounds(self);
    }
    return self;
}

- (void)drawRect:(NSRect)dirtyRect {
    [[NSString stringWithUTF8String:numberText(_sValue).c_str()] drawInRect:dirtyRect
                                                             withAttributes:_displayDictionary];
}

@end
