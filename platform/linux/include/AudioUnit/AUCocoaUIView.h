// The protocol of Audio Unit view factories.
#pragma once

#import <AppKit/AppKit.h>

typedef struct ComponentInstanceRecord* AudioUnit;

@protocol AUCocoaUIBase
- (unsigned)interfaceVersion;
- (NSView*)uiViewForAudioUnit:(AudioUnit)inAudioUnit withSize:(NSSize)inPreferredSize;
@end
