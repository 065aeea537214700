#include "mac-check/DrawnRectangles.h"

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

namespace {

struct Drawing {
    const char* ofClass;
    NSRect bounds;
    NSRect handed;
    int times;
};

using Draw = void (*)(id, SEL, NSRect);

constexpr int kClasses = 4;
const char* const kNames[kClasses] = {"DetatchedView13", "FlatKnob13", "ControlPoint13",
                                      "TarnsCustomImageView13"};
Draw ownDrawing[kClasses];

constexpr int kMostDrawings = 200;
Drawing drawings[kMostDrawings];
int drawingCount;

bool isSame(const NSRect& one, const NSRect& other) {
    return one.origin.x == other.origin.x && one.origin.y == other.origin.y &&
           one.size.width == other.size.width && one.size.height == other.size.height;
}

void note(const char* ofClass, NSRect bounds, NSRect handed) {
    for (int i = 0; i < drawingCount; ++i) {
        Drawing& known = drawings[i];
        if (known.ofClass == ofClass && isSame(known.bounds, bounds) &&
            isSame(known.handed, handed)) {
            ++known.times;
            return;
        }
    }
    if (drawingCount < kMostDrawings) {
        drawings[drawingCount++] = {ofClass, bounds, handed, 1};
    }
}

template <int kIndex>
void drawAndNote(id self, SEL selector, NSRect rectangle) {
    note(kNames[kIndex], [static_cast<NSView*>(self) bounds], rectangle);
    ownDrawing[kIndex](self, selector, rectangle);
}

template <int kIndex>
void noteDrawingOf() {
    const id found = objc_getClass(kNames[kIndex]);
    if (found == nil || ownDrawing[kIndex] != nullptr) {
        return;
    }
    const Method method = class_getInstanceMethod(static_cast<Class>(found), @selector(drawRect:));
    if (method == nullptr) {
        return;
    }
    ownDrawing[kIndex] = reinterpret_cast<Draw>(
        method_setImplementation(method, reinterpret_cast<IMP>(drawAndNote<kIndex>)));
}

} // namespace

void noteDrawnRectangles() {
    noteDrawingOf<0>();
    noteDrawingOf<1>();
    noteDrawingOf<2>();
    noteDrawingOf<3>();
}

void reportDrawnRectangles(Report& report) {
    for (int i = 0; i < drawingCount; ++i) {
        const Drawing& drawing = drawings[i];
        report.line("drawRect: of %s, bounds (%g %g %g %g), was handed (%g %g %g %g) %d times",
                    drawing.ofClass, drawing.bounds.origin.x, drawing.bounds.origin.y,
                    drawing.bounds.size.width, drawing.bounds.size.height, drawing.handed.origin.x,
                    drawing.handed.origin.y, drawing.handed.size.width, drawing.handed.size.height,
                    drawing.times);
    }
    drawingCount = 0;
}
