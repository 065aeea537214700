#import "editor/TarnsView10.h"

#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFUserNotification.h>

// What the nib's view answers.
@protocol TarnsAudioUnitView
- (void)setAU:(AudioUnit)audioUnit;
@end

namespace {

void showNibAlert() {
    constexpr CFTimeInterval kSeconds = 20.0;
    CFOptionFlags response = 0;
    CFUserNotificationDisplayAlert(kSeconds, kCFUserNotificationPlainAlertLevel, nullptr, nullptr,
                                   nullptr, CFSTR("Hello"), CFSTR("couldn't load nib"), CFSTR("OK"),
                                   nullptr, nullptr, &response);
}

} // namespace

@implementation TarnsView10

- (unsigned)interfaceVersion {
    return 0;
}

- (NSString*)description {
    return @"Tarnvale's Lumen 73";
}

- (NSView*)uiViewForAudioUnit:(AudioUnit)audioUnit withSize:(NSSize)size {
    NSBundle* const bundle = [NSBundle bundleForClass:[self class]];
    if (![bundle loadNibNamed:@"tarnsCocoaView11" owner:self topLevelObjects:nullptr]) {
        showNibAlert();
        return nil;
    }
    [tarnsUiView13 setAU:audioUnit];
    NSView* const view = tarnsUiView13;
    tarnsUiView13 = nil;
    return view;
}

@end
