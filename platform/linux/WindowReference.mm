#include "platform/linux/WindowReference.h"

#include "platform/linux/X11Handle.h"

#import <AppKit/AppKit.h>

#include <objc/runtime.h>

namespace {

using Initialiser = id (*)(id, SEL, void*);

Initialiser inheritedInitialiser = nullptr;

id initWithWindowRef(id self, SEL selector, void* reference) {
    if (fitsX11Handle(reference)) {
        return inheritedInitialiser(self, selector, reference);
    }
    [self release];
    return nil;
}

} // namespace

void refuseForeignWindowReferences() {
    if (inheritedInitialiser != nullptr) {
        return;
    }
    const Method method =
        class_getInstanceMethod(objc_getClass("NSWindow"), @selector(initWithWindowRef:));
    inheritedInitialiser = reinterpret_cast<Initialiser>(
        method_setImplementation(method, reinterpret_cast<IMP>(initWithWindowRef)));
}
