#include "editor/hosting/linux/DrawingErrors.h"

#import <AppKit/AppKit.h>

#include <objc/runtime.h>

namespace {

using Drawing = void (*)(id, SEL, NSRect);

Drawing ownDrawing = nullptr;

void drawRect(id self, SEL selector, NSRect dirtyRect) {
    @try {
        ownDrawing(self, selector, dirtyRect);
    } @catch (NSException* exception) {
    }
}

} // namespace

void containDrawingErrors() {
    if (ownDrawing == nullptr) {
        const Method method =
            class_getInstanceMethod(objc_getClass("FlatKnob13"), @selector(drawRect:));
        ownDrawing = reinterpret_cast<Drawing>(
            method_setImplementation(method, reinterpret_cast<IMP>(drawRect)));
    }
}
