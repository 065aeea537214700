#include "platform/linux/OwnPictures.h"

#include "platform/linux/OwnBundle.h"
#import "platform/linux/TarnsAppKit.h"

#import <AppKit/AppKit.h>

#include <objc/runtime.h>

namespace {

using Initialiser = id (*)(id, SEL, NSString*);

Initialiser inheritedInitialiser = nullptr;

NSMutableDictionary* picturesByFile() {
    static NSMutableDictionary* const pictures = [[NSMutableDictionary alloc] init];
    return pictures;
}

id initShared(id self, SEL selector, NSString* file) {
    NSImage* picture = [picturesByFile() objectForKey:file];
    if (picture != nil) {
        [self release];
        return [picture retain];
    }
    picture = inheritedInitialiser(self, selector, file);
    if (picture != nil) {
        [picturesByFile() setObject:picture forKey:file];
    }
    return picture;
}

id initByReferencingFile(id self, SEL selector, NSString* file) {
    if (file == nil && [TarnsAppKit isOurs]) {
        return [self init];
    }
    return isOwnResource(file) ? initShared(self, selector, file)
                               : inheritedInitialiser(self, selector, file);
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
