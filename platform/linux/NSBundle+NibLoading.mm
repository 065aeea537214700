#import <AppKit/AppKit.h>

@implementation NSBundle (NibNamedWithObjects)

- (BOOL)loadNibNamed:(NSString*)name owner:(id)owner topLevelObjects:(NSArray**)objects {
    NSMutableDictionary* const context = [NSMutableDictionary dictionary];
    [context setValue:owner forKey:NSNibOwner];
    NSMutableArray* const top = objects != nullptr ? [NSMutableArray array] : nil;
    [context setValue:top forKey:NSNibTopLevelObjects];
    if (![self loadNibFile:name externalNameTable:context withZone:NSDefaultMallocZone()]) {
        return NO;
    }
    if (objects != nullptr) {
        *objects = top;
    }
    return YES;
}

@end
