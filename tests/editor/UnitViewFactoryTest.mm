// The Audio Unit view factory: with the nib, and without. This program answers the alert itself.
#import "editor/TarnsView10.h"
#include "tests/editor/ViewTest.h"
#include "tests/support/screen/XServer.h"

#include "platform/linux/CFString.h"
#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFUserNotification.h>

#include <string>
#include <vector>

// The view in the nib.
@interface UnitView : NSView {
@public
    AudioUnit unit;
}
@end

@implementation UnitView

- (void)setAU:(AudioUnit)audioUnit {
    unit = audioUnit;
}

@end

namespace {

struct ShownAlert {
    CFTimeInterval timeout;
    CFOptionFlags flags;
    bool bare; // no icon, sound, localization or further buttons
    std::string header, message, button;
};

std::vector<ShownAlert> alerts;

AudioUnit unitAt(std::uintptr_t address) {
    return reinterpret_cast<AudioUnit>(address);
}

} // namespace

SInt32 CFUserNotificationDisplayAlert(CFTimeInterval timeout, CFOptionFlags flags, CFURLRef iconURL,
                                      CFURLRef soundURL, CFURLRef localizationURL,
                                      CFStringRef alertHeader, CFStringRef alertMessage,
                                      CFStringRef defaultButtonTitle,
                                      CFStringRef alternateButtonTitle,
                                      CFStringRef otherButtonTitle, CFOptionFlags* responseFlags) {
    const bool bare = iconURL == nullptr && soundURL == nullptr && localizationURL == nullptr &&
                      alternateButtonTitle == nullptr && otherButtonTitle == nullptr;
    alerts.push_back(
        {timeout, flags, bare, alertHeader->utf8, alertMessage->utf8, defaultButtonTitle->utf8});
    *responseFlags = kCFUserNotificationDefaultResponse;
    return 0;
}

// Ahead of the others: nothing of the editor has been asked for anything in this process.
TEST(UnitViewFactoryAtFirst, FindsTheNibOfItsOwnBundle) {
    sharedXServer();
    @autoreleasepool {
        [NSApplication sharedApplication];
        alerts.clear();
        TarnsView10* const factory = [[[objc_getClass("TarnsView10") alloc] init] autorelease];
        NSView* const view = [factory uiViewForAudioUnit:unitAt(0x1234) withSize:NSZeroSize];
        EXPECT_TRUE([view isMemberOfClass:[UnitView class]]);
        EXPECT_TRUE(alerts.empty());
    }
}

class UnitViewFactory : public ViewTest {
protected:
    UnitViewFactory() : factory([[[TarnsView10 alloc] init] autorelease]) { alerts.clear(); }

    UnitView* viewFor(AudioUnit unit, NSSize size) {
        return static_cast<UnitView*>([factory uiViewForAudioUnit:unit withSize:size]);
    }

    TarnsView10* const factory;
};

TEST_F(UnitViewFactory, AnswersVersionAndDescription) {
    EXPECT_EQ([factory interfaceVersion], 0u);
    EXPECT_EQ(std::string([[factory description] UTF8String]), "Tarnvale's Lumen 73");
}

TEST_F(UnitViewFactory, AnswersTheNibsViewWithItsAudioUnit) {
    UnitView* const view = viewFor(unitAt(0x1234), NSMakeSize(200, 100));
    ASSERT_TRUE([view isMemberOfClass:[UnitView class]]);
    EXPECT_EQ(view->unit, unitAt(0x1234));
    EXPECT_TRUE(alerts.empty());
}

TEST_F(UnitViewFactory, ClearsTheOutletWithEachView) {
    UnitView* const first = viewFor(unitAt(0x10), NSMakeSize(200, 100));
    EXPECT_EQ(variable<id>(factory, "tarnsUiView13"), nil);
    UnitView* const second = viewFor(unitAt(0x20), NSMakeSize(200, 100));
    EXPECT_EQ(variable<id>(factory, "tarnsUiView13"), nil);
    ASSERT_NE(second, nil);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->unit, unitAt(0x10));
    EXPECT_EQ(second->unit, unitAt(0x20));
}

TEST_F(UnitViewFactory, TakesNoNoticeOfTheSize) {
    const NSSize size = [viewFor(nullptr, NSMakeSize(1, 1)) frame].size;
    for (const NSSize other : {NSMakeSize(0, 0), NSMakeSize(-5, 1e9), NSMakeSize(321, 123)}) {
        EXPECT_TRUE(NSEqualSizes([viewFor(nullptr, other) frame].size, size));
    }
    EXPECT_TRUE(NSEqualSizes(size, NSMakeSize(160, 90)));
}

TEST_F(UnitViewFactory, ShowsOneAlertAndAnswersNilWithoutANib) {
    // A class that came later than the bundle's: the program's own folder has no nib.
    const Class homeless = objc_allocateClassPair([TarnsView10 class], "HomelessFactory", 0);
    objc_registerClassPair(homeless);
    TarnsView10* const without = [[[homeless alloc] init] autorelease];
    EXPECT_EQ([without uiViewForAudioUnit:unitAt(0x10) withSize:NSMakeSize(10, 10)], nil);
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].timeout, 20.0);
    EXPECT_EQ(alerts[0].flags, 3u);
    EXPECT_TRUE(alerts[0].bare);
    EXPECT_EQ(alerts[0].header, "Hello");
    EXPECT_EQ(alerts[0].message, "couldn't load nib");
    EXPECT_EQ(alerts[0].button, "OK");
}
