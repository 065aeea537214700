#include "editor/hosting/linux/EditorViewPatches.h"

#import "editor/ControlPoint13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/TarnsCustomSliderCell10.h"
#import "editor/TarnsUiView13.h"
#import "editor/TarnsView10.h"
#include "editor/hosting/linux/OwnBundle.h"
#import "editor/hosting/linux/TarnsEditorThread.h"

#include <cmath>

#include <objc/runtime.h>

namespace {

// Asks for painting. AppKit's own mark is not enough: it would allocate on the audio thread that a
// host may automate from, it would leave the request to a run loop that a host of ours doesn't run,
// and its windows forget what views ask for while they paint. `mark` is that one, for its thread.
template <typename Mark>
void requestPainting(Mark mark) {
    [TarnsEditorThread requestRepaint];
    if ([TarnsEditorThread isCurrent]) {
        @autoreleasepool {
            mark();
        }
    }
}

using Drawing = void (*)(id, SEL, NSRect);

Drawing drawingOfKnob = nullptr;

void drawKnob(id self, SEL selector, NSRect dirtyRect) {
    @try {
        drawingOfKnob(self, selector, dirtyRect);
    } @catch (NSException* exception) {
    }
}

} // namespace

@implementation ControlPoint13 (LinuxHosts)

- (void)setNeedsDisplay:(BOOL)needed {
    requestPainting([&] { [super setNeedsDisplay:needed]; });
}

@end

@implementation TarnsUiView13 (LinuxHosts)

// These two ask NSBundle for the bundle of their class, which has to know it by then.
+ (void)initialize {
    registerOwnBundle();
}

- (void)setNeedsDisplay:(BOOL)needed {
    requestPainting([&] { [super setNeedsDisplay:needed]; });
}

@end

@implementation TarnsCustomImageView13 (LinuxHosts)

// An enabled control would follow the mouse to its release in a loop of its own, and the host's
// idle call would not come back before. A button of ours acts at the press.
- (BOOL)isEnabled {
    return NO;
}

@end

@implementation TarnsView10 (LinuxHosts)

+ (void)initialize {
    registerOwnBundle();
}

@end

@implementation TarnsCustomSliderCell10 (LinuxHosts)

// As large as macOS has a slider's knob, which the pictures fit; AppKit's is smaller here. At whole
// points, where the picture stays sharp.
- (NSRect)knobRectFlipped:(BOOL)flipped {
    constexpr CGFloat kSide = 21.0;
    const NSSize view = [[self controlView] bounds].size;
    const double range = [self maxValue] - [self minValue];
    const double way = range != 0.0 ? ([self doubleValue] - [self minValue]) / range : 0.0;
    const bool upright = view.height > view.width;
    const CGFloat x = (view.width - kSide) * (upright ? 0.5 : way);
    const CGFloat y = (view.height - kSide) * (!upright ? 0.5 : flipped ? 1.0 - way : way);
    return NSMakeRect(std::floor(x), std::floor(y), kSide, kSide);
}

@end

void containDrawingErrors() {
    if (drawingOfKnob == nullptr) {
        const Method method =
            class_getInstanceMethod(objc_getClass("FlatKnob13"), @selector(drawRect:));
        drawingOfKnob = reinterpret_cast<Drawing>(
            method_setImplementation(method, reinterpret_cast<IMP>(drawKnob)));
    }
}
