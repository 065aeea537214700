#pragma once

#import <AppKit/NSView.h>
#import <AudioUnit/AUComponent.h>

@protocol AUCocoaUIBase
- (unsigned)interfaceVersion;
- (NSView*)uiViewForAudioUnit:(AudioUnit)inAudioUnit withSize:(NSSize)inPreferredSize;
@end
