#include "tests/bundle/SymbolFacts.h"

namespace {

struct Name {
    const char* symbol;
    int since;
};

struct Library {
    const char* path;
    const char* source;
    std::vector<Name> names;
};

const Library kAppKit = {"/System/Library/Frameworks/AppKit.framework/Versions/C/AppKit",
                         "AppKit's reference and headers",
                         {{"_OBJC_CLASS_$_NSColor", 5},
                          {"_OBJC_CLASS_$_NSImage", 5},
                          {"_OBJC_CLASS_$_NSImageView", 5},
                          {"_OBJC_CLASS_$_NSParagraphStyle", 5},
                          {"_OBJC_CLASS_$_NSScreen", 5},
                          {"_OBJC_CLASS_$_NSSlider", 5},
                          {"_OBJC_CLASS_$_NSSliderCell", 5},
                          {"_OBJC_CLASS_$_NSTextField", 5},
                          {"_OBJC_CLASS_$_NSView", 5},
                          {"_OBJC_CLASS_$_NSWindow", 5},
                          {"_OBJC_METACLASS_$_NSImageView", 5},
                          {"_OBJC_METACLASS_$_NSSlider", 5},
                          {"_OBJC_METACLASS_$_NSSliderCell", 5},
                          {"_OBJC_METACLASS_$_NSView", 5},
                          {"_OBJC_METACLASS_$_NSWindow", 5},
                          {"_NSApp", 5},
                          {"_NSBackgroundColorAttributeName", 5},
                          {"_NSForegroundColorAttributeName", 5},
                          {"_NSParagraphStyleAttributeName", 5},
                          {"_NSRectFillUsingOperation", 5},
                          {"_OBJC_CLASS_$_NSApplication", 5},
                          {"_OBJC_CLASS_$_NSEvent", 5},
                          {"_NSAppKitVersionNumber", 5}}};

const Library kFoundation = {
    "/System/Library/Frameworks/Foundation.framework/Versions/C/Foundation",
    "Foundation's reference; its collections moved to CoreFoundation, these did not",
    {{"_OBJC_CLASS_$_NSBundle", 5},
     {"_OBJC_CLASS_$_NSNumber", 5},
     {"_OBJC_CLASS_$_NSScanner", 5},
     {"_OBJC_CLASS_$_NSString", 5},
     {"_NSZeroRect", 5},
     {"_NSZeroSize", 5},
     {"_OBJC_CLASS_$_NSProcessInfo", 5},
     {"_NSDefaultRunLoopMode", 5}}};

const Library kCoreFoundation = {
    "/System/Library/Frameworks/CoreFoundation.framework/Versions/A/CoreFoundation",
    "CoreFoundation's reference; crash reports show the collections' methods in it from 10.7 on",
    {{"_OBJC_CLASS_$_NSMutableArray", 7},
     {"_OBJC_CLASS_$_NSMutableDictionary", 7},
     {"_CFBundleCreate", 5},
     {"_CFRelease", 5},
     {"_CFURLCreateFromFileSystemRepresentation", 5},
     {"_CFUserNotificationDisplayAlert", 5},
     {"___CFConstantStringClassReference", 5},
     {"_OBJC_CLASS_$_NSDate", 7},
     {"_OBJC_CLASS_$_NSDictionary", 7}}};

const Library kCoreGraphics = {
    "/System/Library/Frameworks/CoreGraphics.framework/Versions/A/CoreGraphics",
    "Core Graphics' reference; a framework of its own from 10.8 on",
    {{"_CGShieldingWindowLevel", 8}, {"_CGWindowLevelForKey", 8}}};

const Library kCarbon = {"/System/Library/Frameworks/Carbon.framework/Versions/A/Carbon",
                         "the Carbon event manager's reference: HIToolbox, within Carbon",
                         {{"_RunCurrentEventLoop", 5}}};

const Library kCoreServices = {
    "/System/Library/Frameworks/CoreServices.framework/Versions/A/CoreServices",
    "the event manager's reference: CarbonCore, within CoreServices",
    {{"_TickCount", 5}}};

const Library kObjc = {"/usr/lib/libobjc.A.dylib",
                       "the runtime's published sources",
                       {{"_OBJC_CLASS_$_NSObject", 8},
                        {"_OBJC_METACLASS_$_NSObject", 8},
                        {"__objc_empty_cache", 5},
                        {"_class_getInstanceVariable", 5},
                        {"_ivar_getOffset", 5},
                        {"_objc_autoreleasePoolPop", 7},
                        {"_objc_autoreleasePoolPush", 7},
                        {"_objc_msgSend", 5},
                        {"_objc_msgSendSuper2", 6},
                        {"_objc_msgSend_stret", 5},
                        {"_objc_setProperty_nonatomic", 8},
                        {"_class_getInstanceMethod", 5},
                        {"_method_setImplementation", 5},
                        {"_objc_getClass", 5},
                        {"_object_getClassName", 5}}};

const Library kCxx = {
    "/usr/lib/libc++.1.dylib",
    "libc++'s published list of symbols, which names those of libc++abi too",
    {{"__ZNKSt3__112basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEE5rfindEcm", 7},
     {"__ZNSt11logic_errorC2EPKc", 7},
     {"__ZNSt12length_errorD1Ev", 7},
     {"__ZNSt3__112basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEE6resizeEmc", 7},
     {"__ZSt9terminatev", 7},
     {"__ZTISt12length_error", 7},
     {"__ZTVN10__cxxabiv117__class_type_infoE", 7},
     {"__ZTVN10__cxxabiv120__si_class_type_infoE", 7},
     {"__ZTVN10__cxxabiv121__vmi_class_type_infoE", 7},
     {"__ZTVSt12length_error", 7},
     {"__ZdaPv", 7},
     {"__ZdlPv", 7},
     {"__Znam", 7},
     {"__Znwm", 7},
     {"___cxa_allocate_exception", 7},
     {"___cxa_begin_catch", 7},
     {"___cxa_free_exception", 7},
     {"___cxa_pure_virtual", 7},
     {"___cxa_throw", 7},
     {"___gxx_personality_v0", 7}}};

const Library kSystem = {
    "/usr/lib/libSystem.B.dylib",
    "the list of macOS 11; first versions by the manual pages and the compiler's own conditions",
    {{"__Unwind_Resume", 5},
     {"___bzero", 5},
     {"___stack_chk_fail", 5},
     {"___stack_chk_guard", 5},
     {"___stdoutp", 5},
     {"_dladdr", 5},
     {"_floor", 5},
     {"_fmod", 5},
     {"_fputs", 5},
     {"_log10f", 5},
     {"_memcpy", 5},
     {"_memmove", 5},
     {"_mmap", 5},
     {"_munmap", 5},
     {"_sin", 5},
     {"_snprintf", 5},
     {"_strlen", 5},
     {"_strncat", 5},
     {"_strncpy", 5},
     {"dyld_stub_binder", 6},
     {"___exp10", 9},
     {"___sincos_stret", 9},
     {"__NSGetExecutablePath", 5},
     {"_dlclose", 5},
     {"_dlerror", 5},
     {"_dlopen", 5},
     {"_dlsym", 5},
     {"_fclose", 5},
     {"_fflush", 5},
     {"_fopen", 5},
     {"_fprintf", 5},
     {"_mkdir", 5},
     {"_sysctlbyname", 5},
     {"_vsnprintf", 5},
     {"_strrchr", 5},
     {"___stderrp", 5}}};

} // namespace

const std::vector<SymbolFact>& symbolFacts() {
    static const std::vector<SymbolFact> facts = [] {
        std::vector<SymbolFact> all;
        for (const Library& library : {kAppKit, kFoundation, kCoreFoundation, kCoreGraphics,
                                       kCarbon, kCoreServices, kObjc, kCxx, kSystem}) {
            for (const Name& name : library.names) {
                all.push_back({name.symbol, library.path, name.since, library.source});
            }
        }
        return all;
    }();
    return facts;
}
