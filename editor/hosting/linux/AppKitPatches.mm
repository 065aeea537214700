#include "editor/hosting/linux/AppKitPatches.h"

#include "editor/hosting/linux/OwnBundle.h"
#import "editor/hosting/linux/TarnsAppKit.h"
#import "editor/hosting/linux/TarnsPicture.h"

#import <AppKit/AppKit.h>

#include <objc/runtime.h>

namespace {

using ImageInitialiser = id (*)(id, SEL, NSString*);
using ImageDrawing = void (*)(NSImage*, SEL, NSRect);
using WindowInitialiser = id (*)(id, SEL, void*);
using WindowGetter = NSWindow* (*)(id, SEL);

ImageInitialiser inheritedImageInitialiser = nullptr;
ImageDrawing inheritedImageDrawing = nullptr;
WindowInitialiser inheritedWindowInitialiser = nullptr;
WindowGetter inheritedKeyWindow = nullptr;
void* refusedReference = nullptr;
NSWindow* keyWindowInstead = nil;

// Puts `replacement` into the place of a method, once, and keeps what was there.
template <typename Function>
void replaceMethod(const char* className, SEL selector, Function replacement, Function& inherited) {
    if (inherited == nullptr) {
        const Method method = class_getInstanceMethod(objc_getClass(className), selector);
        inherited = reinterpret_cast<Function>(
            method_setImplementation(method, reinterpret_cast<IMP>(replacement)));
    }
}

NSMutableDictionary* picturesByFile() {
    static NSMutableDictionary* const pictures = [[NSMutableDictionary alloc] init];
    return pictures;
}

NSImage* newShared(SEL selector, NSString* file) {
    TarnsPicture* picture = [[picturesByFile() objectForKey:file] retain];
    if (picture == nil) {
        picture = inheritedImageInitialiser([TarnsPicture alloc], selector, file);
        if (picture != nil) {
            [picture setFile:file];
            [picturesByFile() setObject:picture forKey:file];
        }
    }
    return picture;
}

id initByReferencingFile(id self, SEL selector, NSString* file) {
    if (file == nil && [TarnsAppKit isOurs]) {
        return [self init];
    }
    if (!isOwnResource(file)) {
        return inheritedImageInitialiser(self, selector, file);
    }
    [self release];
    return newShared(selector, file);
}

void drawInRect(NSImage* self, SEL selector, NSRect target) {
    if (![TarnsAppKit isOurs]) {
        inheritedImageDrawing(self, selector, target);
        return;
    }
    [self drawInRect:target
              fromRect:NSZeroRect
             operation:NSCompositeSourceOver
              fraction:1.0
        respectFlipped:YES
                 hints:nil];
}

id initWithWindowRef(id self, SEL selector, void* reference) {
    if (reference != refusedReference) {
        return inheritedWindowInitialiser(self, selector, reference);
    }
    [self release];
    return nil;
}

NSWindow* keyWindow(id self, SEL selector) {
    NSWindow* const known = inheritedKeyWindow(self, selector);
    return known != nil ? known : keyWindowInstead;
}

} // namespace

void shareOwnPictures() {
    replaceMethod("NSImage", @selector(initByReferencingFile:), initByReferencingFile,
                  inheritedImageInitialiser);
}

void drawPicturesUpright() {
    replaceMethod("NSImage", @selector(drawInRect:), drawInRect, inheritedImageDrawing);
}

void dropPictureCaches() {
    [[picturesByFile() allValues] makeObjectsPerformSelector:@selector(recache)];
}

void refuseAsWindowReference(void* view) {
    refusedReference = view;
    replaceMethod("NSWindow", @selector(initWithWindowRef:), initWithWindowRef,
                  inheritedWindowInitialiser);
}

void useAsKeyWindow(NSWindow* window) {
    keyWindowInstead = window;
    replaceMethod("NSApplication", @selector(keyWindow), keyWindow, inheritedKeyWindow);
}
