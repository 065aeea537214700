#include <CoreGraphics/CoreGraphics.h>

#import <AppKit/AppKit.h>

CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key) {
    return key == kCGFloatingWindowLevelKey ? NSFloatingWindowLevel : NSNormalWindowLevel;
}

CGWindowLevel CGShieldingWindowLevel() {
    return NSScreenSaverWindowLevel;
}
