#import "editor/hosting/linux/TarnsBundle.h"

#include "editor/BundleIdentifier.h"

#include <cstring>

#include <fcntl.h>

namespace {

// A path of plain letters to a folder of any name. It holds as long as the process lives.
NSString* descriptorPathOf(const char* folder) {
    const int descriptor = open(folder, O_PATH | O_DIRECTORY | O_CLOEXEC);
    return descriptor < 0 ? nil : [NSString stringWithFormat:@"/proc/self/fd/%d", descriptor];
}

} // namespace

@implementation TarnsBundle

- (id)initWithFolder:(const char*)folder {
    NSString* const path =
        [[NSFileManager defaultManager] stringWithFileSystemRepresentation:folder
                                                                    length:std::strlen(folder)];
    if (path != nil) {
        return [self initWithPath:path];
    }
    NSString* const byDescriptor = descriptorPathOf(folder);
    if (byDescriptor == nil) {
        [self release];
        return nil;
    }
    // NSBundle follows links to names that it can't hold, and raises: it gets the link afterwards.
    self = [self initWithPath:@"/proc/self/fd"];
    if (self != nil) {
        [_path release];
        _path = [byDescriptor copy];
    }
    return self;
}

- (NSString*)bundleIdentifier {
    return [NSString stringWithUTF8String:kBundleIdentifier];
}

@end
