#include "tests/editor/DrawnTexts.h"

#include <objc/runtime.h>

namespace {

DrawnTexts* current = nullptr;
IMP drawAtPoint = nullptr;
IMP drawInRect = nullptr;

void note(NSString* text, NSRect place, NSDictionary* attributes) {
    current->all.push_back({[text UTF8String], place, [[attributes copy] autorelease]});
}

void noteAtPoint(NSString* text, SEL selector, NSPoint point, NSDictionary* attributes) {
    note(text, NSMakeRect(point.x, point.y, 0, 0), attributes);
    reinterpret_cast<void (*)(id, SEL, NSPoint, NSDictionary*)>(drawAtPoint)(text, selector, point,
                                                                             attributes);
}

void noteInRect(NSString* text, SEL selector, NSRect rect, NSDictionary* attributes) {
    note(text, rect, attributes);
    reinterpret_cast<void (*)(id, SEL, NSRect, NSDictionary*)>(drawInRect)(text, selector, rect,
                                                                           attributes);
}

Method methodOf(SEL selector) {
    return class_getInstanceMethod([NSString class], selector);
}

} // namespace

DrawnTexts::DrawnTexts() {
    current = this;
    drawAtPoint = method_setImplementation(methodOf(@selector(drawAtPoint:withAttributes:)),
                                           reinterpret_cast<IMP>(noteAtPoint));
    drawInRect = method_setImplementation(methodOf(@selector(drawInRect:withAttributes:)),
                                          reinterpret_cast<IMP>(noteInRect));
}

DrawnTexts::~DrawnTexts() {
    method_setImplementation(methodOf(@selector(drawAtPoint:withAttributes:)), drawAtPoint);
    method_setImplementation(methodOf(@selector(drawInRect:withAttributes:)), drawInRect);
    current = nullptr;
}

std::vector<std::string> DrawnTexts::texts() const {
    std::vector<std::string> drawn;
    drawn.reserve(all.size());
    for (const DrawnText& each : all) {
        drawn.push_back(each.text);
    }
    return drawn;
}
