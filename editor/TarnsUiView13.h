// The editor's face, and the road between its router and the effect.
#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

class AudioEffect;
struct AUListenerBase;
struct ComponentInstanceRecord;
@class DetatchedView13;
@class KnobDelegate13;
@class sTextView13;

// updateView:andValue: comes on whatever thread set the parameter, all else on the event loop's. On
// Linux editor/hosting/linux/EditorViewPatches.mm changes some of it.
@interface TarnsUiView13 : NSView {
    NSImage* BackgroundImage;
    KnobDelegate13* KnobView; // the router
    ComponentInstanceRecord* mAU;
    AUListenerBase* mAUEventListener;
    NSView* BkView;
    sTextView13* _volumeSliderText;
    DetatchedView13* _subDetachedView;
    int32_t _volumeSliderVal;
    int32_t _panningSliderVal;
    AudioEffect* _effect; // not owned, may be null
}

// `effect` is null or a VstXSynth.
- (id)initWithFrame:(NSRect)frame andEffect:(AudioEffect*)effect;
// Builds the router and all controls. For a view that comes from no nib, its owner sends it.
- (void)awakeFromNib;

// Writes one parameter, without an echo, and repaints. Unknown indices write nothing.
- (void)updateParameters:(int32_t)index withValue:(float)value;
// Shows one parameter's new value.
- (void)updateView:(int32_t)index andValue:(float)value;

@property(nonatomic, assign, getter=getEffect) AudioEffect* effect;
@property(nonatomic, assign) DetatchedView13* subDetachedView;
@property(nonatomic, assign) sTextView13* volumeSliderText;
@property(nonatomic, assign) int32_t volumeSliderVal;
@property(nonatomic, readonly) int32_t panningSliderVal;

@end
