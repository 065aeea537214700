#include "tests/bundle/runtime/MacSymbols.h"

#import "tests/bundle/runtime/AppKitJournal.h"
#import "tests/bundle/runtime/AppKitSupplement.h"
#include "tests/bundle/runtime/Messages.h"

#import "editor/hosting/linux/TarnsPicture.h"

#import <AppKit/AppKit.h>

#include <cstdint>
#include <map>
#include <sstream>

namespace {

// All levels are what they are asked by, so that a wrong key shows.
std::int32_t levelForKey(std::int32_t key) {
    writeJournal("window level for key " + std::to_string(key));
    return key == 5 ? 3 : key;
}

std::int32_t shieldingLevel() {
    return 1000;
}

const char* textOf(const void* string) {
    return string == nullptr ? "nothing" : [(id)string UTF8String];
}

std::int32_t displayAlert(double timeout, unsigned long flags, const void* icon, const void* sound,
                          const void* localization, const void* header, const void* message,
                          const void* defaultButton, const void* alternateButton,
                          const void* otherButton, unsigned long* response) {
    std::ostringstream line;
    line << "alert timeout " << timeout << " flags " << flags << " icon " << (icon != nullptr)
         << " sound " << (sound != nullptr) << " localization " << (localization != nullptr)
         << " header " << textOf(header) << " message " << textOf(message) << " buttons "
         << textOf(defaultButton) << ", " << textOf(alternateButton) << ", " << textOf(otherButton);
    writeJournal(line.str());
    *response = 0;
    return 0;
}

void fillRect(NSRect rect, NSCompositingOperation operation) {
    writeJournal("fill " + describe(rect) + " operation " + std::to_string(operation));
    NSRectFillUsingOperation(rect, operation);
}

void* pushPool() {
    return [[NSAutoreleasePool alloc] init];
}

void popPool(void* pool) {
    [static_cast<NSAutoreleasePool*>(pool) release];
}

void setRetained(id self, SEL selector, id value, std::ptrdiff_t offset) {
    id* const place = reinterpret_cast<id*>(reinterpret_cast<char*>(self) + offset);
    const id before = *place;
    *place = [value retain];
    [before release];
}

std::uintptr_t emptyCache[2];
constexpr double kAppKitVersion = 1265.0; // that of macOS 10.9

template <typename Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}

void* variable(const void* place) {
    return const_cast<void*>(place);
}

bool takePrefix(std::string& name, const std::string& prefix) {
    if (name.compare(0, prefix.size(), prefix) != 0) {
        return false;
    }
    name.erase(0, prefix.size());
    return true;
}

void* classNamed(std::string name) {
    if (takePrefix(name, "_OBJC_METACLASS_$_")) {
        const Class found = objc_getClass(name.c_str());
        return found == Nil ? nullptr : object_getClass(reinterpret_cast<id>(found));
    }
    if (takePrefix(name, "_OBJC_CLASS_$_")) {
        if (name == "NSImage") {
            return [TarnsPicture class]; // averages pixels as AppKit does, where GNUstep picks some
        }
        return objc_getClass(name.c_str());
    }
    return nullptr;
}

} // namespace

void* macSymbol(const std::string& symbol) {
    static const std::map<std::string, void*> table = {
        {"_objc_msgSend", address(tvdelayMessageSend)},
        {"_objc_msgSend_stret", address(tvdelayMessageSendStret)},
        {"_objc_msgSendSuper2", address(tvdelayMessageSendSuper)},
        {"_objc_setProperty_nonatomic", address(setRetained)},
        {"_objc_autoreleasePoolPush", address(pushPool)},
        {"_objc_autoreleasePoolPop", address(popPool)},
        {"_class_getInstanceVariable", address(class_getInstanceVariable)},
        {"_ivar_getOffset", address(ivar_getOffset)},
        {"_class_getInstanceMethod", address(class_getInstanceMethod)},
        {"_method_setImplementation", address(method_setImplementation)},
        {"_objc_getClass", address(objc_getClass)},
        {"_object_getClassName", address(object_getClassName)},
        {"__objc_empty_cache", emptyCache},
        {"___CFConstantStringClassReference", [MachOString class]},
        {"_NSApp", variable(&NSApp)},
        {"_NSAppKitVersionNumber", variable(&kAppKitVersion)},
        {"_NSDefaultRunLoopMode", variable(&NSDefaultRunLoopMode)},
        {"_NSZeroRect", variable(&NSZeroRect)},
        {"_NSZeroSize", variable(&NSZeroSize)},
        {"_NSForegroundColorAttributeName", variable(&NSForegroundColorAttributeName)},
        {"_NSBackgroundColorAttributeName", variable(&NSBackgroundColorAttributeName)},
        {"_NSParagraphStyleAttributeName", variable(&NSParagraphStyleAttributeName)},
        {"_NSRectFillUsingOperation", address(fillRect)},
        {"_CGWindowLevelForKey", address(levelForKey)},
        {"_CGShieldingWindowLevel", address(shieldingLevel)},
        {"_CFUserNotificationDisplayAlert", address(displayAlert)},
    };
    const auto found = table.find(symbol);
    return found == table.end() ? classNamed(symbol) : found->second;
}
