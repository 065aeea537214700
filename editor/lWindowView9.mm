#import "editor/lWindowView9.h"

#include "editor/DisplayText.h"
#include "editor/LoadingCount.h"
#include "editor/hosting/EditorHosting.h"

#import <QuartzCore/QuartzCore.h>

namespace {

NSMutableDictionary* textIn(NSColor* colour) {
    NSMutableDictionary* const attributes = [[[NSMutableDictionary alloc] init] autorelease];
    [attributes setValue:colour forKey:NSForegroundColorAttributeName];
    return attributes;
}

} // namespace

@implementation lWindowView9

@synthesize TotalSamples = _TotalSamples;
@synthesize currentSamples = _currentSamples;
@synthesize SampleMessage = _SampleMessage;
@synthesize SamplemessageBack = _SampleMessageBack;

- (id)initWithImage:(NSImage*)image andFrame:(NSRect)frame {
    _TotalSamples = kInitialTotalSamples;
    _currentSamples = 0;
    BackgroundImage = image;
    _SampleMessage = @"Loading Sample:";
    _SampleMessageBack = @"Loading Sample:";
    (void)[super initWithFrame:frame];
    [self setWantsLayer:YES];
    keepDrawingWithinBounds(self);
    return self;
}

- (NSString*)progress {
    return [NSString stringWithUTF8String:loadingText(_currentSamples, _TotalSamples).c_str()];
}

- (void)drawRect:(NSRect)dirtyRect {
    [BackgroundImage drawInRect:NSMakeRect(0, 0, dirtyRect.size.width, dirtyRect.size.height)
                       fromRect:NSZeroRect
                      operation:NSCompositeCopy
                       fraction:1.0];
    NSMutableDictionary* const white = textIn([NSColor whiteColor]);
    NSMutableDictionary* const black = textIn([NSColor blackColor]);
    // The black line is the white one's shadow.
    [self setSampleMessageBack:[self progress]];
    [_SampleMessageBack drawAtPoint:NSMakePoint(29, 8) withAttributes:black];
    [self setSampleMessage:[self progress]];
    [_SampleMessage drawAtPoint:NSMakePoint(30, 10) withAttributes:white];
}

@end
