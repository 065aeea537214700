#import "tests/bundle/runtime/AppKitSupplement.h"

#import "tests/bundle/runtime/AppKitJournal.h"

#include "editor/BundleIdentifier.h"

#include <objc/runtime.h>

#include <cstdlib>
#include <map>
#include <sstream>
#include <string>

namespace {

NSBundle* ownBundle;
bool (*isMappedClass)(Class);
IMP bundleForOtherClass;

NSMapTable* layers() {
    static NSMapTable* const table =
        NSCreateMapTable(NSNonOwnedPointerMapKeyCallBacks, NSObjectMapValueCallBacks, 0);
    return table;
}

std::string colourText(id colour) {
    NSColor* const rgb = [colour colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
    std::ostringstream text;
    text << [rgb redComponent] << " " << [rgb greenComponent] << " " << [rgb blueComponent] << " "
         << [rgb alphaComponent];
    return text.str();
}

std::string numberText(CGFloat number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

NSMapTable* clippingViews() {
    static NSMapTable* const table =
        NSCreateMapTable(NSNonOwnedPointerMapKeyCallBacks, NSNonOwnedPointerMapValueCallBacks, 0);
    return table;
}

// What is left of the window's content for `view` to draw in.
NSRect wideRectangleOf(NSView* view) {
    NSView* const content = [[view window] contentView];
    NSRect rectangle = [view convertRect:[content bounds] fromView:content];
    for (NSView* above = view; above != nil; above = [above superview]) {
        if ([above clipsToBounds]) {
            rectangle = NSIntersectionRect(rectangle, [view convertRect:[above bounds]
                                                               fromView:above]);
        }
    }
    return rectangle;
}

using Draw = void (*)(id, SEL, NSRect);
std::map<Class, Draw> ownDrawing;
bool drawing = false; // a view may hand its own rectangle on to another

void drawHanded(id self, SEL selector, NSRect rectangle) {
    Class drawn = object_getClass(self);
    while (ownDrawing.count(drawn) == 0) {
        drawn = class_getSuperclass(drawn);
    }
    if (drawing || !supplement::handsWideRectangles) {
        ownDrawing[drawn](self, selector, rectangle);
        return;
    }
    drawing = true;
    ownDrawing[drawn](self, selector, wideRectangleOf(self));
    drawing = false;
}

BOOL answers(id self, SEL selector, SEL asked) {
    if (sel_isEqual(asked, @selector(setClipsToBounds:)) && !supplement::viewsClip) {
        return NO;
    }
    return class_respondsToSelector(object_getClass(self), asked);
}

id bundleForClass(id self, SEL selector, Class asked) {
    return isMappedClass(asked) ? ownBundle
                                : reinterpret_cast<id (*)(id, SEL, Class)>(bundleForOtherClass)(
                                      self, selector, asked);
}

id bundleWithIdentifier(id self, SEL selector, NSString* identifier) {
    writeJournal(std::string("bundle ") + [identifier UTF8String]);
    return [identifier isEqual:[NSString stringWithUTF8String:kBundleIdentifier]] ? ownBundle : nil;
}

id initWithWindowRef(id self, SEL selector, void* reference) {
    if (!supplement::windowReferences) {
        [self release];
        return nil;
    }
    return [self initWithContentRect:NSMakeRect(0, 0, 10, 10)
                           styleMask:0
                             backing:NSBackingStoreBuffered
                               defer:YES];
}

} // namespace

namespace supplement {

id nibView = nil;
bool windowReferences = false;
bool viewsClip = true;
bool handsWideRectangles = false;

void start(NSBundle* bundle, bool (*isMapped)(Class)) {
    ownBundle = [bundle retain];
    isMappedClass = isMapped;
    const Method forClass = class_getClassMethod([NSBundle class], @selector(bundleForClass:));
    bundleForOtherClass = method_setImplementation(forClass, reinterpret_cast<IMP>(bundleForClass));
    const Method byName = class_getClassMethod([NSBundle class], @selector(bundleWithIdentifier:));
    method_setImplementation(byName, reinterpret_cast<IMP>(bundleWithIdentifier));
    const SEL byReference = sel_registerName("initWithWindowRef:");
    const IMP own = reinterpret_cast<IMP>(initWithWindowRef);
    if (!class_addMethod([NSWindow class], byReference, own, "@@:^v")) {
        method_setImplementation(class_getInstanceMethod([NSWindow class], byReference), own);
    }
    class_addMethod([NSView class], @selector(respondsToSelector:), reinterpret_cast<IMP>(answers),
                    "c@::");
}

void handRectanglesTo(Class mapped) {
    unsigned count = 0;
    Method* const methods = class_copyMethodList(mapped, &count);
    for (unsigned i = 0; i < count; ++i) {
        if (sel_isEqual(method_getName(methods[i]), @selector(drawRect:)) &&
            class_getInstanceMethod(mapped, @selector(convertRect:fromView:)) != nullptr) {
            ownDrawing[mapped] = reinterpret_cast<Draw>(
                method_setImplementation(methods[i], reinterpret_cast<IMP>(drawHanded)));
        }
    }
    std::free(methods);
}

} // namespace supplement

@implementation CALayer

- (void)setBackgroundColor:(id)colour {
    writeJournal("layer background " + colourText(colour));
}

- (void)setCornerRadius:(CGFloat)radius {
    writeJournal("layer corner radius " + numberText(radius));
}

- (void)setBorderWidth:(CGFloat)width {
    writeJournal("layer border width " + numberText(width));
}

- (void)setBorderColor:(id)colour {
    writeJournal("layer border " + colourText(colour));
}

@end

@implementation NSView (AppKitSupplement)

- (void)setWantsLayer:(BOOL)wanted {
    writeJournal(std::string(object_getClassName(self)) + " wants layer " +
                 std::to_string(int{wanted}));
    if (wanted) {
        CALayer* const layer = [[CALayer alloc] init];
        NSMapInsert(layers(), self, layer);
        [layer release];
    } else {
        NSMapRemove(layers(), self);
    }
}

- (void)setClipsToBounds:(BOOL)clips {
    writeJournal(std::string(object_getClassName(self)) + " clips " + std::to_string(int{clips}));
    if (clips) {
        NSMapInsert(clippingViews(), self, self);
    } else {
        NSMapRemove(clippingViews(), self);
    }
}

- (BOOL)clipsToBounds {
    return NSMapGet(clippingViews(), self) != nil;
}

- (CALayer*)layer {
    return static_cast<CALayer*>(NSMapGet(layers(), self));
}

@end

@implementation NSApplication (AppKitSupplement)

- (BOOL)setActivationPolicy:(NSInteger)policy {
    writeJournal("activation policy " + std::to_string(policy));
    return YES;
}

@end

@implementation NSColor (AppKitSupplement)

- (id)CGColor {
    return self;
}

@end

@implementation NSBundle (AppKitSupplement)

- (BOOL)loadNibNamed:(NSString*)name owner:(id)owner topLevelObjects:(NSArray**)topLevelObjects {
    writeJournal(std::string("nib ") + [name UTF8String] + " top level objects " +
                 (topLevelObjects == nullptr ? "not wanted" : "wanted"));
    if (supplement::nibView == nil) {
        return NO;
    }
    const Ivar outlet = class_getInstanceVariable(object_getClass(owner), "tarnsUiView13");
    object_setIvar(owner, outlet, [supplement::nibView retain]);
    return YES;
}

@end

@implementation MachOString

- (NSUInteger)length {
    return static_cast<NSUInteger>(_length);
}

- (unichar)characterAtIndex:(NSUInteger)index {
    if (index >= [self length]) {
        [NSException raise:NSRangeException format:@"beyond the end of a string"];
    }
    return static_cast<unsigned char>(_bytes[index]);
}

- (id)retain {
    return self;
}

- (oneway void)release {
}

- (id)autorelease {
    return self;
}

- (id)copyWithZone:(NSZone*)zone {
    return self;
}

@end
