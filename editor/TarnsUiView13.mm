#import "editor/TarnsUiView13.h"

#import "editor/KnobDelegate13.h"
#include "effect/VstXSynth.h"

@implementation TarnsUiView13

@synthesize effect = _effect;
@synthesize subDetachedView = _subDetachedView;
@synthesize volumeSliderText = _volumeSliderText;
@synthesize volumeSliderVal = _volumeSliderVal;
@synthesize panningSliderVal = _panningSliderVal;

- (id)initWithFrame:(NSRect)frame andEffect:(AudioEffect*)effect {
    self = [super initWithFrame:frame];
    if (self != nil) {
        _effect = effect;
    }
    return self;
}

- (void)awakeFromNib {
    NSString* const path =
        [[NSBundle bundleForClass:[TarnsUiView13 class]] pathForImageResource:@"bmp00131"];
    BackgroundImage = [[NSImage alloc] initByReferencingFile:path];
    KnobView = [[KnobDelegate13 alloc] initWithView:self];
}

- (void)updateParameters:(int32_t)index withValue:(float)value {
    auto* const effect = static_cast<VstXSynth*>(_effect);
    if (effect != nullptr) {
        effect->editorUpdateHold = true;
        if (index >= kDelay && index < kNumParams) {
            effect->setParameter(index, value);
        }
        effect->editorUpdateHold = false;
    }
    [self setNeedsDisplay:YES];
}

- (void)updateView:(int32_t)index andValue:(float)value {
    [KnobView updateControllers:index andValue:value];
    [self setNeedsDisplay:YES];
}

@end
