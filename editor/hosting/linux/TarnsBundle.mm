#import "editor/hosting/linux/TarnsBundle.h"

#include "editor/BundleIdentifier.h"

@implementation TarnsBundle

- (NSString*)bundleIdentifier {
    return [NSString stringWithUTF8String:kBundleIdentifier];
}

@end
