// The picture behind the controls.
#pragma once

#import <AppKit/AppKit.h>

@class TarnsUiView13;

// On Linux editor/hosting/linux/EditorViewPatches.mm changes some of it.
@interface DetatchedView13 : NSView {
    NSImage* BackgroundImage; // retained
    TarnsUiView13* _Owner;
}

- (id)initWithImage2:(NSImage*)image withRect:(NSRect)rect;

@property(nonatomic, assign, setter=setOwnder:) TarnsUiView13* Owner;

@end
