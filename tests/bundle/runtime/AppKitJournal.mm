#import "tests/bundle/runtime/AppKitJournal.h"

#include <objc/runtime.h>

#include <sstream>
#include <stdexcept>

namespace {

std::vector<std::string> entries;

// Puts `own` in the place of a class's method, and gives what was there.
template <typename Function>
Function replace(Class changed, SEL selector, Function own) {
    const Method method = class_getInstanceMethod(changed, selector);
    if (method == nullptr) {
        throw std::runtime_error(std::string("no method ") + sel_getName(selector));
    }
    const IMP before = method_getImplementation(method);
    if (!class_addMethod(changed, selector, reinterpret_cast<IMP>(own),
                         method_getTypeEncoding(method))) {
        method_setImplementation(method, reinterpret_cast<IMP>(own));
    }
    return reinterpret_cast<Function>(before);
}

template <typename... Parts>
void write(const Parts&... parts) {
    std::ostringstream line;
    (line << ... << parts);
    entries.push_back(line.str());
}

using DrawInRectFromRect = void (*)(id, SEL, NSRect, NSRect, NSUInteger, CGFloat);
DrawInRectFromRect drawInRectFromRect;

void writeDrawInRectFromRect(id self, SEL selector, NSRect target, NSRect source,
                             NSUInteger operation, CGFloat fraction) {
    write("image ", describe(target), " from ", describe(source), " operation ", operation,
          " fraction ", fraction);
    drawInRectFromRect(self, selector, target, source, operation, fraction);
}

using Composite = void (*)(id, SEL, NSPoint, NSUInteger);
Composite composite;

void writeComposite(id self, SEL selector, NSPoint point, NSUInteger operation) {
    write("image to point (", point.x, " ", point.y, ") operation ", operation);
    composite(self, selector, point, operation);
}

using AddPositioned = void (*)(id, SEL, id, NSInteger, id);
AddPositioned addPositioned;

void writeAddPositioned(id self, SEL selector, id view, NSInteger place, id other) {
    write("add ", object_getClassName(view), " positioned ", place, " relative to ",
          other == nil ? "nothing" : object_getClassName(other));
    addPositioned(self, selector, view, place, other);
}

using InitWindow = id (*)(id, SEL, NSRect, NSUInteger, NSUInteger, BOOL, id);
InitWindow initWindow;

id writeInitWindow(id self, SEL selector, NSRect content, NSUInteger style, NSUInteger backing,
                   BOOL defer, id screen) {
    write("window ", object_getClassName(self), " ", describe(content), " style ", style,
          " backing ", backing, " defer ", int{defer}, " screen ",
          screen == [[NSScreen screens] objectAtIndex:0] ? "first" : "other");
    // GNUstep's frames would take a part of the content.
    return initWindow(self, selector, content, NSBorderlessWindowMask, backing, defer, screen);
}

using SetFrame = void (*)(id, SEL, NSRect, BOOL, BOOL);
SetFrame setFrame;

void writeSetFrame(id self, SEL selector, NSRect frame, BOOL display, BOOL animate) {
    write("set frame ", describe(frame), " display ", int{display}, " animate ", int{animate});
    setFrame(self, selector, frame, display, NO);
}

using SetFlag = void (*)(id, SEL, BOOL);
SetFlag setReleasedWhenClosed;

void writeReleasedWhenClosed(id self, SEL selector, BOOL released) {
    write("released when closed ", int{released});
    setReleasedWhenClosed(self, selector, released);
}

using SetAlignment = void (*)(id, SEL, NSInteger);
SetAlignment setParagraphAlignment;

void writeParagraphAlignment(id self, SEL selector, NSInteger alignment) {
    write("paragraph alignment ", alignment);
    setParagraphAlignment(self, selector, alignment);
}

// A press is over at once: GNUstep's would wait for the release in a loop of its own.
void writePress(id self, SEL selector, id event) {
    write("press ", object_getClassName(self));
}

} // namespace

std::string describe(NSRect rect) {
    std::ostringstream text;
    text << "(" << rect.origin.x << " " << rect.origin.y << " " << rect.size.width << " "
         << rect.size.height << ")";
    return text.str();
}

const std::vector<std::string>& journal() {
    return entries;
}

std::vector<std::string> journalOf(const std::string& beginning) {
    std::vector<std::string> found;
    for (const std::string& entry : entries) {
        if (entry.compare(0, beginning.size(), beginning) == 0) {
            found.push_back(entry);
        }
    }
    return found;
}

void writeJournal(const std::string& entry) {
    entries.push_back(entry);
}

void forgetJournal() {
    entries.clear();
}

void startJournal() {
    drawInRectFromRect =
        replace([NSImage class], @selector(drawInRect:fromRect:operation:fraction:),
                writeDrawInRectFromRect);
    composite = replace([NSImage class], @selector(compositeToPoint:operation:), writeComposite);
    addPositioned =
        replace([NSView class], @selector(addSubview:positioned:relativeTo:), writeAddPositioned);
    initWindow =
        replace([NSWindow class], @selector(initWithContentRect:styleMask:backing:defer:screen:),
                writeInitWindow);
    setFrame = replace([NSWindow class], @selector(setFrame:display:animate:), writeSetFrame);
    setReleasedWhenClosed =
        replace([NSWindow class], @selector(setReleasedWhenClosed:), writeReleasedWhenClosed);
    setParagraphAlignment =
        replace([NSMutableParagraphStyle class], @selector(setAlignment:), writeParagraphAlignment);
    replace([NSControl class], @selector(mouseDown:), writePress);
}
