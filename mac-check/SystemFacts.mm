#include "mac-check/SystemFacts.h"

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

#include <sys/sysctl.h>

namespace {

// Empty where the system does not know it.
void reportText(Report& report, const char* what, const char* name) {
    char text[256] = "";
    std::size_t size = sizeof(text) - 1;
    if (sysctlbyname(name, text, &size, nullptr, 0) == 0) {
        report.line("%s: %s", what, text);
    }
}

} // namespace

void reportSystem(Report& report) {
    report.heading("System");
    report.line("macOS: %s",
                [[[NSProcessInfo processInfo] operatingSystemVersionString] UTF8String]);
    report.line("AppKit: %.2f", NSAppKitVersionNumber);
    reportText(report, "Machine", "hw.model");
    reportText(report, "Processor", "machdep.cpu.brand_string");
    int translated = 0;
    std::size_t size = sizeof(translated);
    if (sysctlbyname("sysctl.proc_translated", &translated, &size, nullptr, 0) == 0) {
        report.line("Intel code is translated: %s", translated != 0 ? "yes" : "no");
    }
    const Ivar frame = class_getInstanceVariable([NSView class], "_frame");
    report.line("NSView keeps its frame at: %ld",
                frame == nullptr ? -1L : static_cast<long>(ivar_getOffset(frame)));
    report.line("Views answer clipsToBounds: %s",
                [NSView instancesRespondToSelector:@selector(setClipsToBounds:)] ? "yes" : "no");
}
