#include "editor/hosting/linux/WindowReference.h"

#import <AppKit/AppKit.h>

#include <objc/runtime.h>

namespace {

using Initialiser = id (*)(id, SEL, void*);

Initialiser inheritedInitialiser = nullptr;
void* refused = nullptr;

id initWithWindowRef(id self, SEL selector, void* reference) {
    if (reference != refused) {
        return inheritedInitialiser(self, selector, reference);
    }
    [self release];
    return nil;
}

void replaceInitialiser() {
    const Method method =
        class_getInstanceMethod(objc_getClass("NSWindow"), @selector(initWithWindowRef:));
    inheritedInitialiser = reinterpret_cast<Initialiser>(
        method_setImplementation(method, reinterpret_cast<IMP>(initWithWindowRef)));
}

} // namespace

void refuseAsWindowReference(void* view) {
    refused = view;
    if (inheritedInitialiser == nullptr) {
        replaceInitialiser();
    }
}
