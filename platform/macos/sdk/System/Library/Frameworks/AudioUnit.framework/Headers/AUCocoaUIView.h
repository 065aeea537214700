#pragma once

#import <AppKit/NSView.h>

typedef struct ComponentInstanceRecord* AudioUnit;

@protocol AUCocoaUIBase
- (unsigned)interfaceVersion;
- (NSView*)uiViewForAudioUnit:(AudioUnit)inAudioUnit withSize:(NSSize)inPreferredSize;
@end
