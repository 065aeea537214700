// What an Audio Unit host asks for a view, by the class's name.
#pragma once

#import <AppKit/AppKit.h>
#import <AudioUnit/AUCocoaUIView.h>

// The user-interface thread. On Linux editor/hosting/linux/EditorViewPatches.mm changes some of it.
@interface TarnsView10 : NSObject <AUCocoaUIBase> {
    IBOutlet id tarnsUiView13; // set while the nib is loaded
}

// The view out of the nib, told of `audioUnit`; nil after an alert when the nib can't be loaded.
// `size` is not looked at.
- (NSView*)uiViewForAudioUnit:(AudioUnit)audioUnit withSize:(NSSize)size;

@end
