#include "tests/bundle/runtime/MacViews.h"

#import "tests/bundle/runtime/AppKitJournal.h"
#import "tests/bundle/runtime/AppKitSupplement.h"
#include "tests/bundle/runtime/FailingAllocations.h"
#include "tests/bundle/runtime/MacSymbols.h"
#include "tests/support/screen/XServer.h"

#import <AppKit/AppKit.h>

#include <stdexcept>

namespace {

void startAppKit() {
    sharedXServer();
    [[NSUserDefaults standardUserDefaults]
        registerDefaults:[NSDictionary
                             dictionaryWithObjectsAndKeys:@"YES", @"GSSuppressAppIcon", @"NO",
                                                          @"GSBackHandlesWindowDecorations", nil]];
    [NSApplication sharedApplication];
}

NSBundle* mappedBundle() {
    // GNUstep looks for the folder of resources right in a bundle's own.
    NSString* const folder = [NSString stringWithUTF8String:(macBundle() + "/Contents").c_str()];
    return [[[NSBundle alloc] initWithPath:folder] autorelease];
}

} // namespace

MacViews& MacViews::shared() {
    static MacViews views;
    return views;
}

MacViews::MacViews() {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    startAppKit();
    bundle_ = std::make_unique<RunningMacBundle>(
        [](const MachOFile::Bind& bind) {
            void* const allocation = allocationSymbol(bind.symbol);
            return allocation != nullptr ? allocation : macSymbol(bind.symbol);
        },
        [this](const BundleImage& image) {
            classes_ = std::make_unique<ClassRegistration>(image);
            unwinding_ = std::make_unique<UnwindRegistration>(image);
        });
    supplement::start(mappedBundle(), isMapped);
    for (const Class mapped : classes_->all()) {
        supplement::handRectanglesTo(mapped);
    }
    startJournal();
    [pool release];
}

bool MacViews::isMapped(Class known) {
    return shared().classes_->has(known);
}

Class MacViews::classNamed(const std::string& name) const {
    const Class found = classes_->named(name);
    if (found == Nil) {
        throw std::out_of_range("the bundle has no class " + name);
    }
    return found;
}
