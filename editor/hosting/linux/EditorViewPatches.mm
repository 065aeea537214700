#include "editor/hosting/linux/EditorViewPatches.h"

#import "editor/ControlPoint13.h"
#import "editor/FlatKnob13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/TarnsCustomSliderCell10.h"
#import "editor/TarnsUiView13.h"
#import "editor/TarnsView10.h"
#include "editor/hosting/linux/OwnBundle.h"
#include "editor/hosting/linux/PaintedControls.h"
#import "editor/hosting/linux/TarnsEditorThread.h"
#import "editor/hosting/linux/TarnsX11HostWindow.h"

#include <cmath>

#include <objc/runtime.h>

namespace {

// Hands a view's wish to be painted on to AppKit, or not. From other threads it may not be: AppKit
// would allocate, on the audio thread that a host may automate from. In a window inside a host's
// the idle call finds what has changed. And who asks while it paints is painted already.
template <typename Mark>
void askForPainting(NSView* view, Mark mark) {
    if (![TarnsEditorThread isCurrent]) {
        return;
    }
    @autoreleasepool {
        if ([NSView focusView] == nil &&
            ![[view window] isKindOfClass:[TarnsX11HostWindow class]]) {
            mark();
        }
    }
}

using Drawing = void (*)(id, SEL, NSRect);

Drawing drawingOfKnob = nullptr;
Drawing drawingOfSwitch = nullptr;
Drawing drawingOfBackground = nullptr;

// What a knob without a frame raises would leave AppKit's window in the middle of its painting for
// good.
void drawKnob(id self, SEL selector, NSRect dirtyRect) {
    const int state = stateOfControl(self);
    @try {
        drawingOfKnob(self, selector, dirtyRect);
    } @catch (NSException* exception) {
    }
    notePainting(self, dirtyRect, state);
}

void drawSwitch(id self, SEL selector, NSRect dirtyRect) {
    const int state = stateOfControl(self);
    drawingOfSwitch(self, selector, dirtyRect);
    notePainting(self, dirtyRect, state);
}

// The background draws all of its picture into whatever it is given. Where a part is painted,
// AppKit clips to that part, so that the whole view may be given.
void drawBackground(id self, SEL selector, NSRect dirtyRect) {
    drawingOfBackground(self, selector, [NSView focusView] == self ? [self bounds] : dirtyRect);
}

void replaceDrawing(const char* className, Drawing replacement, Drawing& own) {
    if (own == nullptr) {
        const Method method =
            class_getInstanceMethod(objc_getClass(className), @selector(drawRect:));
        own = reinterpret_cast<Drawing>(
            method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
    }
}

} // namespace

@implementation ControlPoint13 (LinuxHosts)

- (void)setNeedsDisplay:(BOOL)needed {
    askForPainting(self, [&] { [super setNeedsDisplay:needed]; });
}

@end

@implementation FlatKnob13 (LinuxHosts)

- (void)setNeedsDisplay:(BOOL)needed {
    askForPainting(self, [&] { [super setNeedsDisplay:needed]; });
}

@end

@implementation TarnsCustomImageView13 (LinuxHosts)

- (void)setNeedsDisplay:(BOOL)needed {
    askForPainting(self, [&] { [super setNeedsDisplay:needed]; });
}

// An enabled control would follow the mouse to its release in a loop of its own, and the host's
// idle call would not come back before. A button of ours acts at the press.
- (BOOL)isEnabled {
    return NO;
}

@end

@implementation TarnsUiView13 (LinuxHosts)

// These two ask NSBundle for the bundle of their class, which has to know it by then.
+ (void)initialize {
    registerOwnBundle();
}

- (void)setNeedsDisplay:(BOOL)needed {
    askForPainting(self, [&] { [super setNeedsDisplay:needed]; });
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

void patchEditorDrawing() {
    replaceDrawing("FlatKnob13", drawKnob, drawingOfKnob);
    replaceDrawing("TarnsCustomImageView13", drawSwitch, drawingOfSwitch);
    replaceDrawing("DetatchedView13", drawBackground, drawingOfBackground);
}
