// The content of the loading window: a picture and, over it, how many samples are loaded.
#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

// The event loop's thread.
@interface lWindowView9 : NSView {
    NSImage* BackgroundImage; // not retained
    uint32_t _TotalSamples;
    uint32_t _currentSamples;
    NSString* _SampleMessage;
    NSString* _SampleMessageBack;
}

- (id)initWithImage:(NSImage*)image andFrame:(NSRect)frame;

// Counts show at the next painting.
@property(nonatomic, assign) uint32_t TotalSamples;
@property(nonatomic, assign, setter=setcurrentSamples:) uint32_t currentSamples;

// The white line and the black line behind it. Each painting replaces both before it draws them.
@property(nonatomic, retain) NSString* SampleMessage;
@property(nonatomic, retain, setter=setSampleMessageBack:) NSString* SamplemessageBack;

@end
