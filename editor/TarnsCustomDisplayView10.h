// A display of one number, centred in the part that is repainted.
#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

// The event loop's thread.
@interface TarnsCustomDisplayView10 : NSView {
    int32_t _sValue;
    NSDictionary* _displayDictionary; // mutable, of the text's attributes; owned
}

- (id)initWithFrame:(NSRect)frame andValue:(int32_t)value;

@property(nonatomic, assign) int32_t SValue; // setting it repaints nothing

@end
