// A display of a level and a balance as three percentages, at the places of a wider layout.
#pragma once

#import <AppKit/AppKit.h>

@class TarnsUiView13;

// The event loop's thread.
@interface sTextView13 : NSView {
    NSColor* tColor; // retained
    TarnsUiView13* _owner;
}

- (id)initWithFrame:(NSRect)frame;

// Where the values come from; not retained. None reads as 0 for both.
@property(nonatomic, assign) TarnsUiView13* owner;

@end
