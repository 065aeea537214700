#import "editor/TarnsCustomImageView13.h"

// An enabled control would follow the mouse to its release in a loop of its own, and the host's
// idle call would not come back before. A button of ours acts at the press.
@implementation TarnsCustomImageView13 (PressWithoutTracking)

- (BOOL)isEnabled {
    return NO;
}

@end
