#include "editor/hosting/linux/OwnPictures.h"

#include "editor/hosting/linux/OwnBundle.h"
#import "editor/hosting/linux/TarnsAppKit.h"
#import "editor/hosting/linux/TarnsPicture.h"

#import <AppKit/AppKit.h>

#include <objc/runtime.h>

namespace {

using Initialiser = id (*)(id, SEL, NSString*);

Initialiser inheritedInitialiser = nullptr;

NSMutableDictionary* picturesByFile() {
    static NSMutableDictionary* const pictures = [[NSMutableDictionary alloc] init];
    return pictures;
}

NSImage* newShared(SEL selector, NSString* file) {
    NSImage* picture = [[picturesByFile() objectForKey:file] retain];
    if (picture == nil) {
        picture = inheritedInitialiser([TarnsPicture alloc], selector, file);
        if (picture != nil) {
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
        return inheritedInitialiser(self, selector, file);
    }
    [self release];
    return newShared(selector, file);
}

} // namespace

void shareOwnPictures() {
    if (inheritedInitialiser != nullptr) {
        return;
    }
    const Method method =
        class_getInstanceMethod(objc_getClass("NSImage"), @selector(initByReferencingFile:));
    inheritedInitialiser = reinterpret_cast<Initialiser>(
        method_setImplementation(method, reinterpret_cast<IMP>(initByReferencingFile)));
}

void dropPictureCaches() {
    [[picturesByFile() allValues] makeObjectsPerformSelector:@selector(recache)];
}
